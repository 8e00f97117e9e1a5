// SPDX-License-Identifier: GPL-3.0-or-later
// Turns a folder of inventory files into rows of the inventory database: finds the files, pairs those of a
// machine, and makes three passes, all originals, all currents, all personal details. What a file writes
// is told in SectionWriters.
// The import runs on the caller's thread to its end. It commits every kFilesPerCommit files, and at once
// when it ends in a failure: rows already written stay, and a crash leaves a consistent database.
#pragma once

#include "import/SectionWriters.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/prompts.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// Told as an import goes on. `percent` is a fraction of 1.
class ImportEvents {
public:
    virtual ~ImportEvents() = default;
    /// Once per file, before it is touched: its name, and the share of this pass's files begun.
    virtual void DoneSoFarUsers(const std::string& name, double percent) = 0;
    /// At the beginning of each section of a file.
    virtual void DoneSoFarUser(const std::string& name, double percent) = 0;
    /// Many times a second while the database sorts the keys of what was written.
    virtual void StillWorking() {}
};

class cSinImport {
public:
    static constexpr int kFilesPerCommit = 64;

    /// `connection` must be open. `events` may be null.
    cSinImport(std::shared_ptr<ADODB::Connection> connection, Prompts& prompts, const Clock& clock,
               TimeFrame frame, ImportEvents* events, const CodePage& page = CodePage::System());
    ~cSinImport();
    cSinImport(const cSinImport&) = delete;
    cSinImport& operator=(const cSinImport&) = delete;

    /// Imports the folder `directory`, or the one machine whose name is given. True when the import ran to
    /// its end or found nothing to do. `noData` becomes true when there were no files, and on a failure,
    /// which shows its own box; callers leave it false.
    bool ImportInfData(const std::string& directory, const std::string& machine, bool& noData);

private:
    struct File {
        std::string name;
        std::string path;
        LocalTime stamp;
    };
    struct Files {
        std::vector<File> originals;
        std::vector<File> currents;
        std::vector<File> personals;
    };
    class Transaction;

    Files Scan(const std::string& directory, const std::string& machine);
    void Run(const Files& files);
    void ImportMachineFiles(const std::vector<File>& files, ImportType type);
    void ImportMachineFile(const File& file, ImportType type, double percent);
    void ReplaceRows(const std::string& machine, ImportType type);
    void ImportPersonalFiles(const std::vector<File>& files);
    void ImportPersonalFile(const File& file, double percent);
    static std::uint64_t FileSize(const std::string& path);
    void SetLastImportDate(const std::string& date);
    std::string InWhichFile(int failure) const;
    bool ShowFailure(int number, const std::string& description, bool& noData);

    void BeginBulkLoad(std::size_t files);
    void EndBulkLoad();
    /// Tells the listener that the import is still at work; empty where nobody listens.
    std::function<void()> Waiting() const;
    /// Whether the machine can have rows of this configuration that the file in hand replaces.
    bool MayHaveRows(const std::string& machine, ImportType type);

    void TellFile(const std::string& name, double percent);
    void TellSection(const std::string& name, double percent);

    /// A machine that this import has added: how its name was written, and the configurations it has.
    struct Added {
        std::string name;
        std::array<bool, 2> configurations{};
    };

    std::shared_ptr<ADODB::Connection> mConnection;
    Prompts& mPrompts;
    const Clock& mClock;
    ImportEvents* mEvents;
    SectionWriters mWriters;
    std::unique_ptr<Transaction> mTransaction;
    /// The name of the file that is read, or was read last.
    std::string mFileInHand;
    /// The folder as it was first read: one machine after the other of it can be imported.
    std::optional<DirectoryListing> mListing;
    std::string mListed;
    bool mIsBulkLoading = false;
    std::unordered_map<std::string, Added> mAdded;
};
