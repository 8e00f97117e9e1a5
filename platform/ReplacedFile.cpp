// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ReplacedFile.h"

#include "platform/errors.h"
#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

namespace {

constexpr std::size_t kBuffer = std::size_t{64} << 10U;

/// The file that `path` leads to through any links; `path` itself where there is none yet.
std::string Resolved(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
    return real ? std::string(real.get()) : path;
}

/// A name for the file while it grows, hidden so that no listing shows it.
std::string Template(const std::string& target) {
    const std::string folder = FolderOf(target);
    if (folder.empty())
        return target.empty() || target.front() != '/' ? ".velmora-XXXXXX" : "/.velmora-XXXXXX";
    return JoinPath(folder, ".velmora-XXXXXX");
}

int MakeTemporary(const std::string& target, std::string& temporary) {
    if (target.empty() || target.back() == '/')
        Raise(Errors::kPathNotFound, target);
    const int file = mkostemp(temporary.data(), O_CLOEXEC);
    if (file < 0 && errno == ENOENT)
        Raise(Errors::kPathNotFound, FolderOf(target));
    return file;
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
      mTemporary(Template(mTarget)),
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
    mFile.Close();
    if (rename(mTemporary.c_str(), mTarget.c_str()) != 0)
        RaiseSystem(errno, mTarget);
    mTemporary.clear();
}
