// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the import in ratios, each taken in this one run and printed beside its limit:
// against the bare writer, per machine at ten times the machines, and in the rows of one file.
// bench_import [machines]; 2000 where none are given. Ends with 1 where a limit is missed.
#include "bench/BareWriter.h"
#include "bench/Measure.h"
#include "bench/Site.h"
#include "import/cSinImport.h"

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

class QuietPrompts final : public Prompts {
public:
    MsgBoxAnswer MsgBox(const std::string& text, int /*style*/, const std::string& title) override {
        std::printf("unexpected box: %s: %s\n", title.c_str(), text.c_str());
        std::exit(1);
    }
    std::string InputBox(const std::string&, const std::string&, const std::string&) override { return {}; }
    std::string OpenFile(const FileDialog&) override { return {}; }
    std::string SaveFile(const FileDialog&) override { return {}; }
    std::string BrowseForFolder(const std::string&, const std::string&) override { return {}; }
    void Beep() override {}
};

double Import(const Workplace& place, const std::string& folder) {
    const std::string database = place.NewDatabase();
    return Timed([&] {
        auto connection = std::make_shared<ADODB::Connection>();
        connection->ConnectionString("DBQ=" + database + ";USR=Admin;");
        connection->Open();
        QuietPrompts prompts;
        const SystemClock clock;
        bool noData = false;
        cSinImport(connection, prompts, clock, {}, nullptr).ImportInfData(folder, "", noData);
        connection->Close();
    });
}

double BareImport(const Workplace& place, const std::string& folder) {
    const std::string database = place.NewDatabase();
    return Timed([&] { BareWrite(folder, database); });
}

/// A folder with one machine that has `rows` programs or devices.
std::string OneMachine(const Workplace& place, bool devices, int rows) {
    SiteSize size;
    size.machines = 1;
    (devices ? size.devices : size.programs) = rows;
    const std::string folder = place.Folder((devices ? "devices" : "programs") + std::to_string(rows));
    WriteSite(folder, size);
    return folder;
}

bool IsLinear(const Workplace& place, bool devices) {
    const std::string half = OneMachine(place, devices, 16383);
    const std::string whole = OneMachine(place, devices, 32767);
    std::vector<double> halves;
    std::vector<double> wholes;
    for (int round = 0; round < 3; ++round) {
        halves.push_back(Import(place, half));
        wholes.push_back(Import(place, whole));
    }
    return Report(devices ? "32,767 devices in one file / 16,383" : "32,767 programs in one file / 16,383",
                  Median(wholes) / Median(halves), 2.3, false);
}

} // namespace

int main(int argc, char** argv) {
    try {
        const Workplace place("bench-import");
        SiteSize size;
        size.machines = argc > 1 ? std::atoi(argv[1]) : 2000;
        const std::string site = place.Folder("site");
        WriteSite(site, size);
        std::vector<double> bare;
        std::vector<double> imported;
        for (int round = 0; round < 3; ++round) {
            bare.push_back(BareImport(place, site));
            imported.push_back(Import(place, site));
        }
        std::printf("%d machines: import %.2f s, bare writer %.2f s\n", size.machines, Median(imported),
                    Median(bare));
        bool holds = Report("speed of the import / speed of the bare writer", Median(bare) / Median(imported),
                            0.9, true);
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        holds &= Report("peak memory, MB", static_cast<double>(usage.ru_maxrss) / 1024, 150, false);

        SiteSize small = size;
        small.machines = size.machines / 2;
        SiteSize large = size;
        large.machines = size.machines * 5;
        const std::string smallSite = place.Folder("small");
        const std::string largeSite = place.Folder("large");
        WriteSite(smallSite, small);
        WriteSite(largeSite, large);
        const double smallCost = Import(place, smallSite) / small.machines;
        const double largeCost = Import(place, largeSite) / large.machines;
        holds &= Report("cost of a machine at ten times the machines", largeCost / smallCost, 1.3, false);
        holds &= IsLinear(place, true);
        holds &= IsLinear(place, false);
        return holds ? 0 : 1;
    } catch (const std::exception& failure) {
        std::printf("%s\n", failure.what());
        return 1;
    }
}
