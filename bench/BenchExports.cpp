// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the dump of all machines, in both its forms, against the engine's own reading of the same queries
// with their texts put to a file as they come, and a backup's archive packed on all cores against one packed
// on a single core, in this one run. bench_exports [machines]; 10000 where none are given. Ends with 1 where
// a limit is missed.
#include "archive/MachineDump.h"
#include "archive/VBZip.h"
#include "bench/BareWriter.h"
#include "bench/Measure.h"
#include "bench/Site.h"
#include "core/Globals.h"
#include "platform/Descriptor.h"
#include "tests/support/FakeForm.h"

#include <fcntl.h>
#include <sched.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace {

constexpr int kRounds = 5;
/// Blanks behind a value of the text form, on average.
constexpr std::size_t kUsualPadding = 76;

/// A query of each section, as the engine takes it.
constexpr std::array kQueries = {
    "SELECT * FROM Net WHERE COMPUTERNAME <> ''",
    "SELECT * FROM Personal WHERE COMPUTERNAME <> ''",
    "SELECT * FROM PC WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT * FROM DeviceData WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT s.* FROM DeviceData d CROSS JOIN DeviceDisplay s ON d.\"Device Auto ID\" = s.\"Device Auto ID\" "
    "WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT s.* FROM DeviceData d CROSS JOIN DeviceMotherBoard s ON d.\"Device Auto ID\" = s.\"Device Auto "
    "ID\" "
    "WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT s.* FROM DeviceData d CROSS JOIN DeviceNetwork s ON d.\"Device Auto ID\" = s.\"Device Auto ID\" "
    "WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT * FROM Drives WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT * FROM DrivesData WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT * FROM Input WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT * FROM MSOffice WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT * FROM ODBCData WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT * FROM OS WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT * FROM PrinterData WHERE COMPUTERNAME <> '' AND ConfID=1",
    "SELECT * FROM UninstallData WHERE COMPUTERNAME <> '' AND ConfID=1",
};

/// Takes the questions of an export, and chooses one file.
class ExportPrompts final : public Prompts {
public:
    explicit ExportPrompts(std::string path) : mPath(std::move(path)) {}
    MsgBoxAnswer MsgBox(const std::string& text, int /*style*/, const std::string& title) override {
        if (title != "Export")
            throw std::runtime_error("unexpected box: " + title + ": " + text);
        return MsgBoxAnswer::OK;
    }
    std::string InputBox(const std::string&, const std::string&, const std::string&) override { return {}; }
    std::string OpenFile(const FileDialog&) override { return {}; }
    std::string SaveFile(const FileDialog&) override { return mPath; }
    std::string BrowseForFolder(const std::string&, const std::string&) override { return {}; }
    void Beep() override {}

private:
    std::string mPath;
};

/// Adds each row's texts, each with `behind` blanks or a comma behind it.
void WriteBare(const char* sql, std::size_t behind, Descriptor& file, std::string& buffer) {
    constexpr std::size_t kBuffer = std::size_t{64} << 10U;
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(gConnection->Handle(), sql, -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(gConnection->Handle()));
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            if (const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column)))
                buffer.append(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
            buffer.append(std::max<std::size_t>(behind, 1), behind > 0 ? ' ' : ',');
        }
        buffer += "\r\n";
        if (buffer.size() >= kBuffer) {
            file.Write(buffer);
            buffer.clear();
        }
    }
    sqlite3_finalize(statement);
}

double BareSeconds(const std::string& path, std::size_t behind) {
    unlink(path.c_str());
    return Timed([&] {
        Descriptor file(path, O_WRONLY | O_CREAT | O_TRUNC, S_IRUSR | S_IWUSR);
        std::string buffer;
        for (const char* sql : kQueries)
            WriteBare(sql, behind, file, buffer);
        file.Write(buffer);
        fsync(file.Number());
    });
}

double MegaBytes(const std::string& path) {
    return static_cast<double>(std::filesystem::file_size(path)) / 1e6;
}

