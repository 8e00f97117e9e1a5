// SPDX-License-Identifier: GPL-3.0-or-later
// Keyboards and mice, from the kernel's list of input devices and the codes that they say they can
// send. Delays and speeds belong to a user's session and are not known here.
#pragma once

#include "collector/Sources.h"

#include <string>
#include <vector>

namespace collector {

struct InputDevice {
    std::string name;
    bool isKeyboard = false; // has letters: power buttons and remote controls call themselves keyboards
    bool isMouse = false;    // moves the pointer: touchpads and tablets are mice too
    std::size_t functionKeys = 0;
    std::size_t buttons = 0;
    bool hasWheel = false;
};

/// The keyboards and mice among the input devices, in the kernel's order.
std::vector<InputDevice> InputDevices(const Sources& sources);

} // namespace collector
