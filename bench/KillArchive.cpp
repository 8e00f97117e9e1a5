// SPDX-License-Identifier: GPL-3.0-or-later
// kill_archive [rounds] [seed] [machines]: kills backups, restores, exports and baseline rewrites at random
// moments, 200 times if not told otherwise. Ends with 1 where anything was broken by it.
#include "bench/ArchiveKills.h"
#include "bench/Measure.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    const auto argument = [&](int place, long fallback) {
        return argc > place ? std::strtol(argv[place], nullptr, 10) : fallback;
    };
    try {
        constexpr long kRounds = 200;
        constexpr long kMachines = 40;
        SiteSize size;
        size.machines = static_cast<int>(argument(3, kMachines));
        const Workplace place("kill_archive");
        const KillReport report =
            KillAtRandom(place.Folder("site"), size, static_cast<int>(argument(1, kRounds)),
                         static_cast<std::uint32_t>(argument(2, 1)));
        for (const std::string& fault : report.faults)
            std::printf("BROKEN: %s\n", fault.c_str());
        std::printf("%d rounds, %d killed within the command, %d of them after a change, %zu broken\n",
                    report.rounds, report.killed, report.changed, report.faults.size());
        return report.faults.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
