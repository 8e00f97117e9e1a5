// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/ArchiveKills.h"

#include "archive/BaselineRewrite.h"
#include "archive/DatabaseBackup.h"
#include "archive/MachineDump.h"
#include "archive/VBZip.h"
#include "core/Globals.h"
#include "import/Schema.h"
#include "import/cSinImport.h"
#include "platform/files.h"
#include "tests/support/FakeForm.h"

#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

using Duration = std::chrono::duration<double, std::micro>;

constexpr const char* kOld = "what stood here before";

enum class Command { Backup, Restore, BrokenRestore, Export, Rewrite };
constexpr std::array kCommands = {Command::Backup, Command::Restore, Command::BrokenRestore, Command::Export,
                                  Command::Rewrite};
constexpr std::array kNames = {"backup", "restore", "restore of a broken one", "export", "rewrite"};

/// Says yes to everything, and names the file that each dialog is for.
class YesPrompts final : public Prompts {
public:
    explicit YesPrompts(std::string folder) : mFolder(std::move(folder)) {}
    MsgBoxAnswer MsgBox(const std::string& text, int style, const std::string& title) override {
        if (title.find("rror") != std::string::npos || title.find("ail") != std::string::npos)
            failures += title + ": " + text + "\n";
        constexpr int kButtons = 7;
        return (style & kButtons) == MsgBoxStyle::kYesNo ? MsgBoxAnswer::Yes : MsgBoxAnswer::OK;
    }
    std::string InputBox(const std::string&, const std::string&, const std::string&) override { return {}; }
    std::string OpenFile(const FileDialog&) override { return mFolder + "/" + archive; }
    std::string SaveFile(const FileDialog& dialog) override {
        return mFolder + "/" +
               (dialog.defaultExtension == "csv" ? "dump.csv" : "made." + dialog.defaultExtension);
    }
    std::string BrowseForFolder(const std::string&, const std::string&) override { return {}; }
    void Beep() override {}

    /// What OpenFile chooses.
    std::string archive;
    std::string failures;

private:
    std::string mFolder;
};

