// SPDX-License-Identifier: GPL-3.0-or-later
// The machine's devices under the categories that an administrator knows. Three categories bring
// details of their own, which the console takes apart: display adapters, network adapters and, as
// "System Board" among the system devices, the board.
#pragma once

#include "collector/InputDevices.h"
#include "collector/Machine.h"
#include "collector/Network.h"
#include "collector/PciDevice.h"
#include "collector/Sources.h"

#include <string>
#include <vector>

namespace collector {

/// One more pair of a device's record, behind those that every device has.
struct DeviceDetail {
    std::string tag;
    std::string text;
    std::size_t width;
    char terminator = ';';
};

struct Device {
    std::string category;
    std::string name;
    bool isWithoutDriver = false; // the one problem that is known here
    Resources resources;
    std::vector<DeviceDetail> details;
};

/// What was read already and is shown among the devices too.
struct KnownParts {
    const std::vector<NetworkAdapter>& adapters;
    const std::vector<InputDevice>& input;
    const SystemBoard& board;
    const std::string& processor;
};

std::vector<Device> FindDevices(const Sources& sources, const KnownParts& known);

/// A device as the console reads it; every tag is there, if empty.
std::string DeviceRecord(const Device& device);

} // namespace collector
