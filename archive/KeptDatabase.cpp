// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/KeptDatabase.h"

#include "archive/ShownCopy.h"
#include "core/LongWork.h"
#include "platform/adodb.h"
#include "platform/errors.h"
#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace {

constexpr std::array kSuffixes = {"", "-wal", "-shm", "-journal"};

/// The names in the folder of `path` that its database's files have.
std::vector<std::string> NamesOf(const std::string& path) {
    const std::string folder = FolderOf(path);
    const DirectoryListing listing(folder);
    std::vector<std::string> names;
    for (const char* suffix : kSuffixes) {
        const std::string name = FileNameOf(path) + suffix;
        const std::vector<std::string> spellings = listing.Spellings(name);
        names.insert(names.end(), spellings.begin(), spellings.end());
        // The listing leaves out hidden files. On a disk that ignores case, a listed spelling may be this
        // one.
        const std::string ownPath = JoinPath(folder, name);
        const auto isSame = [&](const std::string& spelling) {
            std::error_code ignored;
            return std::filesystem::equivalent(JoinPath(folder, spelling), ownPath, ignored);
        };
        if (FileExists(ownPath) && std::none_of(spellings.begin(), spellings.end(), isSame))
            names.push_back(name);
    }
    return names;
}

/// Writes the log that a killed run has left back into its database, so that the one file is all of it.
void WriteBackLog(const std::string& path) {
    if (!FileExists(path + "-wal"))
        return;
    try {
        ADODB::Connection connection;
        connection.ConnectionString("DBQ=" + path + ";USR=Admin;");
        connection.Open();
        connection.Close();
    } catch (const RunTimeError&) {
        // No database, or a broken one: the log is then kept beside it.
        return;
    }
}

/// A second name for a file; where the disk has none, a copy: moved away, the database would be gone if the
/// program were killed now.
void LinkOrCopy(MainForm& form, const std::string& from, const std::string& to) {
    if (link(from.c_str(), to.c_str()) == 0)
        return;
    Descriptor copy(to, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    std::error_code ignored;
    try {
        ShownCopy(form, from, [&copy](std::string_view bytes) { copy.Write(bytes); });
        copy.Close();
    } catch (const RunTimeError&) {
        std::filesystem::remove(to, ignored);
        throw;
    }
    // The copy may be put back, so it keeps the rights.
    std::filesystem::permissions(to, std::filesystem::status(from, ignored).permissions(), ignored);
}

void Remove(const std::string& path) {
    if (unlink(path.c_str()) != 0 && errno != ENOENT)
        RaiseSystem(errno, path);
}

} // namespace

KeptDatabase::KeptDatabase(MainForm& form, const ReplacedFile& successor) : mPath(successor.Path()) {
    WriteBackLog(mPath);
    const std::string folder = FolderOf(mPath);
    const std::vector<std::string> names = NamesOf(mPath);
    if (names.empty())
        return;
    // Another program that has it open would go on writing to a file without a name.
    for (const std::string& name : names)
        if (EqualNoCase(name, FileNameOf(mPath)))
            mHolds.emplace_back(JoinPath(folder, name));
    mKeeping = mPath + ".replaced-XXXXXX";
    if (mkdtemp(mKeeping.data()) == nullptr)
        RaiseSystem(errno, std::exchange(mKeeping, {}));
    try {
        for (const std::string& name : names) {
            LinkOrCopy(form, JoinPath(folder, name), JoinPath(mKeeping, name));
            mNames.push_back(name);
        }
    } catch (const RunTimeError&) {
        PutBack();
        throw;
    }
}

KeptDatabase::~KeptDatabase() {
    PutBack();
}

void KeptDatabase::GiveWayTo(ReplacedFile& successor) {
    const std::string folder = FolderOf(mPath);
    const std::string ownName = FileNameOf(mPath);
    for (const std::string& name : mNames)
        if (!EqualNoCase(name, ownName))
            Remove(JoinPath(folder, name));
    LongWork::Aside([&] { successor.Commit(); });
    mHasGivenWay = true;
    // On a disk without case the other spellings of the name are the new file itself.
    std::error_code ignored;
    for (const std::string& name : mNames)
        if (const std::string path = JoinPath(folder, name);
            EqualNoCase(name, ownName) && name != ownName &&
            !std::filesystem::equivalent(path, mPath, ignored))
            Remove(path);
}

void KeptDatabase::Release() {
    if (mKeeping.empty())
        return;
    std::error_code ignored;
    for (const std::string& name : mNames)
        std::filesystem::remove(JoinPath(mKeeping, name), ignored);
    std::filesystem::remove(mKeeping, ignored);
    mKeeping.clear();
    // The last hold on a large file that has no name any more frees its room, which takes time.
    mHolds.clear();
}

void KeptDatabase::PutBack() {
    if (mKeeping.empty())
        return;
    std::error_code ignored;
    if (mHasGivenWay)
        for (const char* suffix : kSuffixes)
            // The new file stays until the old one takes its name, unless it has another.
            if (*suffix != '\0' || std::find(mNames.begin(), mNames.end(), FileNameOf(mPath)) == mNames.end())
                std::filesystem::remove(mPath + suffix, ignored);
    for (const std::string& name : mNames) {
        const std::string kept = JoinPath(mKeeping, name);
        const std::string place = JoinPath(FolderOf(mPath), name);
        // Before the new database took its place, only files that are missing now were removed.
        if (mHasGivenWay || !FileExists(place))
            std::filesystem::rename(kept, place, ignored);
        else
            ignored.clear();
        // A kept file that was not needed is left, and a rename between two names of one file leaves both.
        if (!ignored)
            std::filesystem::remove(kept, ignored);
    }
    // Stays, with what could not be put back.
    std::filesystem::remove(mKeeping, ignored);
    mKeeping.clear();
}
