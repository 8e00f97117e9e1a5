// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Inventory.h"

#include "collector/Devices.h"
#include "collector/Drives.h"
#include "collector/InputDevices.h"
#include "collector/Machine.h"
#include "collector/Network.h"
#include "collector/Printers.h"
#include "collector/Record.h"
#include "collector/Software.h"

#include <algorithm>
#include <array>
#include <vector>

namespace collector {

namespace {

using Rows = std::vector<std::string>;

// Widths of the console's columns, in characters; a numeric column takes any number of 64 bits.
constexpr std::size_t kText = 50;
constexpr std::size_t kNumber = 20;
constexpr std::size_t kPath = 255;
constexpr std::array<std::size_t, 5> kNet = {20, 20, 8, 8, 15};
constexpr std::array<std::size_t, 16> kOS = {10,    kText, kText, 2,     2,     kText, kText, kText,
                                             kText, kText, kText, kText, kText, kText, kText, kText};
constexpr std::array<std::size_t, 5> kOffice = {kText, kText, kText, kText, kText};
constexpr std::array<std::size_t, 8> kInput = {kText, kNumber, kNumber, kNumber, kText, kNumber, 2, kNumber};
constexpr std::array<std::size_t, 24> kPC = {
    kText,   kNumber, kNumber, kText,   kText,   kText, kText, 100,     kText,   2,       2,       kNumber,
    kNumber, kNumber, kNumber, kNumber, kNumber, kText, kText, kNumber, kNumber, kNumber, kNumber, kNumber};
constexpr std::array<std::size_t, 6> kDrives = {kNumber, kNumber, kNumber, kNumber, kNumber, kText};
constexpr std::array<std::size_t, 9> kDrive = {kText, kText, kText, kNumber, kNumber,
                                               kText, kText, kText, kText};
constexpr std::array<std::size_t, 2> kProgram = {kPath, kPath};
constexpr std::array<std::size_t, 3> kDriver = {kText, kPath, kText};
constexpr std::array<std::size_t, 4> kPrinter = {1, kText, kText, kText};

std::string Flag(bool is) {
    return is ? "1" : "0";
}

// No machine has none, so that 0 is no fact.
std::string CountOrUnknown(std::size_t count) {
    return count == 0 ? std::string() : std::to_string(count);
}

std::string Time(const std::tm& moment, const char* format) {
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), format, &moment)};
}

void AddSection(std::string& file, const std::string& name, const Rows& rows) {
    file += "[" + name + "]\r\n";
    for (std::size_t i = 0; i < rows.size(); ++i)
        file += "INFO" + std::to_string(i) + "=" + rows[i] + "\r\n";
}

// A section with the count of its rows, and behind it the rows.
void AddCounted(std::string& file, const std::string& name, Rows rows) {
    if (rows.size() > kMostRows)
        rows.resize(kMostRows);
    AddSection(file, name, {std::to_string(rows.size()) + "|"});
    AddSection(file, name + "DATA", rows);
}

std::string NetRecord(const std::string& machine, const Surroundings& surroundings,
                      const std::vector<NetworkAdapter>& adapters) {
    const auto adapter = std::find_if(adapters.begin(), adapters.end(), [](const NetworkAdapter& candidate) {
        return !candidate.hardwareAddress.empty();
    });
    return Positional<5>(
        {machine, surroundings.user, Time(surroundings.now, "%Y%m%d"), Time(surroundings.now, "%H:%M:%S"),
         adapter == adapters.end() ? std::string() : adapter->hardwareAddress},
        kNet);
}

std::string SystemRecord(const Sources& sources, const Surroundings& surroundings) {
    const OperatingSystem system = ReadOperatingSystem(sources);
    const std::string key;
    const std::string registered;
    const std::string owner;
    const std::string organization;
    const std::string isSlow;
    return Positional<16>(
        {system.version, system.build, system.boot, Flag(system.isDebugKernel), isSlow, surroundings.kernel,
         surroundings.daylightZone, surroundings.standardZone, system.name, system.identifier, key,
         registered, owner, organization, system.variant, system.pointRelease},
        kOS);
}

std::string InputRecord(const std::vector<InputDevice>& devices) {
    const auto keyboard = std::find_if(devices.begin(), devices.end(),
                                       [](const InputDevice& device) { return device.isKeyboard; });
    const auto mouse = std::find_if(devices.begin(), devices.end(),
                                    [](const InputDevice& device) { return device.isMouse; });
    std::array<std::string, 8> fields;
    if (keyboard != devices.end()) {
        fields[0] = keyboard->name;
        fields[3] = std::to_string(keyboard->functionKeys);
    }
    if (mouse != devices.end()) {
        fields[4] = mouse->name;
        fields[5] = std::to_string(mouse->buttons);
        fields[6] = Flag(mouse->hasWheel);
    }
    return Positional(fields, kInput);
}

