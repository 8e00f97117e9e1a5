// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ReplacedFile.h"

#include "platform/errors.h"
#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace {

constexpr std::size_t kBuffer = std::size_t{64} << 10U;
/// A hidden name, so that no listing shows the file while it grows.
constexpr std::string_view kTemporary = ".velmora-XXXXXX";

/// The file that `path` leads to through any links; `path` itself where there is none yet.
std::string Resolved(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
    return real ? std::string(real.get()) : path;
}

/// The temporary name; mkostemp replaces its last six letters.
std::string Template(const std::string& target) {
    const std::string folder = FolderOf(target);
    if (folder.empty())
        return (target.empty() || target.front() != '/' ? "" : "/") + std::string(kTemporary);
    return JoinPath(folder, kTemporary);
}

/// Makes the file, and holds it, so that nobody takes it for one that was left behind.
int MakeTemporary(const std::string& target, std::string& temporary) {
    if (target.empty() || target.back() == '/')
        Raise(Errors::kPathNotFound, target);
    for (;;) {
        temporary = Template(target);
        const int file = mkostemp(temporary.data(), O_CLOEXEC);
        if (file < 0 && errno == ENOENT)
            Raise(Errors::kPathNotFound, FolderOf(target));
        struct stat status {};
        // A disk without locks is fine: ClearAbandoned deletes nothing there.
        if (file < 0 || flock(file, LOCK_EX) != 0 || fstat(file, &status) != 0 || status.st_nlink > 0)
            return file;
        // ClearAbandoned deleted it before it was locked.
        close(file);
    }
}

/// Whether `file` is this user's and no running program has it locked. Locks it then.
bool IsAbandoned(const Descriptor& file) {
    struct stat status {};
    return fstat(file.Number(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
           flock(file.Number(), LOCK_EX | LOCK_NB) == 0;
}

/// What the file will take from its target. The mask of the process can only be read by setting it.
ReplacedFile::Access AccessFor(const std::string& target, ReplacedFile::Rights rights) {
    struct stat status {};
    // Of links only those are left that are to be replaced themselves, or that lead nowhere.
    const bool isThere = lstat(target.c_str(), &status) == 0 && !S_ISLNK(status.st_mode);
    if (isThere && !S_ISREG(status.st_mode))
        Raise(Errors::kPathAccess, target);
    if (isThere && access(target.c_str(), W_OK) != 0)
        RaiseSystem(errno, target);
    if (rights == ReplacedFile::Rights::OwnerOnly)
        return {S_IRUSR | S_IWUSR, std::nullopt};
    if (isThere)
        return {status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO), status.st_gid};
    const mode_t mask = umask(0);
    umask(mask);
    constexpr mode_t kReading = S_IRUSR | S_IRGRP | S_IROTH;
    const mode_t usual = (kReading | S_IWUSR | S_IWGRP | S_IWOTH) & ~mask;
    return {rights == ReplacedFile::Rights::Shared ? usual | kReading : usual, std::nullopt};
}

} // namespace

ReplacedFile::ReplacedFile(const std::string& path, Rights rights, Links links)
    : mTarget(links == Links::Follow ? Resolved(path) : path),
      mAccess(AccessFor(mTarget, rights)),
      mFile(MakeTemporary(mTarget, mTemporary), mTarget) {}

ReplacedFile::~ReplacedFile() {
    if (!mTemporary.empty())
        unlink(mTemporary.c_str());
}

void ReplacedFile::Write(std::string_view bytes) {
    mBuffer += bytes;
    if (mBuffer.size() >= kBuffer)
        Flush();
}

void ReplacedFile::Flush() {
    mFile.Write(mBuffer);
    mBuffer.clear();
}

void ReplacedFile::Commit() {
    Flush();
    mode_t mode = mAccess.mode;
    // Those of another group, which not everybody can give a file to, were others to the target.
    if (mAccess.group && fchown(mFile.Number(), static_cast<uid_t>(-1), *mAccess.group) != 0)
        mode = (mode & ~mode_t{S_IRWXG}) | ((mode & S_IRWXO) << 3U);
    if (fchmod(mFile.Number(), mode) != 0 || fsync(mFile.Number()) != 0)
        RaiseSystem(errno, mTarget);
    // Renamed before it is closed, so that the lock holds until then.
    if (rename(mTemporary.c_str(), mTarget.c_str()) != 0)
        RaiseSystem(errno, mTarget);
    mTemporary.clear();
    mFile.Close();
}

void ReplacedFile::ClearAbandoned(const std::string& folder) {
    const std::string_view prefix = kTemporary.substr(0, kTemporary.find('X'));
    std::error_code failure;
    // Who can not list the folder will hear of it when writing there.
    for (std::filesystem::directory_iterator entry(folder.empty() ? "." : folder, failure), end;
         !failure && entry != end; entry.increment(failure)) {
        const std::string name = entry->path().filename();
        if (name.size() != kTemporary.size() || !name.starts_with(prefix))
            continue;
        try {
            const Descriptor file(entry->path(), O_RDWR | O_NOFOLLOW | O_NONBLOCK);
            if (IsAbandoned(file))
                unlink(entry->path().c_str());
        } catch (const RunTimeError&) {
            // Gone meanwhile, or another user's.
            continue;
        }
    }
}
