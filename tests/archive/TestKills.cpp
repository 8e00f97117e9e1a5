// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/ArchiveKills.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

TEST(ArchiveKills, AKilledCommandCostsNothingThatWasThere) {
    const TemporaryFolder folder;
    SiteSize size;
    size.machines = 6;
    const KillReport report = KillAtRandom(folder.Path("site"), size, 30, 7);
    for (const std::string& fault : report.faults)
        ADD_FAILURE() << fault;
    EXPECT_GT(report.killed, 0) << "no kill fell into a command";
}

} // namespace
