// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/InventoryFile.h"

#include "collector/Text.h"
#include "platform/text.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace collector {

namespace {

[[noreturn]] void Fail(const std::filesystem::path& path, int error) {
    throw std::system_error(error, std::generic_category(), path.string());
}

// A file under a passing name, gone again unless it is renamed.
class TemporaryFile {
public:
    // The leading dot and the number at the end keep it from being taken for an inventory.
    explicit TemporaryFile(const std::filesystem::path& target)
        : mPath(target.parent_path() /
                ("." + target.filename().string() + "." + std::to_string(::getpid()))) {}
    ~TemporaryFile() { ::unlink(mPath.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    TemporaryFile(TemporaryFile&&) = delete;
    TemporaryFile& operator=(TemporaryFile&&) = delete;

    void Write(std::string_view text) const {
        ::unlink(mPath.c_str());
        const int file = ::open(mPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644);
        if (file < 0)
            Fail(mPath, errno);
        int error = 0;
        while (!text.empty() && error == 0) {
            const ssize_t written = ::write(file, text.data(), text.size());
            if (written < 0)
                error = errno == EINTR ? 0 : errno;
            else
                text.remove_prefix(static_cast<std::size_t>(written));
        }
        // Renamed before its bytes are on the disk, it would be empty after a power cut. Some shares can't
        // tell.
        if (error == 0 && ::fsync(file) != 0 && errno != EINVAL)
            error = errno;
        // A share may tell only now that there was no room.
        if (::close(file) != 0 && error == 0)
            error = errno;
        if (error != 0)
            Fail(mPath, error);
    }

    void RenameTo(const std::filesystem::path& target) const {
        if (::rename(mPath.c_str(), target.c_str()) != 0)
            Fail(target, errno);
    }

    // Leaves a target alone that another copy of this program has written in the meantime.
    void RenameToNew(const std::filesystem::path& target) const {
        if (::renameat2(AT_FDCWD, mPath.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0 ||
            errno == EEXIST)
            return;
        // Some shares know no such renaming.
        if (errno != EINVAL && errno != ENOSYS)
            Fail(target, errno);
        RenameTo(target);
    }

private:
    std::filesystem::path mPath;
};

} // namespace

std::filesystem::path FileIgnoringCase(const std::filesystem::path& folder, const std::string& name) {
    std::error_code error;
    if (std::filesystem::exists(folder / name, error))
        return folder / name;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (EqualNoCase(entry->path().filename().string(), name))
            return entry->path();
    return folder / name;
}

void WriteInventory(const std::filesystem::path& folder, const std::string& machine, std::string_view text) {
    std::error_code error;
    std::filesystem::create_directory(folder, error);
    if (error)
        Fail(folder, error.value());

    const std::filesystem::path original = FileIgnoringCase(folder, machine + ".ORG");
    if (!std::filesystem::exists(original, error)) {
        const TemporaryFile file(original);
        file.Write(text);
        file.RenameToNew(original);
    }
    const std::filesystem::path current = FileIgnoringCase(folder, machine + ".INF");
    const TemporaryFile file(current);
    file.Write(text);
    file.RenameTo(current);
}

} // namespace collector