std::string Bytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Put(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// The rows of all tables, or "broken" and why.
std::string Contents(const std::string& path) {
    sqlite3* database = nullptr;
    sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
    std::string rows;
    const auto add = [&](const std::string& sql) {
        sqlite3_exec(
            database, sql.c_str(),
            [](void* text, int count, char** values, char**) {
                for (int i = 0; i < count; ++i)
                    static_cast<std::string*>(text)
                        ->append(values[i] == nullptr ? "-" : values[i])
                        .append("|");
                return 0;
            },
            &rows, nullptr);
    };
    add("PRAGMA integrity_check");
    add("PRAGMA foreign_key_check");
    if (rows != "ok|")
        rows = "broken: " + rows;
    for (const TableDefinition& table : InventoryTables())
        add("SELECT * FROM [" + std::string(table.name) + "]");
    sqlite3_close(database);
    return rows;
}

/// The folder that the commands work in, set up anew for each round from originals that stay.
class KillWorkplace {
public:
    KillWorkplace(const std::string& folder, const SiteSize& size)
        : mOriginals(folder + "/originals"), mPlace(folder + "/work") {
        fs::create_directories(mOriginals / "INF");
        WriteSite((mOriginals / "INF").string(), size);
        gImportDir = (mOriginals / "INF").string();
        gDatabasePath = (mOriginals / "Site.mdb").string();
        CreateDatabase(gDatabasePath);
        YesPrompts prompts(mOriginals.string());
        Import(prompts);
        FakeForm form;
        DatabaseSession session(form, prompts, clock, mOriginals.string(), [] {});
        form.session = &session;
        DatabaseBackup(form, prompts, clock, mOriginals.string()).mnuBackup();
        fs::rename(mOriginals / "made.zbk", mOriginals / "Good.zbk");
        mArchived = Contents(gDatabasePath);
        Put(mOriginals / "Bad.mdb", "no database");
        VBZip::ZipFile({form, prompts}, (mOriginals / "Bad.mdb").string(), (mOriginals / "Bad.zbk").string());
        gConnection->Execute("DELETE FROM Net WHERE COMPUTERNAME = '" + MachineName(1) + "'");
        // What a dump of the database under test has to be.
        form.node = "ALL";
        MachineDump(ExportContext{form, prompts, mOriginals.string()}).mnuPopFullExport();
        gConnection->Close();
        mPresent = Contents(gDatabasePath);
        mDump = Bytes(mOriginals / "dump.csv");
        if (!prompts.failures.empty() || mPresent == mArchived || mDump.empty())
            throw std::runtime_error("the site could not be made: " + prompts.failures);
    }

    void SetUp() const {
        fs::remove_all(mPlace);
        fs::create_directories(mPlace / "INF");
        for (const char* name : {"Site.mdb", "Good.zbk", "Bad.zbk"})
            fs::copy(mOriginals / name, mPlace / name);
        for (const auto& entry : fs::directory_iterator(mOriginals / "INF"))
            fs::copy(entry.path(), mPlace / "INF");
        for (const char* name : {"made.zbk", "made.zip", "dump.csv"})
            Put(mPlace / name, kOld);
    }

    /// Tells what has gone wrong, or nothing.
    std::string Fault(Command command) const {
        for (const auto& entry : fs::directory_iterator(mPlace))
            if (!IsKnown(entry.path().filename()))
                return "a stray file: " + entry.path().string();
        const std::string contents = Contents((mPlace / "Site.mdb").string());
        // A rewrite may have emptied it, and begun to fill it again.
        const bool isWhole = command == Command::Rewrite ? contents.starts_with("ok|")
                                                         : contents == mPresent || contents == mArchived;
        if (!isWhole && !(command == Command::BrokenRestore && IsKept()))
            return "the database: " + contents.substr(0, 200);
        if (const std::string dump = Bytes(mPlace / "dump.csv"); dump != kOld && dump != mDump)
            return "half a dump";
        if (!IsOld("made.zbk") && Contents(Unpacked("made.zbk") + "/Site.mdb") != mPresent)
            return "the backup";
        if (!IsOld("made.zip") && !HoldsOriginals(Unpacked("made.zip")))
            return "the archive of the originals";
        for (const auto& entry : fs::directory_iterator(mPlace / "INF"))
            if (const std::string name = entry.path().filename();
                !name.starts_with(".velmora-") && !IsInventory(name))
                return "an inventory file: " + name;
        return {};
    }

    /// Whether something has taken its final name.
    bool HasChanged() const {
        return !IsOld("made.zbk") || !IsOld("made.zip") || !IsOld("dump.csv") ||
               Contents((mPlace / "Site.mdb").string()) != mPresent;
    }

    std::string Path() const { return mPlace.string(); }

    void Import(Prompts& prompts) const {
        gConnection = std::make_shared<ADODB::Connection>();
        gConnection->ConnectionString("DBQ=" + gDatabasePath + ";USR=Admin;");
        gConnection->Open();
        bool noData = false;
        cSinImport(gConnection, prompts, clock, TimeFrame{}, nullptr).ImportInfData(gImportDir, "", noData);
    }

    SystemClock clock;

private:
    static bool IsKnown(const std::string& name) {
        constexpr std::array kFinal = {"Site.mdb", "Site.mdb-wal", "Site.mdb-shm", "Good.zbk", "Bad.zbk",
                                       "made.zbk", "made.zip",     "dump.csv",     "INF"};
        constexpr std::array kTemporary = {".velmora-", "DIR", "Site.mdb.replaced-"};
        return std::find(kFinal.begin(), kFinal.end(), name) != kFinal.end() ||
               std::any_of(kTemporary.begin(), kTemporary.end(),
                           [&name](const char* start) { return name.starts_with(start); });
    }

    bool IsOld(const char* name) const { return Bytes(mPlace / name) == kOld; }

    /// Whether the database that a broken one has taken the place of is whole beside it.
    bool IsKept() const {
        for (const auto& entry : fs::directory_iterator(mPlace))
            if (entry.path().filename().string().starts_with("Site.mdb.replaced-") &&
                Contents((entry.path() / "Site.mdb").string()) == mPresent)
                return true;
        return false;
    }

    std::string Unpacked(const char* archive) const {
        const fs::path target = mOriginals / "unpacked";
        fs::remove_all(target);
        fs::create_directory(target);
        FakeForm form;
        YesPrompts prompts(mPlace.string());
        VBZip::UnzipFile({form, prompts}, (mPlace / archive).string(), target.string());
        return target.string();
    }

    bool HoldsOriginals(const fs::path& folder) const {
        for (const auto& entry : fs::directory_iterator(mOriginals / "INF"))
            if (entry.path().extension() == ".ORG" &&
                Bytes(entry.path()) != Bytes(folder / entry.path().filename()))
                return false;
        return true;
    }

    bool IsInventory(const std::string& name) const {
        const std::string bytes = Bytes(mPlace / "INF" / name);
        fs::path original = mOriginals / "INF" / name;
        return bytes == Bytes(original) || bytes == Bytes(original.replace_extension(".INF"));
    }

    fs::path mOriginals;
    fs::path mPlace;
    /// The rows of the database under test, and of the one in the archive.
    std::string mPresent;
    std::string mArchived;
    std::string mDump;
};

/// Tells the parent of each step: they differ so much in length that moments chosen from the whole time would
/// miss the short ones.
class StepsForm final : public FakeForm {
public:
    explicit StepsForm(int steps) : mSteps(steps) {}
    void StatusText(const std::string& text) override {
        FakeForm::StatusText(text);
        if (write(mSteps, "x", 1) != 1)
            _exit(EXIT_FAILURE);
    }

private:
    int mSteps;
};

/// Runs in the child. Whether nothing unexpected was told.
bool Run(Command command, const KillWorkplace& place, int steps) {
    YesPrompts prompts(place.Path());
    prompts.archive = command == Command::BrokenRestore ? "Bad.zbk" : "Good.zbk";
    StepsForm form(steps);
    form.node = "ALL";
    DatabaseSession session(form, prompts, place.clock, place.Path(), [] {});
    form.session = &session;
    gImportDir = place.Path() + "/INF";
    gDatabasePath = place.Path() + "/Site.mdb";
    form.quickImport = [&] { place.Import(prompts); };
    session.ConnectSinDatabase(gDatabasePath);
    DatabaseBackup backup(form, prompts, place.clock, place.Path());
    switch (command) {
        case Command::Backup:
            backup.mnuBackup();
            break;
        case Command::Restore:
        case Command::BrokenRestore:
            backup.mnuRestore();
            break;
        case Command::Export:
            MachineDump(ExportContext{form, prompts, place.Path()}).mnuPopFullExport();
            break;
        case Command::Rewrite:
            BaselineRewrite(form, prompts).mnuCommit();
            break;
    }
    return prompts.failures.empty() || command == Command::BrokenRestore;
}

struct Moment {
    /// Which step, and how long after it has begun.
    std::size_t step;
    Duration after;
};

struct Outcome {
    /// As waitpid tells it.
    int status = 0;
    /// How long each step that began took.
    std::vector<Duration> steps;
};

/// Starts the command and kills it at the moment given; waits for its end where none is.
Outcome RunAndKill(Command command, const KillWorkplace& place, const std::optional<Moment>& moment) {
    place.SetUp();
    std::array<int, 2> channel{};
    if (pipe(channel.data()) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0)
        _exit(Run(command, place, channel[1]) ? EXIT_SUCCESS : EXIT_FAILURE);
    close(channel[1]);
    Outcome outcome;
    char byte = 0;
    auto last = std::chrono::steady_clock::now();
    for (bool isFirst = true;; isFirst = false) {
        const bool isOver = read(channel[0], &byte, 1) != 1;
        const auto now = std::chrono::steady_clock::now();
        if (!isFirst)
            outcome.steps.push_back(now - last);
        last = now;
        if (isOver)
            break;
        if (moment && outcome.steps.size() == moment->step) {
            usleep(static_cast<useconds_t>(moment->after.count()));
            kill(child, SIGKILL);
        }
    }
    waitpid(child, &outcome.status, 0);
    close(channel[0]);
    return outcome;
}

} // namespace

