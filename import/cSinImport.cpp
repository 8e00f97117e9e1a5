// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/cSinImport.h"

#include "platform/accesssql.h"
#include "platform/errors.h"
#include "platform/files.h"

#include <new>
#include <utility>

namespace {

/// Below this an import is over before the dropped indexes could pay.
constexpr std::size_t kFewFiles = 64;
/// Reading the stamps of so many files takes a few milliseconds.
constexpr std::size_t kFilesPerLook = 256;

/// Characters of a machine's name in Net.
constexpr std::size_t kLongestName = 20;

struct OneRowSection {
    const char* event;
    double percent;
    const char* section;
    const char* table;
};

constexpr OneRowSection kOneRowSections[] = {
    {"Operating System", 0.09, "OS", "OS"},    {"MS Office", 0.18, "MSOFFICE", "MSOffice"},
    {"Input Devices", 0.27, "INPUT", "Input"}, {"PC Settings", 0.36, "PC", "PC"},
    {"Drives Info", 0.45, "DRIVES", "Drives"},
};

/// What an empty count stands for; both yield no rows.
constexpr const char* kMinusOne = "-1";
constexpr const char* kZero = "0";

struct ManyRowSection {
    const char* event;
    double percent;
    const char* countSection;
    const char* emptyCount;
    const char* section;
};

constexpr ManyRowSection kManyRowSections[] = {
    {"Uninstall Data", 0.53, "UNINSTALL", kMinusOne, "UNINSTALLDATA"},
    {"ODBC Data", 0.62, "ODBC", kMinusOne, "ODBCDATA"},
    {"Printer Data", 0.71, "PRINTER", kZero, "PRINTERDATA"},
    {"Drives Data", 0.80, "DRIVES", kZero, "DRIVESDATA"},
    {"Devices Data", 0.89, "DEVICE", kZero, "DEVICEDATA"},
};

/// Of the drives only the fixed, the CD-ROM and the network ones are listed.
constexpr int kListedDrives[] = {2, 3, 5};

/// A count is a 16-bit integer; one that is not ends the import.
int RowCount(const ManyRowSection& section, const Record& record) {
    if (std::string_view(section.countSection) == "DRIVES") {
        double sum = 0;
        for (const int field : kListedDrives)
            sum += Val(record.GetField(field));
        return CInt(sum);
    }
    const std::string_view count = record.GetField(1);
    return CInt(Val(count.empty() ? section.emptyCount : count));
}

} // namespace

