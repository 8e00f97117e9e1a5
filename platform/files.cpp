// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files.h"

#include "platform/Descriptor.h"
#include "platform/clock.h"
#include "platform/errors.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <memory>
#include <utility>

namespace {

struct stat Status(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        RaiseSystem(errno, path);
    return status;
}

bool IsFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool IsRegular(const std::string& folder, const dirent& entry) {
    if (entry.d_type == DT_REG)
        return true;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return false;
    return FileExists(JoinPath(folder, static_cast<const char*>(entry.d_name)));
}

/// The order of a listing: without regard to case, and names that differ in nothing else by their bytes.
bool IsBefore(std::string_view a, std::string_view b) {
    return EqualNoCase(a, b) ? a < b : LessNoCase(a, b);
}

bool EndsWithNoCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && EqualNoCase(text.substr(text.size() - end.size()), end);
}

} // namespace

std::string JoinPath(std::string_view folder, std::string_view name) {
    if (folder.empty())
        return {};
    std::string path(folder);
    if (path.back() != '/')
        path += '/';
    return path.append(name);
}

std::string FolderOf(std::string_view path) {
    const std::size_t separator = path.rfind('/');
    return std::string(path.substr(0, separator == std::string_view::npos ? 0 : separator));
}

std::string FileNameOf(std::string_view path) {
    return std::string(path.substr(path.rfind('/') + 1));
}

std::string ProgramFolder() {
    std::array<char, PATH_MAX> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length < 0)
        RaiseSystem(errno, "/proc/self/exe");
    return FolderOf(std::string_view(path.data(), static_cast<std::size_t>(length)));
}

DirectoryListing::DirectoryListing(std::string_view folder, std::string_view extension) {
    if (folder.empty())
        return;
    const std::string path(folder);
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(path.c_str()), closedir);
    if (!directory)
        return;
    while (const dirent* entry = readdir(directory.get())) {
        const std::string_view name = static_cast<const char*>(entry->d_name);
        if (name.front() != '.' && EndsWithNoCase(name, extension) && IsRegular(path, *entry))
            mNames.emplace_back(name);
    }
    std::sort(mNames.begin(), mNames.end(), IsBefore);
    const auto isRepeated = [this](std::size_t i) { return i > 0 && EqualNoCase(mNames[i], mNames[i - 1]); };
    std::vector<std::string> firsts;
    firsts.reserve(mNames.size());
    for (std::size_t i = 0; i < mNames.size(); ++i)
        (isRepeated(i) ? mOtherSpellings : firsts).push_back(mNames[i]);
    mNames = std::move(firsts);
}

std::vector<std::string> DirectoryListing::WithExtension(std::string_view extension) const {
    std::vector<std::string> names;
    for (const std::string& name : mNames)
        if (EndsWithNoCase(name, extension))
            names.push_back(name);
    return names;
}

std::optional<std::string> DirectoryListing::Find(std::string_view name) const {
    if (std::binary_search(mOtherSpellings.begin(), mOtherSpellings.end(), name, IsBefore))
        return std::string(name);
    const auto found = std::lower_bound(mNames.begin(), mNames.end(), name, LessNoCase);
    if (found == mNames.end() || !EqualNoCase(*found, name))
        return std::nullopt;
    return *found;
}

std::vector<std::string> DirectoryListing::Spellings(std::string_view name) const {
    std::vector<std::string> spellings;
    for (const std::vector<std::string>* names : {&mNames, &mOtherSpellings}) {
        const auto [first, last] = std::equal_range(names->begin(), names->end(), name, LessNoCase);
        spellings.insert(spellings.end(), first, last);
    }
    return spellings;
}

std::string FolderOnDisk(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    std::string exact(path);
    if (IsFolder(exact) || path.find('/') == std::string_view::npos)
        return exact;
    const std::string parent = path.rfind('/') == 0 ? "/" : FolderOf(path);
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(parent.c_str()), closedir);
    std::string found;
    // Of several spellings the first by bytes, as DirectoryListing has it.
    while (const dirent* const entry = entries ? readdir(entries.get()) : nullptr) {
        const std::string spelling = static_cast<const char*>(entry->d_name);
        if (EqualNoCase(spelling, name) && (found.empty() || spelling < found) &&
            IsFolder(JoinPath(parent, spelling)))
            found = spelling;
    }
    return found.empty() ? exact : JoinPath(parent, found);
}

std::optional<std::string> FindFile(std::string_view folder, std::string_view name) {
    const std::string path = JoinPath(folder, name);
    if (path.empty() || name.empty())
        return std::nullopt;
    if (FileExists(path))
        return path;
    const std::optional<std::string> found = DirectoryListing(folder).Find(name);
    if (!found)
        return std::nullopt;
    return JoinPath(folder, *found);
}

bool FileExists(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::uint64_t FileLength(const std::string& path) {
    return static_cast<std::uint64_t>(Status(path).st_size);
}

std::uint64_t ReadableLength(const std::string& path) {
    const Descriptor file(path, O_RDONLY | O_NONBLOCK);
    struct stat status {};
    if (fstat(file.Number(), &status) != 0)
        RaiseSystem(errno, path);
    return static_cast<std::uint64_t>(status.st_size);
}

LocalTime FileStamp(const std::string& path) {
    return ToLocalTime(Status(path).st_mtime);
}

std::string ReadFile(const std::string& path, std::uint64_t largest, FollowLinks follow) {
    // Not to wait for a writer, should the name have become a pipe since it was listed.
    Descriptor file(path, O_RDONLY | O_NONBLOCK | (follow == FollowLinks::Yes ? 0 : O_NOFOLLOW));
    struct stat status {};
    if (fstat(file.Number(), &status) != 0)
        RaiseSystem(errno, path);
    if (!S_ISREG(status.st_mode))
        Raise(Errors::kPathAccess, path);
    if (static_cast<std::uint64_t>(status.st_size) > largest)
        Raise(Errors::kOutOfMemory, path);
    std::string contents(static_cast<std::size_t>(status.st_size), '\0');
    contents.resize(file.Read(contents.data(), contents.size()));
    return contents;
}

void DeleteFile(const std::string& path) {
    if (unlink(path.c_str()) != 0)
        RaiseSystem(errno, path);
}

void CopyFile(const std::string& source, const std::string& target) {
    constexpr std::size_t kBlock = std::size_t{1} << 20U;
    if (std::error_code ignored; std::filesystem::equivalent(source, target, ignored))
        Raise(Errors::kPathAccess, target);
    Descriptor from(source, O_RDONLY);
    Descriptor to(target, O_WRONLY | O_CREAT | O_TRUNC, S_IRUSR | S_IWUSR);
    if (fchmod(to.Number(), S_IRUSR | S_IWUSR) != 0)
        RaiseSystem(errno, target);
    std::string block(kBlock, '\0');
    while (const std::size_t count = from.Read(block.data(), block.size()))
        to.Write(std::string_view(block).substr(0, count));
    to.Close();
}

void DeleteDatabase(const std::string& path) {
    const std::string folder = FolderOf(path);
    const DirectoryListing listing(folder);
    for (const char* suffix : {"", "-wal", "-shm"}) {
        for (const std::string& name : listing.Spellings(FileNameOf(path) + suffix))
            DeleteFile(JoinPath(folder, name));
        // A listing shows neither hidden files nor links that lead nowhere.
        std::error_code ignored;
        if (const auto left = std::filesystem::symlink_status(path + suffix, ignored);
            std::filesystem::is_regular_file(left) || std::filesystem::is_symlink(left))
            DeleteFile(path + suffix);
    }
}
