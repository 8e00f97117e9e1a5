// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/UsbDevice.h"

#include "collector/Text.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <optional>

namespace collector {

namespace {

constexpr std::string_view kBus = "/sys/bus/usb/devices";
constexpr std::uint64_t kStorage = 0x08;
constexpr std::uint64_t kHumanInterface = 0x03;

struct UsbClass {
    std::uint64_t code;
    const char* category;
};
constexpr std::array<UsbClass, 9> kClasses = {{
    {0x01, "Sound, video and game controllers"},
    {0x02, "Ports (COM & LPT)"},
    {0x06, "Imaging devices"},
    {0x07, "Printers"},
    {0x09, "Universal Serial Bus controllers"},
    {0x0B, "Smart card readers"},
    {0x0D, "Biometric devices"},
    {0x0E, "Imaging devices"},
    {0xE0, "Bluetooth devices"},
}};

const char* CategoryOf(std::uint64_t code) {
    const auto* const found = std::find_if(kClasses.begin(), kClasses.end(),
                                           [code](const UsbClass& entry) { return entry.code == code; });
    return found == kClasses.end() ? nullptr : found->category;
}

// The folders of a device's interfaces: its own name, a colon, and their numbers.
std::vector<std::string> InterfacesOf(const std::vector<std::string>& entries, const std::string& device) {
    std::vector<std::string> interfaces;
    for (const std::string& entry : entries)
        if (entry.starts_with(device + ":"))
            interfaces.push_back(std::string(kBus) + "/" + entry);
    return interfaces;
}

std::optional<UsbDevice> ReadDevice(const Sources& sources, const HardwareNames& names,
                                    const std::string& folder, const std::vector<std::string>& interfaces) {
    UsbDevice device;
    device.category = "Other devices";
    device.name = UsbName(sources, names, folder);
    std::uint64_t code = sources.ReadHexadecimal(folder + "/bDeviceClass");
    for (const std::string& interface : interfaces) {
        if (sources.Exists(interface + "/net"))
            return std::nullopt;
        const std::uint64_t interfaceCode = sources.ReadHexadecimal(interface + "/bInterfaceClass");
        if (interfaceCode == kStorage || interfaceCode == kHumanInterface)
            return std::nullopt;
        // 0 and 0xEF leave the class to the interfaces; the first that is known stands for the device.
        if (CategoryOf(code) == nullptr)
            code = interfaceCode;
    }
    if (const char* const category = CategoryOf(code))
        device.category = category;
    return device;
}

} // namespace

std::string UsbName(const Sources& sources, const HardwareNames& names, const std::string& folder) {
    const std::string maker = ShortMaker(sources.ReadLine(folder + "/manufacturer"));
    const std::string product = sources.ReadLine(folder + "/product");
    if (!product.empty())
        return maker.empty() || product.starts_with(maker) ? product : maker + " " + product;
    const std::string vendor = sources.ReadLine(folder + "/idVendor");
    const std::string number = sources.ReadLine(folder + "/idProduct");
    const std::string listed = names.Name(static_cast<std::uint16_t>(WholeNumber(vendor, 16).value_or(0)),
                                          static_cast<std::uint16_t>(WholeNumber(number, 16).value_or(0)));
    return listed.empty() ? "USB device " + UpperCase(vendor) + ":" + UpperCase(number) : listed;
}

std::vector<UsbDevice> UsbDevices(const Sources& sources, const HardwareNames& names) {
    std::vector<UsbDevice> devices;
    const std::vector<std::string> entries = sources.List(kBus);
    for (const std::string& entry : entries) {
        const std::string folder = std::string(kBus) + "/" + entry;
        if (!sources.Exists(folder + "/idVendor"))
            continue;
        if (const auto device = ReadDevice(sources, names, folder, InterfacesOf(entries, entry)))
            devices.push_back(*device);
    }
    return devices;
}

} // namespace collector