class cSinImport::Transaction {
public:
    Transaction(ADODB::Connection& connection, std::function<void()> wait)
        : mConnection(connection), mWait(std::move(wait)) {
        Begin();
    }
    ~Transaction() {
        try {
            Commit();
        } catch (const RunTimeError&) {
            // The failure that led here is the one that the user is told of.
        }
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void FileDone() {
        if (++mFiles % kFilesPerCommit == 0)
            Between([] {});
    }
    /// Commits, does `work` outside of a transaction, and begins anew.
    template <class Work>
    void Between(const Work& work) {
        Commit();
        work();
        Begin();
    }
    /// A commit that fails is undone, so that the connection is left without a transaction in any case.
    void Commit() {
        if (!mIsOpen)
            return;
        mIsOpen = false;
        try {
            mConnection.CommitTrans(mWait);
        } catch (const RunTimeError&) {
            mConnection.RollbackTrans();
            throw;
        }
    }

private:
    void Begin() {
        mConnection.BeginTrans();
        mIsOpen = true;
    }

    ADODB::Connection& mConnection;
    std::function<void()> mWait;
    int mFiles = 0;
    bool mIsOpen = false;
};

cSinImport::cSinImport(std::shared_ptr<ADODB::Connection> connection, Prompts& prompts, const Clock& clock,
                       TimeFrame frame, ImportEvents* events, const CodePage& page)
    : mConnection(std::move(connection)),
      mPrompts(prompts),
      mClock(clock),
      mEvents(events),
      mWriters(mConnection, frame, page) {}

cSinImport::~cSinImport() = default;

bool cSinImport::ImportInfData(const std::string& directory, const std::string& machine, bool& noData) {
    try {
        const Files files = Scan(directory, machine);
        if (files.originals.empty() && files.currents.empty()) {
            mPrompts.MsgBox(
                "There are no files to import! Please make sure you have selected the proper directory.",
                MsgBoxStyle::kQuestion, "No data to import");
            noData = true;
            return true;
        }
        Run(files);
        return true;
    } catch (const RunTimeError& failure) {
        return ShowFailure(failure.number, failure.description + InWhichFile(failure.number), noData);
    } catch (const std::bad_alloc&) {
        return ShowFailure(Errors::kOutOfMemory, "Out of memory", noData);
    }
}

/// For a failure caused by a file's contents: that file's name, to follow the description.
std::string cSinImport::InWhichFile(int failure) const {
    const bool isOfContents =
        failure == Errors::kOverflow || failure == Errors::kTypeMismatch || failure == Errors::kInvalidCall;
    return isOfContents && !mFileInHand.empty() ? ": " + mFileInHand : "";
}

bool cSinImport::ShowFailure(int number, const std::string& description, bool& noData) {
    mTransaction.reset();
    try {
        EndBulkLoad();
    } catch (const RunTimeError&) {
        // The next opening of the database brings the indexes back.
    }
    noData = true;
    mPrompts.MsgBox(description, MsgBoxStyle::kCritical, "Error# " + std::to_string(number));
    return false;
}

cSinImport::Files cSinImport::Scan(const std::string& directory, const std::string& machine) {
    if (!mListing || mListed != directory) {
        mListing.emplace(directory);
        mListed = directory;
    }
    const DirectoryListing& listing = *mListing;
    std::vector<std::string> names;
    if (machine.empty())
        names = listing.WithExtension(".org");
    else if (listing.Find(machine + ".org"))
        names.push_back(machine + ".org");

    // A file that has gone since it was listed is as one that was never there.
    const auto add = [&directory](std::vector<File>& files, const std::string& name,
                                  const std::string& onDisk) {
        const std::string path = JoinPath(directory, onDisk);
        try {
            files.push_back({name, path, FileStamp(path)});
        } catch (const RunTimeError&) {
        }
    };
    Files files;
    for (const std::string& name : names) {
        const std::string stem = name.substr(0, name.size() - 3);
        const std::string original = listing.Find(name).value_or(name);
        add(files.originals, name, original);
        if (const auto current = listing.Find(stem + "inf"))
            add(files.currents, stem + "inf", *current);
        else
            add(files.currents, stem + "org", original);
        if (const auto personal = listing.Find(stem + "pnf"))
            add(files.personals, stem + "pnf", *personal);
        if (mEvents != nullptr && files.originals.size() % kFilesPerLook == 0)
            mEvents->StillWorking();
    }
    return files;
}

void cSinImport::Run(const Files& files) {
    if (!mConnection)
        Raise(Errors::kConnectionClosed);
    mAdded.clear();
    mFileInHand.clear();
    BeginBulkLoad(files.originals.size());
    mTransaction = std::make_unique<Transaction>(*mConnection, Waiting());
    if (!files.originals.empty())
        ImportMachineFiles(files.originals, ImportType::Original);
    if (!files.currents.empty())
        ImportMachineFiles(files.currents, ImportType::Current);
    EndBulkLoad();
    if (!files.personals.empty())
        ImportPersonalFiles(files.personals);
    SetLastImportDate(FormatDate(mClock.Now(), "yyyymmdd"));
    mTransaction->Commit();
    mTransaction.reset();
}

void cSinImport::ImportMachineFiles(const std::vector<File>& files, ImportType type) {
    for (std::size_t i = 0; i < files.size(); ++i) {
        const double percent = static_cast<double>(i + 1) / static_cast<double>(files.size());
        ImportMachineFile(files[i], type, percent);
        mTransaction->FileDone();
    }
}

void cSinImport::ImportMachineFile(const File& file, ImportType type, double percent) {
    cINIReader& reader = mWriters.Reader();
    mFileInHand = file.name;
    reader.INIFilename(file.path);
    const std::string_view net = reader.GetValue("NET", "INFO0", "");
    const std::string machine = mWriters.Decoded(Record(reader.Search(), net).GetField(1));
    TellFile(file.name, percent);
    TellSection("Global Values", 0);

    // A key that is written in another case is found by its children's indexes; rows of a name that Net cuts
    // have no parent, which only the check of parents tells.
    const auto known = mAdded.find(LowerCase(machine));
    if ((known != mAdded.end() && known->second.name != machine) || CharacterCount(machine) > kLongestName)
        EndBulkLoad();
    const auto select = [&machine](const std::string& table) {
        return "SELECT * FROM " + table + " WHERE COMPUTERNAME=" + SQLText(machine);
    };
    if (mWriters.Insert_Update("", select("Net"), net, 4, type, file.stamp)) {
        if (mWriters.HasAddedRow())
            mAdded[LowerCase(machine)] = {machine, {}};
        for (const OneRowSection& section : kOneRowSections) {
            TellSection(section.event, section.percent);
            const std::string sql =
                select(section.table) + " AND ConfID=" + std::to_string(static_cast<int>(type));
            mWriters.Insert_Update(machine, sql, reader.GetValue(section.section, "INFO0", ""), -1, type, {});
        }
        ReplaceRows(machine, type);
        TellSection("Finished..", 1);
    }
    reader.CloseINI();
}

void cSinImport::ReplaceRows(const std::string& machine, ImportType type) {
    const cINIReader& reader = mWriters.Reader();
    const bool mayHaveRows = MayHaveRows(machine, type);
    if (mayHaveRows)
        EndBulkLoad();
    for (const ManyRowSection& section : kManyRowSections) {
        TellSection(section.event, section.percent);
        const Record counts(reader.Search(), reader.GetValue(section.countSection, "INFO0", ""));
        const int count = RowCount(section, counts);
        if (mayHaveRows)
            mWriters.ExecuteSQL(std::string("DELETE * FROM ") + section.section + " WHERE COMPUTERNAME=" +
                                SQLText(machine) + " AND ConfID=" + std::to_string(static_cast<int>(type)));
        if (count <= 0)
            continue;
        if (std::string_view(section.section) == "DEVICEDATA")
            mWriters.InsertDevices(machine, type, count);
        else
            mWriters.Insert_Multi(machine, section.section, type, count);
    }
}

bool cSinImport::MayHaveRows(const std::string& machine, ImportType type) {
    const auto added = mAdded.find(LowerCase(machine));
    if (added == mAdded.end())
        return true;
    bool& hasConfiguration = added->second.configurations.at(static_cast<std::size_t>(type));
    return std::exchange(hasConfiguration, true);
}

void cSinImport::BeginBulkLoad(std::size_t files) {
    if (files < kFewFiles)
        return;
    ADODB::Recordset machines;
    machines.Open("SELECT * FROM Net", mConnection);
    const bool isEmpty = machines.EndOfFile();
    machines.Close();
    if (!isEmpty)
        return;
    mConnection->BeginBulkLoad();
    mIsBulkLoading = true;
}

void cSinImport::EndBulkLoad() {
    if (!mIsBulkLoading)
        return;
    const auto end = [this] { mConnection->EndBulkLoad(Waiting()); };
    if (mTransaction)
        mTransaction->Between(end);
    else
        end();
    mIsBulkLoading = false;
}

std::function<void()> cSinImport::Waiting() const {
    if (mEvents == nullptr)
        return {};
    return [this] { mEvents->StillWorking(); };
}

void cSinImport::ImportPersonalFiles(const std::vector<File>& files) {
    for (std::size_t i = 0; i < files.size(); ++i) {
        const double percent = static_cast<double>(i + 1) / static_cast<double>(files.size());
        if (FileSize(files[i].path) >= 1)
            ImportPersonalFile(files[i], percent);
        TellSection("Finished..", 1);
        mTransaction->FileDone();
    }
}

void cSinImport::ImportPersonalFile(const File& file, double percent) {
    cINIReader& reader = mWriters.Reader();
    mFileInHand = file.name;
    reader.INIFilename(file.path);
    const std::string machine = file.name.substr(0, file.name.size() - 4);
    const std::string sql = "SELECT * FROM Net WHERE COMPUTERNAME=" + SQLText(machine);
    if (mWriters.Insert_Update(machine, sql, "", -1, ImportType::Personal, file.stamp)) {
        TellFile(file.name, percent);
        TellSection("Personal Values", 0);
        mWriters.ExecuteSQL("DELETE * FROM Personal WHERE COMPUTERNAME=" + SQLText(machine));
        mWriters.InsertPersonal(machine);
    }
    reader.CloseINI();
}

std::uint64_t cSinImport::FileSize(const std::string& path) {
    try {
        return ReadableLength(path);
    } catch (const RunTimeError&) {
        return 0;
    }
}

void cSinImport::SetLastImportDate(const std::string& date) {
    mConnection->Execute("UPDATE Version SET LastImportDate = '" + date + "'");
}

void cSinImport::TellFile(const std::string& name, double percent) {
    if (mEvents != nullptr)
        mEvents->DoneSoFarUsers(name, percent);
}

void cSinImport::TellSection(const std::string& name, double percent) {
    if (mEvents != nullptr)
        mEvents->DoneSoFarUser(name, percent);
}
