// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Machine.h"

#include "collector/Text.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <map>

namespace collector {

namespace {

std::string WithoutQuotes(std::string_view text) {
    if (text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\''))
        text = text.substr(1, text.size() - 2);
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size())
            ++i;
        plain += text[i];
    }
    return plain;
}

std::map<std::string, std::string> ReadRelease(const Sources& sources) {
    std::map<std::string, std::string> values;
    for (const char* const path : {"/etc/os-release", "/usr/lib/os-release"}) {
        const std::string text = sources.Read(path);
        for (const std::string_view line : Split(text, '\n'))
            if (line.find('=') != std::string_view::npos && line.front() != '#')
                values.emplace(line.substr(0, line.find('=')), WithoutQuotes(Behind(line, '=')));
        if (!values.empty())
            break;
    }
    return values;
}

std::string BootKind(const Sources& sources) {
    const std::string commandLine = sources.ReadLine("/proc/cmdline");
    if (commandLine.empty())
        return {};
    for (const std::string_view word : Words(commandLine)) {
        if (word == "emergency" || word == "-b" || word == "systemd.unit=emergency.target")
            return "Emergency boot";
        if (word == "single" || word == "rescue" || word == "S" || word == "1" ||
            word == "systemd.unit=rescue.target")
            return "Rescue boot";
    }
    return "Normal boot";
}

// "0-3,8" is five.
std::size_t CountInList(std::string_view list) {
    std::size_t count = 0;
    for (const std::string_view range : Split(list, ',')) {
        const auto first = WholeNumber(range.substr(0, range.find('-')));
        const std::string_view end = Behind(range, '-');
        const auto last = end.empty() ? first : WholeNumber(end);
        if (first && last && *last >= *first)
            count += *last - *first + 1;
    }
    return count;
}

std::size_t CountNames(const Sources& sources, const char* folder, std::string_view start) {
    const std::vector<std::string> names = sources.List(folder);
    const auto count = std::count_if(names.begin(), names.end(), [start](const std::string& name) {
        return name.starts_with(start) && WholeNumber(name.substr(start.size())).has_value();
    });
    return static_cast<std::size_t>(count);
}

// "03/14/2019" as "3-14-2019".
std::string BiosDate(std::string_view text) {
    const std::vector<std::string_view> parts = Split(text, '/');
    if (parts.size() != 3 || parts[2].size() != 4)
        return {};
    const auto month = WholeNumber(parts[0]);
    const auto day = WholeNumber(parts[1]);
    const auto year = WholeNumber(parts[2]);
    if (!month || !day || !year || *month < 1 || *month > 12 || *day < 1 || *day > 31)
        return {};
    return std::to_string(*month) + "-" + std::to_string(*day) + "-" + std::to_string(*year);
}

// Chassis types of the SMBIOS standard, for those that people have.
std::string ChassisName(std::string_view type) {
    struct Chassis {
        std::string_view type;
        const char* name;
    };
    constexpr std::array<Chassis, 15> kinds = {{
        {"3", "Desktop"},
        {"4", "Low profile desktop"},
        {"6", "Mini tower"},
        {"7", "Tower"},
        {"8", "Portable"},
        {"9", "Laptop"},
        {"10", "Notebook"},
        {"13", "All in one"},
        {"14", "Sub notebook"},
        {"17", "Server"},
        {"23", "Server"},
        {"30", "Tablet"},
        {"31", "Convertible"},
        {"35", "Mini PC"},
        {"36", "Stick PC"},
    }};
    const auto* const found =
        std::find_if(kinds.begin(), kinds.end(), [type](const Chassis& kind) { return kind.type == type; });
    return found == kinds.end() ? std::string() : found->name;
}

// What a maker leaves where a fact should stand.
bool IsFiller(const std::string& text) {
    const std::string upper = UpperCase(text);
    return upper.find("TO BE FILLED") != std::string::npos || upper == "SYSTEM PRODUCT NAME" ||
           upper == "SYSTEM MANUFACTURER" || upper == "DEFAULT STRING" || upper == "NOT SPECIFIED";
}

std::string Dmi(const Sources& sources, const std::string& name) {
    std::string text = sources.ReadLine("/sys/class/dmi/id/" + name);
    return IsFiller(text) ? std::string() : text;
}

std::map<std::string, std::string, std::less<>> FirstValues(const std::string& text) {
    std::map<std::string, std::string, std::less<>> values;
    for (const std::string_view line : Split(text, '\n'))
        values.emplace(Trimmed(line.substr(0, line.find(':'))), Behind(line, ':'));
    return values;
}

bool HasWord(std::string_view list, std::string_view sought) {
    const std::vector<std::string_view> words = Words(list);
    return std::find(words.begin(), words.end(), sought) != words.end();
}

/// `name` cut to `width`, with five digits of a hash (FNV-1a, 32 bits) at its end: two long names that begin
/// alike must not share one file.
std::string ShortName(const std::string& name, std::size_t width) {
    std::uint32_t hash = 2166136261U;
    for (const char letter : name)
        hash = (hash ^ static_cast<unsigned char>(letter)) * 16777619U;
    std::array<char, 8> digits{};
    (void)std::snprintf(digits.data(), digits.size(), "-%05X", hash & 0xFFFFFU);
    return name.substr(0, width - 6) + digits.data();
}

} // namespace

