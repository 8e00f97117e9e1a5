// SPDX-License-Identifier: GPL-3.0-or-later
// Network adapters with their IPv4 addresses. Bridges and tunnels of the machine's own are left out
// (their addresses lead nowhere from outside) unless the traffic goes through one.
#pragma once

#include "collector/Sources.h"
#include "collector/Surroundings.h"

#include <string>
#include <vector>

namespace collector {

struct NetworkAdapter {
    std::string interface;
    std::string folder;          // of the hardware in the kernel's tree; empty for an adapter without any
    std::string hardwareAddress; // twelve hexadecimal digits, or empty
    std::string gateway;         // of the default route through this adapter
    std::vector<InterfaceAddress> addresses;
};

/// The adapter with the default route first, then by the interfaces' names.
std::vector<NetworkAdapter> NetworkAdapters(const Sources& sources, const Surroundings& surroundings);

} // namespace collector