std::string MachineRecord(const Sources& sources, const Surroundings& surroundings,
                          const Processor& processor) {
    const Memory memory = ReadMemory(sources);
    const Multimedia media = ReadMultimedia(sources);
    const std::string multimediaIdentifier;
    return Positional<24>({surroundings.architecture,
                           CountOrUnknown(processor.present),
                           CountOrUnknown(processor.online),
                           processor.vendor,
                           processor.family,
                           multimediaIdentifier,
                           processor.megahertz,
                           processor.name,
                           processor.fastest,
                           Flag(processor.hasFloatingPoint),
                           Flag(processor.hasMMX),
                           memory.total,
                           memory.free,
                           memory.swapTotal,
                           memory.swapFree,
                           memory.allTotal,
                           memory.allFree,
                           media.resolution,
                           media.depth,
                           std::to_string(media.screens),
                           std::to_string(media.waveDevices),
                           std::to_string(media.midiDevices),
                           std::to_string(media.joystickDrivers),
                           std::to_string(media.joysticks)},
                          kPC);
}

std::string DrivesRecord(const Drives& drives) {
    std::string roots;
    for (const Drive& drive : drives.listed)
        roots += roots.empty() ? drive.root : " " + drive.root;
    return Positional<6>({std::to_string(drives.removable), std::to_string(drives.Count(DriveKind::Fixed)),
                          std::to_string(drives.Count(DriveKind::Optical)), std::to_string(drives.memory),
                          std::to_string(drives.Count(DriveKind::Network)), roots},
                         kDrives);
}

Rows DriveRows(const Drives& drives) {
    Rows rows;
    for (const Drive& drive : drives.listed)
        rows.push_back(Positional<9>({drive.root, DriveDescription(drive.kind), drive.fileSystem,
                                      drive.space ? std::to_string(drive.space->size) : std::string(),
                                      drive.space ? std::to_string(drive.space->free) : std::string(),
                                      drive.label, drive.serial, drive.mapping, drive.user},
                                     kDrive));
    return rows;
}

Rows ProgramRows(const Sources& sources) {
    Rows rows;
    for (const Package& package : InstalledPackages(sources))
        rows.push_back(Positional<2>({package.name, package.removal}, kProgram));
    return rows;
}

Rows DriverRows(const Sources& sources) {
    Rows rows;
    for (const DatabaseDriver& driver : DatabaseDrivers(sources))
        rows.push_back(Positional<3>({driver.name, driver.path, driver.version}, kDriver));
    return rows;
}

Rows PrinterRows(const Sources& sources) {
    Rows rows;
    for (const Printer& printer : Printers(sources))
        rows.push_back(Positional<4>(
            {printer.isLocal ? "L" : "R", printer.name, printer.driver, printer.port}, kPrinter));
    return rows;
}

Rows DeviceRows(const Sources& sources, const KnownParts& known) {
    Rows rows;
    for (const Device& device : FindDevices(sources, known))
        rows.push_back(DeviceRecord(device));
    return rows;
}

} // namespace

std::string InventoryText(const std::string& machine, const Sources& sources,
                          const Surroundings& surroundings) {
    const std::vector<NetworkAdapter> adapters = NetworkAdapters(sources, surroundings);
    const std::vector<InputDevice> input = InputDevices(sources);
    const Drives drives = FindDrives(sources);
    const Processor processor = ReadProcessor(sources);
    const SystemBoard board = ReadSystemBoard(sources);

    std::string file;
    AddSection(file, "NET", {NetRecord(machine, surroundings, adapters)});
    AddSection(file, "OS", {SystemRecord(sources, surroundings)});
    // The products of that suite do not exist for this system.
    AddSection(file, "MSOFFICE", {Positional<5>({}, kOffice)});
    AddSection(file, "INPUT", {InputRecord(input)});
    AddSection(file, "PC", {MachineRecord(sources, surroundings, processor)});
    AddSection(file, "DRIVES", {DrivesRecord(drives)});
    AddCounted(file, "UNINSTALL", ProgramRows(sources));
    AddCounted(file, "ODBC", DriverRows(sources));
    AddCounted(file, "PRINTER", PrinterRows(sources));
    AddSection(file, "DRIVESDATA", DriveRows(drives));
    AddCounted(file, "DEVICE", DeviceRows(sources, {adapters, input, board, processor.name}));
    return file;
}

} // namespace collector
