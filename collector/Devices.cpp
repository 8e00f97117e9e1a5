// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Devices.h"

#include "collector/Record.h"
#include "collector/Text.h"
#include "collector/UsbDevice.h"
#include "platform/text.h"

#include <algorithm>

namespace collector {

namespace {

constexpr std::size_t kTextWidth = 50;
constexpr std::size_t kAddressWidth = 20;
constexpr std::size_t kDateWidth = 10;
constexpr std::size_t kNamesLimit = 16 * Sources::kUsualLimit;

// The console compares the first with all its blanks. The second is the number for a device that has
// no driver, lowest byte first.
constexpr const char* kNoProblem = "00 00 00 00 ";
constexpr const char* kNoDriver = "1C 00 00 00 ";

HardwareNames ReadNames(const Sources& sources, const std::string& file) {
    for (const char* const folder : {"/usr/share/misc/", "/usr/share/hwdata/"})
        if (sources.Exists(folder + file))
            return HardwareNames(sources.Read(folder + file, kNamesLimit));
    return HardwareNames({});
}

Device Named(const std::string& category, const std::string& name) {
    Device device;
    device.category = category;
    device.name = name;
    return device;
}

// "0000:00:1f.6": domain, bus, slot and function.
bool IsPciAddress(std::string_view name) {
    return name.size() >= 12 && name[name.size() - 2] == '.' && name[name.size() - 5] == ':' &&
           name[name.size() - 8] == ':';
}

// The bus device that an interface's hardware is or belongs to: the nearest folder upwards that is one.
void DescribeHardware(const Sources& sources, const HardwareNames& pciNames, const HardwareNames& usbNames,
                      std::string folder, Device& device) {
    for (; folder.size() > 1; folder.resize(folder.rfind('/'))) {
        if (sources.Exists(folder + "/idVendor")) {
            device.name = UsbName(sources, usbNames, folder);
            return;
        }
        if (IsPciAddress(folder.substr(folder.rfind('/') + 1))) {
            const PciDevice pci = ReadPciDevice(sources, pciNames, folder);
            device.name = pci.name;
            device.resources = pci.resources;
            return;
        }
    }
}

// The interface's name ends the device's, which gives way where both are too long for the column.
std::string WithInterface(const std::string& name, const std::string& interface) {
    if (name.empty())
        return interface;
    const std::string ending = " (" + interface + ")";
    const std::size_t room = kTextWidth - std::min(kTextWidth, ending.size());
    return std::string(FirstCharacters(name, room)) + ending;
}

std::vector<DeviceDetail> ProtocolDetails(const NetworkAdapter& adapter) {
    std::vector<DeviceDetail> details;
    const std::size_t count = adapter.addresses.size();
    // The highest number, not how many there are.
    details.push_back({"PCount", count == 0 ? "" : std::to_string(count - 1), kTextWidth});
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        details.push_back({"PR" + number, "TCP/IP", kTextWidth});
        details.push_back({"IP" + number, adapter.addresses[i].address, kAddressWidth});
        details.push_back({"Mk" + number, adapter.addresses[i].mask, kAddressWidth});
        details.push_back({"Gw" + number, adapter.gateway, kAddressWidth});
        details.push_back({"WS1" + number, "", kAddressWidth});
        details.push_back({"WS2" + number, "", kAddressWidth});
        details.push_back({"Client" + number + "0", "", kTextWidth});
        details.push_back({"Client" + number + "1", "", kTextWidth});
    }
    return details;
}

Device BoardDevice(const SystemBoard& board, const std::string& processor) {
    Device device = Named("System devices", "System Board");
    device.details = {
        {"BName", board.biosName, kTextWidth},   {"BDate", board.biosDate, kDateWidth},
        {"BVer", board.biosVersion, kTextWidth}, {"BUSType", board.bus, kTextWidth},
        {"CPU", processor, kTextWidth},          {"MachType", board.machineType, kTextWidth},
        {"Model", board.model, kTextWidth},
    };
    return device;
}

// Only some drivers tell how much memory their adapter has.
std::string VideoMemory(const Sources& sources, const std::string& folder) {
    const auto bytes = WholeNumber(sources.ReadLine(folder + "/mem_info_vram_total"));
    return bytes ? std::to_string(*bytes >> 20U) + " MB" : std::string();
}

Device FromPci(const Sources& sources, const PciDevice& pci) {
    const PciClass& kind = PciClassOf(pci.classCode);
    Device device = Named(kind.category, pci.name);
    device.isWithoutDriver = kind.needsDriver && !pci.hasDriver;
    device.resources = pci.resources;
    if (device.category == "Display adapters")
        device.details = {{"VidMem", VideoMemory(sources, pci.folder), kTextWidth},
                          {"DACType", "", kTextWidth}};
    if (device.category == "Network adapters")
        device.details = {{"PCount", "", kTextWidth}};
    if (device.category == "Modem")
        device.details = {{"AttTo", "", kTextWidth, '|'}};
    return device;
}

// A monitor tells its name in one of four descriptions of 18 bytes.
std::string MonitorName(const std::string& edid) {
    constexpr std::size_t descriptionSize = 18;
    for (std::size_t place = 54; place + descriptionSize <= std::min<std::size_t>(edid.size(), 126);
         place += descriptionSize) {
        const std::string_view description = std::string_view(edid).substr(place, descriptionSize);
        if (description.starts_with(std::string_view("\0\0\0\xFC", 4)))
            return std::string(Trimmed(description.substr(5, description.find('\n', 5) - 5)));
    }
    return {};
}

void AddMonitors(const Sources& sources, std::vector<Device>& devices) {
    for (const std::string& connector : sources.List("/sys/class/drm")) {
        const std::string folder = "/sys/class/drm/" + connector;
        if (sources.ReadLine(folder + "/status") != "connected")
            continue;
        const std::string name = MonitorName(sources.Read(folder + "/edid"));
        devices.push_back(Named("Monitor", name.empty() ? "Monitor on " + connector : name));
    }
}

// Disks are block devices with hardware behind them.
void AddDisks(const Sources& sources, std::vector<Device>& devices) {
    for (const std::string& disk : sources.List("/sys/block")) {
        const std::string folder = "/sys/block/" + disk + "/device";
        if (!sources.Exists(folder))
            continue;
        const std::string model = sources.ReadLine(folder + "/model");
        devices.push_back(Named(disk.starts_with("sr") ? "CD-ROM drives" : "Disk drives",
                                model.empty() ? "Disk " + disk : model));
    }
}

void AddSerialPorts(const Sources& sources, std::vector<Device>& devices) {
    for (const std::string& port : sources.List("/sys/class/tty")) {
        const std::string folder = "/sys/class/tty/" + port;
        // Type 0 is a port that the kernel keeps ready for hardware that isn't there.
        const auto type = WholeNumber(sources.ReadLine(folder + "/type"));
        if (!port.starts_with("ttyS") || type.value_or(0) == 0)
            continue;
        Device device = Named("Ports (COM & LPT)", "Serial port (" + port + ")");
        const auto first = WholeNumber(sources.ReadLine(folder + "/port"), 16);
        if (first.value_or(0) != 0)
            device.resources.ports = PortRange(*first, *first + 7);
        const std::string interrupt = sources.ReadLine(folder + "/irq");
        if (interrupt != "0")
            device.resources.interrupt = interrupt;
        devices.push_back(device);
    }
}

void AddInput(const std::vector<InputDevice>& input, std::vector<Device>& devices) {
    for (const InputDevice& entry : input)
        devices.push_back(Named(entry.isKeyboard ? "Keyboard" : "Mouse", entry.name));
}

} // namespace

