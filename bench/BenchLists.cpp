// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the main window's tree and lists in ratios, each taken in this one run and printed beside its
// limit: against the engine's own reading of the same rows, and sorting against the library's. Half of the
// machines have a file of personal details in the import folder. What the window does is timed until its
// events are done, painting among them.
// bench_lists [machines]; 10000 where none are given, with a hundred programs each. Ends with 1 where a
// limit is missed, or where the window does not show what the database holds.
#include "bench/BareWriter.h"
#include "bench/Measure.h"
#include "bench/Site.h"
#include "browser/ListView.h"
#include "browser/SortKeys.h"
#include "browser/frmMain.h"
#include "core/Globals.h"
#include "import/Schema.h"
#include "platform/application.h"
#include "platform/desktop.h"
#include "platform/echo.h"
#include "platform/files.h"
#include "platform/report/SystemPrinting.h"
#include "platform/text.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QTreeView>

#include <dirent.h>
#include <malloc.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace {

constexpr int kRounds = 5;
constexpr std::int16_t kCurrent = 1;
constexpr const char* kMachines = "SELECT * FROM Net";
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

/// Reads the names in the import folder and the lengths of the files of personal details among them.
double LookBare() {
    std::size_t bytes = 0;
    const double seconds = Timed([&bytes] {
        const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(gImportDir.c_str()), closedir);
        while (const dirent* const entry = readdir(folder.get())) {
            const char* const name = static_cast<const char*>(entry->d_name);
            struct stat status {};
            if (std::string_view(name).ends_with(".PNF") &&
                fstatat(dirfd(folder.get()), name, &status, 0) == 0)
                bytes += static_cast<std::size_t>(status.st_size);
        }
    });
    if (bytes == 0)
        throw std::runtime_error("no files of personal details");
    return seconds;
}

/// A number that the database holds.
std::size_t Number(const char* sql) {
    ADODB::Recordset rows;
    rows.Open(sql, gConnection);
    return static_cast<std::size_t>(rows.Fields().Item(0).Number());
}

void Check(const char* what, std::size_t shown, std::size_t held) {
    if (shown != held || held == 0)
        throw std::runtime_error(std::string(what) + ": " + std::to_string(shown) + " shown, " +
                                 std::to_string(held) + " in the database");
}

/// Seconds until the window has done what `work` asks of it, and all that follows from it.
template <class Work>
double UntilShown(const Work& work) {
    QApplication::processEvents();
    return Timed([&] {
        work();
        QApplication::processEvents();
    });
}

