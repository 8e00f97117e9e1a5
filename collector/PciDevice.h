// SPDX-License-Identifier: GPL-3.0-or-later
// The devices on the PCI buses, with the resources that the kernel gave them.
#pragma once

#include "collector/HardwareNames.h"
#include "collector/Sources.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace collector {

/// What a device holds of the machine, as an administrator writes it: "D000-D0FF", "11".
struct Resources {
    std::string ports;
    std::string memory;
    std::string interrupt;
};

struct PciDevice {
    std::string folder;          // as seen from the root, without links
    std::uint32_t classCode = 0; // class, subclass and programming interface, a byte each
    std::string name;
    Resources resources;
    bool hasDriver = false;
};

std::vector<PciDevice> PciDevices(const Sources& sources, const HardwareNames& names);

/// The device in a folder of the PCI bus.
PciDevice ReadPciDevice(const Sources& sources, const HardwareNames& names, std::string_view folder);

/// Ports as administrators write them: "02F8-02FF".
std::string PortRange(std::uint64_t first, std::uint64_t last);

/// How a class of devices is listed.
struct PciClass {
    std::uint32_t code;
    std::uint32_t mask;
    const char* category;
    const char* genericName;
    bool needsDriver; // useless without one: a device that has none has a problem
};

const PciClass& PciClassOf(std::uint32_t classCode);

} // namespace collector
