// SPDX-License-Identifier: GPL-3.0-or-later
// The devices on the USB buses that nothing else lists: disks, keyboards, mice and network adapters
// are found by what they do, not by how they are connected.
#pragma once

#include "collector/HardwareNames.h"
#include "collector/Sources.h"

#include <string>
#include <string_view>
#include <vector>

namespace collector {

struct UsbDevice {
    std::string category;
    std::string name;
};

std::vector<UsbDevice> UsbDevices(const Sources& sources, const HardwareNames& names);

/// The name of the device in a folder of the USB bus: what the device says of itself, else what the
/// list says, else its numbers.
std::string UsbName(const Sources& sources, const HardwareNames& names, const std::string& folder);

} // namespace collector
