// SPDX-License-Identifier: GPL-3.0-or-later
// Installed software: packages and database drivers.
#pragma once

#include "collector/Sources.h"

#include <string>
#include <vector>

namespace collector {

struct Package {
    std::string name;    // with its version and what it is
    std::string removal; // the command that removes it
};

/// Installed packages, by name. Packages that were removed but left their configuration are not.
std::vector<Package> InstalledPackages(const Sources& sources);

struct DatabaseDriver {
    std::string name;
    std::string path;
    std::string version;
};

/// The drivers that the ODBC driver manager of this machine knows.
std::vector<DatabaseDriver> DatabaseDrivers(const Sources& sources);

} // namespace collector
