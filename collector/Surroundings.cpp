// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Surroundings.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>
#include <utmpx.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace collector {

namespace {

std::string Dotted(const sockaddr* address) {
    if (address == nullptr || address->sa_family != AF_INET)
        return {};
    std::array<char, INET_ADDRSTRLEN> text{};
    const void* const number = &reinterpret_cast<const sockaddr_in*>(address)->sin_addr;
    const char* const dotted = ::inet_ntop(AF_INET, number, text.data(), text.size());
    return dotted == nullptr ? std::string() : dotted;
}

std::vector<InterfaceAddress> InterfaceAddresses() {
    std::vector<InterfaceAddress> addresses;
    ifaddrs* first = nullptr;
    if (::getifaddrs(&first) != 0)
        return addresses;
    for (const ifaddrs* entry = first; entry != nullptr; entry = entry->ifa_next) {
        const std::string address = Dotted(entry->ifa_addr);
        if (!address.empty())
            addresses.push_back({entry->ifa_name, address, Dotted(entry->ifa_netmask)});
    }
    ::freeifaddrs(first);
    return addresses;
}

} // namespace

std::string UserName() {
    const passwd* const account = ::getpwuid(::getuid()); // NOLINT(concurrency-mt-unsafe)
    return account == nullptr || account->pw_name == nullptr ? std::string() : account->pw_name;
}

Surroundings CurrentSurroundings() {
    Surroundings here;
    here.user = UserName();
    const std::time_t moment = std::time(nullptr);
    ::tzset();
    ::localtime_r(&moment, &here.now);
    here.standardZone = ::tzname[0];
    if (::daylight != 0)
        here.daylightZone = ::tzname[1];
    utsname kernel{};
    if (::uname(&kernel) == 0) {
        here.kernel = kernel.sysname;
        here.architecture = kernel.machine;
    }
    here.addresses = InterfaceAddresses();
    return here;
}

std::optional<std::time_t> SessionStart(const std::string& user) {
    std::optional<std::time_t> earliest;
    ::setutxent();
    while (const utmpx* const entry = ::getutxent()) {
        const std::string_view field(entry->ut_user, sizeof entry->ut_user);
        const std::string_view name = field.substr(0, field.find('\0'));
        // The field holds 32 bytes; a longer name stands cut.
        const bool isUser = !name.empty() && name == std::string_view(user).substr(0, field.size());
        if (entry->ut_type == USER_PROCESS && isUser)
            earliest = std::min<std::time_t>(entry->ut_tv.tv_sec, earliest.value_or(entry->ut_tv.tv_sec));
    }
    ::endutxent();
    return earliest;
}

} // namespace collector
