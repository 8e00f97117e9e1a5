// SPDX-License-Identifier: GPL-3.0-or-later
// The print queues of this machine, from the print server's own list where it may be read, else by
// asking the server through its socket; nothing is sent to a network.
#pragma once

#include "collector/Sources.h"

#include <string>
#include <string_view>
#include <vector>

namespace collector {

struct Printer {
    bool isLocal = false;
    std::string name;
    std::string driver;
    std::string port; // the device's address, without user names and passwords
};

std::vector<Printer> Printers(const Sources& sources);

/// Whether a queue's device hangs on this very machine.
bool IsLocalDevice(std::string_view address);

/// A device's address without what stands before "@": it may be a password.
std::string WithoutLogin(std::string_view address);

} // namespace collector
