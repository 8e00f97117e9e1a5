// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the main window's tree and lists in ratios, each taken in this one run and printed beside its
// limit: against the engine's own reading of the same rows, and sorting against the library's.
// bench_lists [machines]; 10000 where none are given, with a hundred programs each. Ends with 1 where a
// limit is missed.
#include "bench/BareWriter.h"
#include "bench/Measure.h"
#include "bench/Site.h"
#include "browser/CategoryLists.h"
#include "browser/ListFiller.h"
#include "browser/ListView.h"
#include "browser/frmMain.h"
#include "core/Globals.h"
#include "import/Schema.h"
#include "platform/application.h"
#include "platform/desktop.h"
#include "platform/report/SystemPrinting.h"

#include <malloc.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace {

constexpr int kRounds = 5;
constexpr std::int16_t kCurrent = 1;
constexpr const char* kSoftware = "SELECT * FROM UninstallData WHERE ConfID=1";

class QuietPrompts final : public Prompts {
public:
    MsgBoxAnswer MsgBox(const std::string& text, int /*style*/, const std::string& title) override {
        throw std::runtime_error("unexpected box: " + title + ": " + text);
    }
    std::string InputBox(const std::string&, const std::string&, const std::string&) override { return {}; }
    std::string OpenFile(const FileDialog&) override { return {}; }
    std::string SaveFile(const FileDialog&) override { return {}; }
    std::string BrowseForFolder(const std::string&, const std::string&) override { return {}; }
    void Beep() override {}
};

/// Runs a statement to its end and touches the first `columns` texts of each row.
double StepBare(const char* sql, int columns) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(gConnection->Handle(), sql, -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(gConnection->Handle()));
    const double seconds = Timed([&] {
        while (sqlite3_step(statement) == SQLITE_ROW)
            for (int column = 0; column < columns; ++column)
                sqlite3_column_text(statement, column);
    });
    sqlite3_finalize(statement);
    return seconds;
}

template <class Bare, class Work>
double Ratio(const char* what, const Bare& bare, const Work& work) {
    std::vector<double> bares;
    std::vector<double> works;
    for (int round = 0; round < kRounds; ++round) {
        bares.push_back(bare());
        works.push_back(work());
    }
    std::printf("%s: %.1f ms, bare %.1f ms\n", what, Median(works) * 1000, Median(bares) * 1000);
    return Median(works) / Median(bares);
}

