// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Network.h"

#include "collector/Text.h"
#include "platform/text.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <optional>

namespace collector {

namespace {

struct Route {
    std::string interface;
    std::string gateway;
    std::uint64_t metric = 0;
};

// The kernel prints an address as the number that its four bytes make on this machine.
std::string DottedFromKernel(std::string_view hexadecimal) {
    const std::uint64_t number = WholeNumber(hexadecimal, 16).value_or(0);
    const in_addr address{static_cast<std::uint32_t>(number)};
    std::array<char, INET_ADDRSTRLEN> text{};
    if (address.s_addr == 0 || ::inet_ntop(AF_INET, &address, text.data(), text.size()) == nullptr)
        return {};
    return text.data();
}

// Columns: interface, destination, gateway, flags, two counters, metric, mask.
std::vector<Route> DefaultRoutes(const Sources& sources) {
    std::vector<Route> routes;
    const std::string text = sources.Read("/proc/net/route");
    for (const std::string_view line : Split(text, '\n')) {
        const std::vector<std::string_view> words = Words(line);
        if (words.size() >= 8 && words[1] == "00000000" && words[7] == "00000000")
            routes.push_back(
                {std::string(words[0]), DottedFromKernel(words[2]), WholeNumber(words[6]).value_or(0)});
    }
    std::stable_sort(routes.begin(), routes.end(),
                     [](const Route& one, const Route& other) { return one.metric < other.metric; });
    return routes;
}

std::string HardwareAddress(const Sources& sources, const std::string& interface) {
    std::string digits;
    for (const char letter : sources.ReadLine("/sys/class/net/" + interface + "/address"))
        if (std::isxdigit(static_cast<unsigned char>(letter)) != 0)
            digits += letter;
    return digits.size() == 12 && digits != "000000000000" ? UpperCase(digits) : std::string();
}

NetworkAdapter ReadAdapter(const Sources& sources, const Surroundings& surroundings,
                           const std::string& interface) {
    NetworkAdapter adapter;
    adapter.interface = interface;
    adapter.folder = sources.Resolved("/sys/class/net/" + interface + "/device");
    adapter.hardwareAddress = HardwareAddress(sources, interface);
    for (const InterfaceAddress& address : surroundings.addresses)
        // An alias such as "eth0:1" is a further address of the same adapter.
        if (address.interface == interface || address.interface.starts_with(interface + ":"))
            adapter.addresses.push_back(address);
    return adapter;
}

// Names of all interfaces but the loopback one; without the kernel's tree, those with an address.
std::vector<std::string> InterfaceNames(const Sources& sources, const Surroundings& surroundings) {
    std::vector<std::string> names = sources.List("/sys/class/net");
    if (names.empty())
        for (const InterfaceAddress& address : surroundings.addresses)
            names.push_back(address.interface.substr(0, address.interface.find(':')));
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    std::erase(names, "lo");
    return names;
}

bool IsHardware(const NetworkAdapter& adapter) {
    return !adapter.folder.empty();
}

} // namespace

std::vector<NetworkAdapter> NetworkAdapters(const Sources& sources, const Surroundings& surroundings) {
    std::vector<NetworkAdapter> adapters;
    for (const std::string& name : InterfaceNames(sources, surroundings))
        adapters.push_back(ReadAdapter(sources, surroundings, name));
    const std::vector<Route> routes = DefaultRoutes(sources);
    for (const Route& route : routes)
        for (NetworkAdapter& adapter : adapters)
            if (adapter.interface == route.interface && adapter.gateway.empty())
                adapter.gateway = route.gateway;

    const bool hasHardware = std::any_of(adapters.begin(), adapters.end(), IsHardware);
    const auto carriesTraffic = [&routes](const NetworkAdapter& adapter) {
        return std::any_of(routes.begin(), routes.end(),
                           [&adapter](const Route& route) { return route.interface == adapter.interface; });
    };
    std::erase_if(adapters, [&](const NetworkAdapter& adapter) {
        const bool isSpare = hasHardware || adapter.addresses.empty();
        return !IsHardware(adapter) && !carriesTraffic(adapter) && isSpare;
    });
    std::stable_partition(adapters.begin(), adapters.end(), [&routes](const NetworkAdapter& adapter) {
        return !routes.empty() && routes.front().interface == adapter.interface;
    });
    return adapters;
}

} // namespace collector
