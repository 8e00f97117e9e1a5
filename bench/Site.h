// SPDX-License-Identifier: GPL-3.0-or-later
// Synthetic sites: folders of inventory files with the row counts of real machines, the same for the same
// seed. All addresses are loopback ones, so that pinging a whole site reaches nobody.
#pragma once

#include <cstdint>
#include <string>

struct SiteSize {
    int machines = 2000;
    int programs = 100;
    int drivers = 20;
    int printers = 4;
    int drives = 5;
    int devices = 80;
    /// Of a hundred machines, how many have a file of personal details.
    int personalPercent = 0;
    std::uint32_t seed = 1;
};

/// The name of the `number`-th machine, such as "PC000017".
std::string MachineName(int number);

/// The bytes of one machine's inventory file. `configuration` 0 is the original one, 1 the current one,
/// which differs from it in a few programs, sizes and dates.
std::string InventoryFile(const SiteSize& size, int number, int configuration);

/// Writes .ORG and .INF files, and .PNF files where asked for, into `folder`, which must exist.
void WriteSite(const std::string& folder, const SiteSize& size);
