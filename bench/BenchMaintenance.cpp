// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the deletion of all machines against the engine's own cascade, row by row, over copies of one
// database in this one run. bench_maintenance [machines]; 10000 where none are given. Ends with 1 where the
// limit is missed.
#include "bench/BareWriter.h"
#include "bench/Measure.h"
#include "bench/Site.h"
#include "platform/adodb.h"
#include "platform/files.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>

namespace {

constexpr int kRounds = 3;

/// Seconds that `work` takes on a copy of the database, with its commit.
double OnCopy(const std::string& database, const std::function<void(ADODB::Connection&)>& work) {
    const std::string copy = database + ".copy";
    DeleteDatabase(copy);
    CopyFile(database, copy);
    ADODB::Connection connection;
    connection.ConnectionString("DBQ=" + copy + ";USR=Admin;");
    connection.Open();
    const double seconds = Timed([&] { work(connection); });
    connection.Close();
    return seconds;
}

bool Measure(const Workplace& place, int machines) {
    SiteSize size;
    size.machines = machines;
    size.programs = 30;
    size.drivers = 10;
    size.devices = 10;
    size.personalPercent = 50;
    const std::string site = place.Folder("site");
    WriteSite(site, size);
    const std::string database = place.NewDatabase();
    std::printf("%d machines, %ld rows\n", machines, BareWrite(site, database));
    std::vector<double> cascades;
    std::vector<double> emptyings;
    for (int round = 0; round < kRounds; ++round) {
        cascades.push_back(
            OnCopy(database, [](ADODB::Connection& connection) { connection.Execute("DELETE * FROM Net"); }));
        emptyings.push_back(
            OnCopy(database, [](ADODB::Connection& connection) { connection.EmptyTable("Net"); }));
    }
    std::printf("cascade %.1f ms, table by table %.1f ms\n", Median(cascades) * 1000,
                Median(emptyings) * 1000);
    return Report("deleting all machines / cascade row by row", Median(emptyings) / Median(cascades), 0.2,
                  false);
}

} // namespace

int main(int argc, char** argv) {
    try {
        const Workplace place("bench-maintenance");
        return Measure(place, argc > 1 ? std::max(std::atoi(argv[1]), 1) : 10000) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
