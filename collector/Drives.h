// SPDX-License-Identifier: GPL-3.0-or-later
// The drives of a machine: mounted block devices and network shares, and the optical drives whether a
// disc is in them or not. A device that is mounted in several places is one drive, and what the
// kernel mounts for itself is none.
#pragma once

#include "collector/Sources.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace collector {

enum class DriveKind { Fixed, Optical, Network };

struct Drive {
    DriveKind kind = DriveKind::Fixed;
    std::string root; // where it is mounted, or its device when it is not
    std::string fileSystem;
    std::optional<Space> space;
    std::string label;
    std::string serial;
    std::string mapping; // a network drive's share
    std::string user;    // as whom the share is mounted
};

struct Drives {
    std::vector<Drive> listed;
    std::size_t removable = 0; // drives with removable media that are not optical, mounted or not
    std::size_t memory = 0;    // file systems in memory, but for those in the system's own folders

    std::size_t Count(DriveKind kind) const;
};

Drives FindDrives(const Sources& sources);

/// The kind's name as the console's reports look for it.
const char* DriveDescription(DriveKind kind);

} // namespace collector
