// SPDX-License-Identifier: GPL-3.0-or-later
// The categories of the navigation tree. Every one stands below ALL and below every machine, in this order.
// The key of a category's node is the branch's prefix and the suffix: "ALL?CPU", "PC1?CPU".
#pragma once

#include "browser/Images.h"

#include <array>
#include <cstddef>
#include <string_view>

struct Category {
    std::string_view suffix;
    std::string_view text;
    Image image;
    /// The category's position in kCategories below which this one stands; kBranch for the branch itself.
    int parent;
};

constexpr int kBranch = -1;
constexpr int kDevices = 1;
constexpr int kDrives = 5;

constexpr std::array<Category, 13> kCategories = {{
    {"?CPU", "CPU/RAM etc.", Image::PC_CPU, kBranch},
    {"?DEV", "Devices", Image::PC_DEVICE, kBranch},
    {"?DEVDISP", "Display", Image::PC_DEVICE, kDevices},
    {"?DEVMB", "Motherboard", Image::PC_DEVICE, kDevices},
    {"?DEVNET", "Network", Image::PC_DEVICE, kDevices},
    {"?DRV", "Drives", Image::PC_DRIVE, kBranch},
    {"?DRVDETAIL", "Detail", Image::PC_DRIVE, kDrives},
    {"?IO", "I/O Devices", Image::PC_IO, kBranch},
    {"?MSO", "MS Office Products", Image::PC_OFFICE, kBranch},
    {"?ODB", "ODBC Drivers", Image::PC_ODBC, kBranch},
    {"?OS", "Operating System", Image::PC_OS, kBranch},
    {"?PRN", "Printers", Image::PC_PRINTER, kBranch},
    {"?UNI", "Installed Software", Image::PC_UNINSTALL, kBranch},
}};
static_assert(kCategories[kDevices].suffix == "?DEV" && kCategories[kDrives].suffix == "?DRV");

/// Suffix of the node of one machine.
constexpr std::string_view kMachineSuffix = "?MAIN";

/// Position of the category with this suffix, or -1.
constexpr int FindCategory(std::string_view suffix) {
    for (std::size_t i = 0; i < kCategories.size(); ++i)
        if (kCategories.at(i).suffix == suffix)
            return static_cast<int>(i);
    return -1;
}