KillReport KillAtRandom(const std::string& folder, const SiteSize& size, int rounds, std::uint32_t seed) {
    const KillWorkplace place(folder, size);
    KillReport report;
    std::array<std::vector<Duration>, kCommands.size()> steps;
    for (std::size_t i = 0; i < kCommands.size(); ++i) {
        const Outcome outcome = RunAndKill(kCommands.at(i), place, std::nullopt);
        steps.at(i) = outcome.steps;
        const std::string fault = place.Fault(kCommands.at(i));
        if (outcome.status != 0 || !fault.empty())
            report.faults.push_back(std::string(kNames.at(i)) + " fails without being killed. " + fault);
    }
    std::mt19937 random(seed);
    for (; report.rounds < rounds; ++report.rounds) {
        const std::size_t which = static_cast<std::size_t>(report.rounds) % kCommands.size();
        const std::size_t step = random() % steps.at(which).size();
        const Duration after =
            steps.at(which).at(step) * (static_cast<double>(random()) / std::mt19937::max());
        const Outcome outcome = RunAndKill(kCommands.at(which), place, Moment{step, after});
        const bool isKilled = WIFSIGNALED(outcome.status);
        report.killed += isKilled ? 1 : 0;
        report.changed += isKilled && place.HasChanged() ? 1 : 0;
        const std::string fault = place.Fault(kCommands.at(which));
        if (!fault.empty())
            report.faults.push_back(std::string(kNames.at(which)) + " killed in round " +
                                    std::to_string(report.rounds) + ", step " + std::to_string(step) +
                                    " after " + std::to_string(static_cast<int>(after.count())) +
                                    " us: " + fault);
    }
    return report;
}
