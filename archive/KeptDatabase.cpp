// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/KeptDatabase.h"

#include "core/LongWork.h"
#include "platform/adodb.h"
#include "platform/errors.h"
#include "platform/files.h"

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
        // A hidden file is not listed.
        if (std::find(names.begin(), names.end(), name) == names.end() && FileExists(JoinPath(folder, name)))
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

/// A second name for a file; where the disk has none, a move.
void LinkOrMove(const std::string& from, const std::string& to) {
    if (link(from.c_str(), to.c_str()) != 0 && rename(from.c_str(), to.c_str()) != 0)
        RaiseSystem(errno, from);
}

void Remove(const std::string& path) {
    if (unlink(path.c_str()) != 0 && errno != ENOENT)
        RaiseSystem(errno, path);
}

} // namespace

KeptDatabase::KeptDatabase(const ReplacedFile& successor) : mPath(successor.Path()) {
    WriteBackLog(mPath);
    const std::vector<std::string> names = NamesOf(mPath);
    if (names.empty())
        return;
    mKeeping = mPath + ".replaced-XXXXXX";
    if (mkdtemp(mKeeping.data()) == nullptr)
        RaiseSystem(errno, std::exchange(mKeeping, {}));
    try {
        for (const std::string& name : names) {
            LinkOrMove(JoinPath(FolderOf(mPath), name), JoinPath(mKeeping, name));
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
        std::filesystem::rename(kept, JoinPath(FolderOf(mPath), name), ignored);
        // Where both are one file, a rename leaves both names.
        if (!ignored)
            std::filesystem::remove(kept, ignored);
    }
    // Stays, with what could not be put back.
    std::filesystem::remove(mKeeping, ignored);
    mKeeping.clear();
}
