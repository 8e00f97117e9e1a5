// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/NodeKeys.h"

namespace NodeKeys {

std::string WithoutMain(std::string_view key) {
    constexpr std::string_view kMain = "?MAIN";
    std::string name;
    for (std::size_t start = 0; start < key.size();) {
        const std::size_t found = key.find(kMain, start);
        name += key.substr(start, found == std::string_view::npos ? found : found - start);
        start = found == std::string_view::npos ? key.size() : found + kMain.size();
    }
    return name;
}

std::string BeforeCategory(std::string_view key) {
    return std::string(key.substr(0, key.find('?')));
}

bool IsAllMachines(std::string_view name) {
    return name == "ALL" || name == "MAIN";
}

} // namespace NodeKeys
