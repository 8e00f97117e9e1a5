// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/PciDevice.h"

#include "collector/Text.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>

namespace collector {

namespace {

constexpr std::size_t kColumn = 50;

// The first row that fits; the last one fits all.
constexpr std::array<PciClass, 24> kClasses = {{
    {0x010000, 0xFFFF00, "SCSI controllers", "SCSI controller", true},
    {0x010400, 0xFFFF00, "SCSI controllers", "RAID controller", true},
    {0x010700, 0xFFFF00, "SCSI controllers", "SAS controller", true},
    {0x010800, 0xFFFF00, "Hard disk controllers", "NVM Express controller", true},
    {0x010000, 0xFF0000, "Hard disk controllers", "Storage controller", true},
    {0x020000, 0xFF0000, "Network adapters", "Network controller", true},
    {0x030000, 0xFF0000, "Display adapters", "Display controller", false},
    {0x040000, 0xFF0000, "Sound, video and game controllers", "Multimedia controller", true},
    {0x050000, 0xFF0000, "System devices", "Memory controller", false},
    {0x060000, 0xFFFF00, "System devices", "Host bridge", false},
    {0x060100, 0xFFFF00, "System devices", "ISA bridge", false},
    {0x060400, 0xFFFF00, "System devices", "PCI bridge", false},
    {0x060000, 0xFF0000, "System devices", "Bridge", false},
    {0x070300, 0xFFFF00, "Modem", "Modem", true},
    {0x070000, 0xFF0000, "Ports (COM & LPT)", "Communication controller", false},
    {0x080500, 0xFFFF00, "SD host adapters", "SD host controller", true},
    {0x080000, 0xFF0000, "System devices", "System peripheral", false},
    {0x090000, 0xFF0000, "Human Interface Devices", "Input controller", true},
    {0x0B0000, 0xFF0000, "System devices", "Processor", false},
    {0x0C0000, 0xFFFF00, "IEEE 1394 Bus host controllers", "IEEE 1394 controller", true},
    {0x0C0300, 0xFFFF00, "Universal Serial Bus controllers", "USB controller", true},
    {0x0C0000, 0xFF0000, "System devices", "Serial bus controller", false},
    {0x0D0000, 0xFF0000, "Network adapters", "Wireless controller", true},
    {0x000000, 0x000000, "Other devices", "Device", false},
}};

std::string Range(std::uint64_t first, std::uint64_t last, int digits) {
    std::array<char, 40> text{};
    (void)std::snprintf(text.data(), text.size(), "%0*" PRIX64 "-%0*" PRIX64, digits, first, digits, last);
    return text.data();
}

// Half a range would be a wrong one, so what does not fit the column is left out.
void AddRange(std::string& list, const std::string& range) {
    const std::string separator = list.empty() ? "" : " ";
    if (list.size() + separator.size() + range.size() <= kColumn)
        list += separator + range;
}

// A line for each of the device's regions: first address, last address, flags.
Resources ReadResources(const Sources& sources, const std::string& folder) {
    constexpr std::uint64_t portFlag = 0x100;
    constexpr std::uint64_t memoryFlag = 0x200;
    Resources resources;
    const std::string text = sources.Read(folder + "/resource");
    for (const std::string_view line : Split(text, '\n')) {
        const std::vector<std::string_view> words = Words(line);
        if (words.size() != 3)
            continue;
        const std::uint64_t first = WholeNumber(words[0], 16).value_or(0);
        const std::uint64_t last = WholeNumber(words[1], 16).value_or(0);
        const std::uint64_t flags = WholeNumber(words[2], 16).value_or(0);
        if (last == 0 || last < first)
            continue;
        if ((flags & portFlag) != 0)
            AddRange(resources.ports, PortRange(first, last));
        else if ((flags & memoryFlag) != 0)
            AddRange(resources.memory, Range(first, last, 8));
    }
    const std::string interrupt = sources.ReadLine(folder + "/irq");
    if (interrupt != "0")
        resources.interrupt = interrupt;
    return resources;
}

std::string NameOf(const Sources& sources, const HardwareNames& names, const std::string& folder,
                   std::uint32_t classCode) {
    const auto vendor = static_cast<std::uint16_t>(sources.ReadHexadecimal(folder + "/vendor"));
    const auto device = static_cast<std::uint16_t>(sources.ReadHexadecimal(folder + "/device"));
    std::string name = names.Name(vendor, device);
    if (!name.empty())
        return name;
    std::array<char, 16> numbers{};
    (void)std::snprintf(numbers.data(), numbers.size(), " %04X:%04X", unsigned{vendor}, unsigned{device});
    return PciClassOf(classCode).genericName + std::string(numbers.data());
}

} // namespace

std::string PortRange(std::uint64_t first, std::uint64_t last) {
    return Range(first, last, 4);
}

const PciClass& PciClassOf(std::uint32_t classCode) {
    return *std::find_if(kClasses.begin(), kClasses.end() - 1, [classCode](const PciClass& candidate) {
        return (classCode & candidate.mask) == candidate.code;
    });
}

PciDevice ReadPciDevice(const Sources& sources, const HardwareNames& names, std::string_view folder) {
    PciDevice device;
    device.folder = folder;
    device.classCode = static_cast<std::uint32_t>(sources.ReadHexadecimal(device.folder + "/class"));
    device.name = NameOf(sources, names, device.folder, device.classCode);
    device.resources = ReadResources(sources, device.folder);
    device.hasDriver = sources.Exists(device.folder + "/driver");
    return device;
}

std::vector<PciDevice> PciDevices(const Sources& sources, const HardwareNames& names) {
    std::vector<PciDevice> devices;
    for (const std::string& address : sources.List("/sys/bus/pci/devices")) {
        const std::string folder = sources.Resolved("/sys/bus/pci/devices/" + address);
        if (!folder.empty())
            devices.push_back(ReadPciDevice(sources, names, folder));
    }
    return devices;
}

} // namespace collector