template <class Work>
std::vector<double> Rounds(const Work& work) {
    std::vector<double> seconds;
    for (int round = 0; round < kRounds; ++round)
        seconds.push_back(work());
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

/// The program's own database, filled from a site's files, half of whose machines have personal details.
void WriteOwnDatabase(const Workplace& place, int machines) {
    SiteSize size;
    size.machines = machines;
    size.devices = 1;
    size.drivers = 1;
    size.personalPercent = 50;
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
        holds &= MeasureLetters();
        return MeasureTrees() && holds;
    }

private:
    bool MeasureMachines() {
        const std::size_t machines = Number("SELECT COUNT(*) FROM Net");
        RebuildTree();
        const QAbstractItemModel& tree = *mForm.findChild<QTreeView*>("tvTreeView")->model();
        // Beside the branch of all machines.
        Check("tree", static_cast<std::size_t>(tree.rowCount(tree.index(0, 0))) - 1, machines);
        const bool holds = Report("overview of all machines / reading them and their files",
                                  Ratio(
                                      "overview", [] { return StepBare(kMachines, 4) + LookBare(); },
                                      [this] {
                                          EmptyList();
                                          return UntilShown([this] { mForm.DisplayUsers(mList); });
                                      }),
                                  3, false);
        Check("overview", mList.Items().Rows(), machines);
        std::size_t retrieved = 0;
        for (std::size_t row = 0; row < mList.Items().Rows(); ++row)
            retrieved += mList.Items().Text(row, 3) == "Retrieved" ? 1 : 0;
        Check("personal details", retrieved, DirectoryListing(gImportDir).WithExtension(".pnf").size());
        return holds;
    }

    bool MeasureSoftware() {
        StepBare(kSoftware, 0);
        EmptyList();
        QApplication::processEvents();
        const double before = ResidentBytes();
        const auto fill = [this] {
            EmptyList();
            return UntilShown([this] { mForm.Get_UNI_All(mList, kCurrent); });
        };
        fill();
        Check("installed software", mList.Items().Rows(),
              Number("SELECT COUNT(*) FROM UninstallData WHERE ConfID=1"));
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
        return holds;
    }

    /// The list of installed software, as it has been filled, by clicks on its captions.
    bool MeasureOrder() {
        // The first column counts as clicked once, so that it comes last.
        bool holds = true;
        for (const int column : {1, 2, 0})
            holds &= MeasureSort(column);
        MeasureFilter();
        return holds;
    }

    /// As many rows with letters beyond ASCII: texts that all differ, and such as many rows share.
    bool MeasureLetters() {
        constexpr std::array kWords = {"Zubeh\u00F6r", "\u00C4nderung",
                                       "Stra\u00DFe",  "\u0421\u043A\u043B\u0430\u0434",
                                       "Caf\u00E9",    "plain"};
        constexpr std::size_t kShared = 5000;
        const std::size_t rows = mList.Items().Rows();
        EmptyList();
        {
            const ListFill fill(mList);
            mList.AddColumn("Own", 3000);
            mList.AddColumn("Shared", 3000);
            for (std::size_t row = 0; row < rows; ++row) {
                const std::size_t number = row * 7919 % rows;
                const std::string word = kWords[number % kWords.size()];
                mList.AddRow("", word + " " + std::to_string(number), Image::None);
                mList.SetSubItem(1, word + " " + std::to_string(number % kShared));
            }
        }
        bool holds = MeasureSort(1);
        holds &= MeasureSort(0);
        return holds;
    }

    bool MeasureSort(int column) {
        const ListModel& list = mList.Items();
        auto& header = *mList.findChild<QHeaderView*>();
        SortKeys sortKeys;
        const auto keyOf = [&](std::size_t row) { return LowerCase(sortKeys.KeyOf(list.Text(row, column))); };
        std::vector<std::string> keys;
        for (std::size_t row = 0; row < list.Rows(); ++row)
            keys.push_back(keyOf(row));
        const auto sortKeysBare = [&keys] {
            std::vector<std::string> sorted = keys;
            return Timed([&sorted] { std::sort(sorted.begin(), sorted.end()); });
        };
        const std::string what =
            "sort by \"" + list.Columns().at(static_cast<std::size_t>(column)).caption + "\"";
        const bool holds =
            Report((what + " / std::sort of its keys").c_str(),
                   Ratio(what.c_str(), sortKeysBare,
                         [&] { return UntilShown([&] { emit header.sectionClicked(column); }); }),
                   2, false);
        if (mList.SortKey() != column)
            throw std::runtime_error("a click on a caption does not sort");
        std::sort(keys.begin(), keys.end());
        const bool isDown = mList.SortOrder() == Qt::DescendingOrder;
        for (std::size_t row = 0; row < list.Rows(); ++row)
            if (keyOf(isDown ? list.Rows() - 1 - row : row) != keys[row])
                throw std::runtime_error("the list is out of order at row " + std::to_string(row));
        return holds;
    }

    /// The times alone: there is nothing to compare them with but a person's patience.
    void MeasureFilter() {
        mList.OpenFilter();
        auto& box = *mList.findChild<QLineEdit*>("txtFilter");
        std::printf("filter, as typed:");
        for (const char* text : {"s", "se", "set", "setup.exe /remove 7", "setup.exe /remove", "zz", ""}) {
            const double seconds = UntilShown([&] { box.setText(text); });
            std::printf(" \"%s\" %.1f ms", text, seconds * 1000);
        }
        std::printf("\n");
    }

    /// To paint a window costs the same whatever the size of its tree, so that a tree is compared with its
    /// reading where there are many machines.
    bool MeasureTrees() {
        constexpr int kFew = 10000;
        constexpr int kMany = 100000;
        const auto build = [this] { return Timed([this] { mForm.OpenSinDatabase(); }); };
        OpenMachines(kFew);
        const double few = Median(Rounds(build));
        OpenMachines(kMany);
        const bool holds = Report("tree rebuild / reading its machines",
                                  Ratio(
                                      "tree of 100,000 machines", [] { return StepBare(kMachines, 4); },
                                      [this] { return RebuildTree(); }),
                                  3, false);
        const double many = Median(Rounds(build));
        std::printf("tree of 10,000 machines: %.1f ms\n", few * 1000);
        return Report("tree's cost of a machine, 100,000 machines / 10,000", many / kMany / (few / kFew), 1.3,
                      false) &&
               holds;
    }

    void OpenMachines(int machines) {
        mForm.CloseSinDatabase(true);
        mForm.ConnectSinDatabase(MachinesAlone(mPlace, machines));
        RebuildTree();
        Check("machines", static_cast<std::size_t>(gMachineCount), static_cast<std::size_t>(machines));
    }

    double RebuildTree() {
        return UntilShown([this] { mForm.OpenSinDatabase(); });
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
    bool OpenFile(const std::string& /*path*/) override { return false; }
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv);
    try {
        const Workplace place("bench-lists");
        WriteOwnDatabase(place, argc > 1 ? std::atoi(argv[1]) : 10000);
        SettingsStore settings(place.Folder("settings") + "/settings.ini");
        settings.SaveSetting("Velmora", "Settings", "ImportDir", place.Folder("site"));
        QuietPrompts prompts;
        const SystemClock clock;
        NoDesktop desktop;
        report::SystemPrinting printing(prompts);
        SystemEchoProbes probes;
        frmMain form(settings, prompts, clock, desktop, printing, probes, place.Folder("program"));
        form.Load();
        form.show();
        QApplication::processEvents();
        return Bench(place, form).Run() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::printf("%s\n", failure.what());
        return 1;
    }
}
