// SPDX-License-Identifier: GPL-3.0-or-later
// Kills the commands on whole databases and baselines at random moments, and looks at what they leave: the
// database sound, every file under a final name whole, old or new, and nothing that was there lost.
#pragma once

#include "bench/Site.h"

#include <cstdint>
#include <string>
#include <vector>

struct KillReport {
    int rounds = 0;
    /// Rounds whose command was killed before its end.
    int killed = 0;
    /// Rounds that were killed after something had taken its final name.
    int changed = 0;
    /// What was found broken, with the round that can be run again.
    std::vector<std::string> faults;
};

/// Runs and kills backup, restore, a restore of a broken database, export and baseline rewrite in turn, in
/// `folder`, which must be empty. The same seed chooses the same moments, as parts of the time
/// of each command's steps.
KillReport KillAtRandom(const std::string& folder, const SiteSize& size, int rounds, std::uint32_t seed);