std::string MachineName(const Sources& sources) {
    constexpr std::size_t width = 20;
    std::string host = sources.ReadLine("/proc/sys/kernel/hostname");
    if (host.empty())
        host = sources.ReadLine("/etc/hostname");
    std::string name = UpperCase(std::string_view(host).substr(0, host.find('.')));
    if (name.size() > width)
        name = ShortName(name, width);
    for (char& letter : name)
        if (std::isalnum(static_cast<unsigned char>(letter)) == 0 && letter != '_')
            letter = '-';
    if (name.empty())
        return "LOCALHOST";
    return name == "ALL" || name == "MAIN" ? name + "1" : name;
}

OperatingSystem ReadOperatingSystem(const Sources& sources) {
    std::map<std::string, std::string> release = ReadRelease(sources);
    OperatingSystem system;
    system.version = release["VERSION_ID"];
    system.build = sources.ReadLine("/proc/sys/kernel/osrelease");
    system.boot = BootKind(sources);
    system.isDebugKernel = system.build.find("debug") != std::string::npos;
    system.name = release["PRETTY_NAME"].empty() ? release["NAME"] : release["PRETTY_NAME"];
    system.identifier = release["ID"];
    system.variant = release["VARIANT"];
    // Only Debian keeps its point releases beside its version.
    system.pointRelease =
        system.identifier == "debian" ? sources.ReadLine("/etc/debian_version") : release["VERSION"];
    return system;
}

Processor ReadProcessor(const Sources& sources) {
    const std::string text = sources.Read("/proc/cpuinfo", 8192);
    auto first = FirstValues(text);
    Processor processor;
    processor.name = first["model name"].empty() ? first["Processor"] : first["model name"];
    processor.vendor = first["vendor_id"];
    if (!first["cpu family"].empty())
        processor.family = "x86 Family " + first["cpu family"] + " Model " + first["model"] + " Stepping " +
                           first["stepping"];
    processor.megahertz = first["cpu MHz"].substr(0, first["cpu MHz"].find('.'));
    const auto kilohertz =
        WholeNumber(sources.ReadLine("/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq"));
    if (kilohertz)
        processor.fastest = std::to_string(*kilohertz / 1000) + " MHz";
    else if (!processor.megahertz.empty())
        processor.fastest = processor.megahertz + " MHz";
    const std::string flags = first["flags"] + " " + first["Features"];
    processor.hasFloatingPoint = HasWord(flags, "fpu") || HasWord(flags, "fp") || HasWord(flags, "vfp");
    processor.hasMMX = HasWord(flags, "mmx");
    processor.present = CountInList(sources.ReadLine("/sys/devices/system/cpu/present"));
    processor.online = CountInList(sources.ReadLine("/sys/devices/system/cpu/online"));
    return processor;
}

Memory ReadMemory(const Sources& sources) {
    auto values = FirstValues(sources.Read("/proc/meminfo"));
    const auto kilobytes = [&values](const char* key) -> std::optional<std::uint64_t> {
        const std::vector<std::string_view> words = Words(values[key]);
        return words.empty() ? std::nullopt : WholeNumber(words.front());
    };
    const auto text = [](std::optional<std::uint64_t> number) {
        return number ? std::to_string(*number) : std::string();
    };
    const auto total = kilobytes("MemTotal");
    const auto available = kilobytes("MemAvailable");
    const auto free = available ? available : kilobytes("MemFree");
    const auto swapTotal = kilobytes("SwapTotal");
    const auto swapFree = kilobytes("SwapFree");
    Memory memory{text(total), text(free), text(swapTotal), text(swapFree), {}, {}};
    if (total && swapTotal)
        memory.allTotal = std::to_string(*total + *swapTotal);
    if (free && swapFree)
        memory.allFree = std::to_string(*free + *swapFree);
    return memory;
}

Multimedia ReadMultimedia(const Sources& sources) {
    Multimedia media;
    for (const std::string& connector : sources.List("/sys/class/drm")) {
        const std::string folder = "/sys/class/drm/" + connector;
        if (sources.ReadLine(folder + "/status") != "connected")
            continue;
        ++media.screens;
        if (media.resolution.empty())
            media.resolution = sources.ReadLine(folder + "/modes");
    }
    if (media.resolution.empty())
        media.resolution = sources.ReadLine("/sys/class/graphics/fb0/virtual_size");
    std::replace(media.resolution.begin(), media.resolution.end(), ',', 'x');
    const std::string bits = sources.ReadLine("/sys/class/graphics/fb0/bits_per_pixel");
    if (!bits.empty())
        media.depth = bits + " bits per pixel";
    const std::string sound = sources.Read("/proc/asound/pcm");
    for (const std::string_view line : Split(sound, '\n'))
        if (line.find(": playback ") != std::string_view::npos)
            ++media.waveDevices;
    for (const std::string& name : sources.List("/sys/class/sound"))
        if (name.starts_with("midi"))
            ++media.midiDevices;
    media.joystickDrivers = sources.Exists("/sys/module/joydev") ? 1 : 0;
    media.joysticks = CountNames(sources, "/sys/class/input", "js");
    return media;
}

SystemBoard ReadSystemBoard(const Sources& sources) {
    SystemBoard board;
    board.biosName = Dmi(sources, "bios_vendor");
    board.biosDate = BiosDate(Dmi(sources, "bios_date"));
    board.biosVersion = Dmi(sources, "bios_version");
    board.bus = sources.List("/sys/bus/pci/devices").empty() ? "" : "PCI";
    board.machineType = ChassisName(Dmi(sources, "chassis_type"));
    const std::string maker = Dmi(sources, "sys_vendor");
    const std::string product = Dmi(sources, "product_name");
    board.model = product.starts_with(maker) || product.empty() ? product : maker + " " + product;
    if (board.model.empty())
        board.model = sources.ReadLine("/proc/device-tree/model");
    return board;
}

} // namespace collector
