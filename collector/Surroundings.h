// SPDX-License-Identifier: GPL-3.0-or-later
// What a machine tells through calls rather than files: who runs the program, when, in which time
// zone, and the addresses of the interfaces. Taken when the inventory begins, so that one file holds one
// moment.
#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace collector {

/// An IPv4 address of a network interface, in dotted form.
struct InterfaceAddress {
    std::string interface;
    std::string address;
    std::string mask;
};

struct Surroundings {
    std::string user;
    std::tm now{}; // local time
    std::string standardZone;
    std::string daylightZone; // empty where the zone has no daylight saving time
    std::string kernel;       // "Linux"
    std::string architecture;
    std::vector<InterfaceAddress> addresses;
};

Surroundings CurrentSurroundings();

/// The account that runs the program; empty where it has no name.
std::string UserName();

/// When the earliest of `user`'s present sessions began, as far as the login records know.
std::optional<std::time_t> SessionStart(const std::string& user);

} // namespace collector