/// The same bytes on the way to the disk: `behind` blanks stand for the padding that a text has on average.
bool Compare(const char* what, const Workplace& place, void (MachineDump::*command)(), std::size_t behind) {
    const std::string path = place.Folder("out") + "/dump";
    const std::string barePath = place.Folder("out") + "/bare";
    ExportPrompts prompts(path);
    FakeForm form;
    form.node = "ALL";
    MachineDump dump(ExportContext{form, prompts, ""});
    std::vector<double> bares;
    std::vector<double> dumps;
    for (int round = 0; round < kRounds; ++round) {
        bares.push_back(BareSeconds(barePath, behind));
        std::filesystem::remove(path);
        dumps.push_back(Timed([&] { (dump.*command)(); }));
    }
    std::printf("%s: %.1f ms for %.1f MB, bare %.1f ms for %.1f MB\n", what, Median(dumps) * 1000,
                MegaBytes(path), Median(bares) * 1000, MegaBytes(barePath));
    return Report((std::string(what) + " of all machines / reading and writing bare").c_str(),
                  Median(dumps) / Median(bares), 1.5, false);
}

double PackSeconds(const std::string& database, const std::string& archive) {
    ExportPrompts prompts("");
    FakeForm form;
    return Timed([&] {
        if (!VBZip::ZipFile({form, prompts}, database, archive))
            throw std::runtime_error("the archive could not be packed");
    });
}

/// Lets the program run on one of its cores only, and then on all of them again.
class OnOneCore {
public:
    OnOneCore() {
        sched_getaffinity(0, sizeof(mAll), &mAll);
        int core = 0;
        while (!CPU_ISSET(core, &mAll))
            ++core;
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(core, &one);
        sched_setaffinity(0, sizeof(one), &one);
    }
    ~OnOneCore() { sched_setaffinity(0, sizeof(mAll), &mAll); }
    OnOneCore(const OnOneCore&) = delete;
    OnOneCore& operator=(const OnOneCore&) = delete;

    int All() const { return CPU_COUNT(&mAll); }

private:
    cpu_set_t mAll{};
};

/// On two cores the ratio would be 2 if reading and writing cost nothing.
bool ComparePacking(const Workplace& place, const std::string& database) {
    const std::string archive = place.Folder("out") + "/archive.zbk";
    std::vector<double> singles;
    std::vector<double> parallels;
    int cores = 1;
    for (int round = 0; round < 3; ++round) {
        {
            const OnOneCore single;
            cores = single.All();
            singles.push_back(PackSeconds(database, archive));
        }
        parallels.push_back(PackSeconds(database, archive));
    }
    std::printf("Backup: %.1f MB to %.1f MB, %.2f s on %d cores, %.2f s on one\n", MegaBytes(database),
                MegaBytes(archive), Median(parallels), cores, Median(singles));
    return Report("packing a backup on one core / on all cores", Median(singles) / Median(parallels),
                  cores > 1 ? 1.6 : 0.9, true);
}

bool Measure(const Workplace& place, int machines) {
    SiteSize size;
    size.machines = machines;
    size.devices = 20;
    size.personalPercent = 50;
    const std::string site = place.Folder("site");
    WriteSite(site, size);
    const std::string database = place.NewDatabase();
    std::printf("%d machines, %ld rows\n", machines, BareWrite(site, database));
    gConnection = std::make_shared<ADODB::Connection>();
    gConnection->ConnectionString("DBQ=" + database + ";USR=Admin;");
    gConnection->Open();
    bool holds = Compare("Full Export", place, &MachineDump::mnuPopFullExport, 0);
    holds &= Compare("Export To Text", place, &MachineDump::mnuPopTxtlExport, kUsualPadding);
    gRecordset.reset();
    gConnection->Close();
    gConnection.reset();
    holds &= ComparePacking(place, database);
    return holds;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const Workplace place("bench-exports");
        return Measure(place, argc > 1 ? std::max(std::atoi(argv[1]), 1) : 10000) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