std::vector<Device> FindDevices(const Sources& sources, const KnownParts& known) {
    const HardwareNames pciNames = ReadNames(sources, "pci.ids");
    const HardwareNames usbNames = ReadNames(sources, "usb.ids");
    std::vector<Device> devices = {BoardDevice(known.board, known.processor)};
    for (const NetworkAdapter& adapter : known.adapters) {
        Device device = Named("Network adapters", "");
        DescribeHardware(sources, pciNames, usbNames, adapter.folder, device);
        device.name = WithInterface(device.name, adapter.interface);
        device.details = ProtocolDetails(adapter);
        devices.push_back(device);
    }
    for (const PciDevice& pci : PciDevices(sources, pciNames)) {
        const bool isListed =
            std::any_of(known.adapters.begin(), known.adapters.end(), [&pci](const NetworkAdapter& adapter) {
                return (adapter.folder + "/").starts_with(pci.folder + "/");
            });
        const Device device = FromPci(sources, pci);
        if (device.category != "Network adapters" || !isListed)
            devices.push_back(device);
    }
    AddMonitors(sources, devices);
    AddDisks(sources, devices);
    AddInput(known.input, devices);
    AddSerialPorts(sources, devices);
    for (const UsbDevice& usb : UsbDevices(sources, usbNames))
        devices.push_back(Named(usb.category, usb.name));
    return devices;
}

std::string DeviceRecord(const Device& device) {
    TaggedRecord record;
    record.Add("Cat", device.category, kTextWidth, '|')
        .AddExact("Prob", device.isWithoutDriver ? kNoDriver : kNoProblem, '|')
        .Add("DevName", device.name, kTextWidth, '|')
        .Add("DvrDate", "", kDateWidth, '|')
        .Add("IO", device.resources.ports, kTextWidth, '|')
        .Add("IRQ", device.resources.interrupt, kTextWidth, '|')
        .Add("DMA", "", kTextWidth, '|')
        .Add("MEM", device.resources.memory, kTextWidth, '|');
    for (const DeviceDetail& detail : device.details)
        record.Add(detail.tag, detail.text, detail.width, detail.terminator);
    return record.Text();
}

} // namespace collector