double ResidentBytes() {
    malloc_trim(0);
    long pages = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

std::shared_ptr<ADODB::Connection> Opened(const std::string& path) {
    auto connection = std::make_shared<ADODB::Connection>();
    connection->ConnectionString("DBQ=" + path + ";USR=Admin;");
    connection->Open();
    return connection;
}

/// A database with nothing but its table of machines.
std::string MachinesAlone(const Workplace& place, int machines) {
    const std::string path = place.Folder("machines") + "/" + std::to_string(machines) + ".mdb";
    CreateDatabase(path);
    const auto connection = Opened(path);
    connection->BeginTrans();
    for (int number = 0; number < machines; ++number)
        connection->Execute(
            "INSERT INTO Net ([COMPUTERNAME], [Logon User Name], [Logon Date], [Logon Time]) VALUES ('" +
            MachineName(number) + "', 'user', '20011102', '08:00:00')");
    connection->CommitTrans();
    connection->Close();
    return path;
}

/// The program's own database, filled from a site's files.
void WriteOwnDatabase(const Workplace& place, int machines) {
    SiteSize size;
    size.machines = machines;
    size.devices = 1;
    size.drivers = 1;
    const std::string site = place.Folder("site");
    WriteSite(site, size);
    const std::string path = place.Folder("program") + "/Demodb.mdb";
    CreateDatabase(path);
    BareWrite(site, path);
    Opened(path)->Execute("UPDATE Version SET LastImportDate = '20011102'");
}

class Bench {
public:
    Bench(const Workplace& place, frmMain& form)
        : mPlace(place), mForm(form), mList(*form.findChild<ListView*>("lvListView")) {}

    bool Run() {
        bool holds = MeasureMachines();
        holds &= MeasureSoftware();
        holds &= MeasureOrder();
        return MeasureGrowth() && holds;
    }

private:
    bool MeasureMachines() {
        const auto readMachines = [] { return StepBare("SELECT * FROM Net", 4); };
        bool holds =
            Report("tree rebuild / reading its machines",
                   Ratio("tree", readMachines, [this] { return Timed([this] { mForm.OpenSinDatabase(); }); }),
                   3, false);
        holds &= Report("overview of all machines / reading them",
                        Ratio("overview", readMachines,
                              [this] {
                                  EmptyList();
                                  return Timed([this] { mForm.DisplayUsers(mList); });
                              }),
                        3, false);
        return holds;
    }

    bool MeasureSoftware() {
        StepBare(kSoftware, 0);
        EmptyList();
        const double before = ResidentBytes();
        const auto fill = [this] {
            EmptyList();
            return Timed([this] { mForm.Get_UNI_All(mList, kCurrent); });
        };
        fill();
        QApplication::processEvents();
        const auto rows = static_cast<double>(mList.Items().Rows());
        std::printf("%.0f rows of installed software\n", rows);
        bool holds =
            Report("bytes of the process for each row shown", (ResidentBytes() - before) / rows, 250, false);
        holds &= Report("bytes of the list for each row",
                        static_cast<double>(mList.Items().MemoryUsed()) / rows, 250, false);
        holds &= Report("installed software of all machines / stepping its query",
                        Ratio(
                            "installed software", [] { return StepBare(kSoftware, 0); }, fill),
                        2, false);
        std::printf("until it is painted: %.1f ms more\n",
                    Timed([] { QApplication::processEvents(); }) * 1000);
        EmptyList();
        return holds;
    }

    bool MeasureOrder() {
        ListModel list;
        ListFiller(list, gConnection, gRecordset).Fill(Lists::kSoftwareOfAll, {}, kCurrent);
        list.Publish();
        bool holds = true;
        for (const int column : {0, 1, 2}) {
            std::vector<std::string> texts;
            for (std::size_t row = 0; row < list.Rows(); ++row)
                texts.emplace_back(list.Text(row, column));
            const auto sortTexts = [&texts] {
                std::vector<std::string> sorted = texts;
                return Timed([&sorted] { std::sort(sorted.begin(), sorted.end()); });
            };
            const std::string what =
                "sort by \"" + list.Columns().at(static_cast<std::size_t>(column)).caption + "\"";
            holds &= Report((what + " / std::sort").c_str(),
                            Ratio(what.c_str(), sortTexts,
                                  [&] {
                                      list.Sort(-1, Qt::AscendingOrder);
                                      return Timed([&] { list.Sort(column, Qt::DescendingOrder); });
                                  }),
                            2, false);
        }
        std::printf("filter, as typed:");
        for (const char* text : {"s", "se", "set", "setup.exe /remove 7", "setup.exe /remove", "zz", ""})
            std::printf(" \"%s\" %.1f ms", text, Timed([&] { list.Filter(text); }) * 1000);
        std::printf("\n");
        return holds;
    }

    bool MeasureGrowth() {
        constexpr int kFew = 10000;
        constexpr int kMany = 100000;
        const double few = TreeSeconds(kFew) / kFew;
        const double many = TreeSeconds(kMany) / kMany;
        return Report("tree's cost of a machine, 100,000 machines / 10,000", many / few, 1.3, false);
    }

    double TreeSeconds(int machines) {
        mForm.CloseSinDatabase(true);
        mForm.ConnectSinDatabase(MachinesAlone(mPlace, machines));
        std::vector<double> seconds;
        for (int round = 0; round < kRounds; ++round)
            seconds.push_back(Timed([this] { mForm.OpenSinDatabase(); }));
        std::printf("tree of %d machines: %.1f ms\n", machines, Median(seconds) * 1000);
        return Median(seconds);
    }

    void EmptyList() {
        mList.ClearItems();
        mList.ClearColumns();
    }

    const Workplace& mPlace;
    frmMain& mForm;
    ListView& mList;
};

/// Opens nothing.
class NoDesktop final : public Desktop {
public:
    bool Open(const std::string& /*address*/) override { return false; }
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv);
    try {
        const Workplace place("bench-lists");
        WriteOwnDatabase(place, argc > 1 ? std::atoi(argv[1]) : 10000);
        SettingsStore settings(place.Folder("settings") + "/settings.ini");
        QuietPrompts prompts;
        const SystemClock clock;
        NoDesktop desktop;
        report::SystemPrinting printing(prompts);
        frmMain form(settings, prompts, clock, desktop, printing, place.Folder("program"));
        form.Load();
        form.show();
        QApplication::processEvents();
        return Bench(place, form).Run() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::printf("%s\n", failure.what());
        return 1;
    }
}
