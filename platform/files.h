// SPDX-License-Identifier: GPL-3.0-or-later
// Files by the rules of the folders that the system works in: names that differ in case alone are one name,
// folders list their files by name without regard to case, and an empty folder path holds nothing.
// Paths are UTF-8 or whatever bytes the disk has; "/" separates.
#pragma once

#include "platform/text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// `folder` and `name` with one separator between them; an empty folder gives an empty path, never "/name".
std::string JoinPath(std::string_view folder, std::string_view name);
/// `path` up to, and without, its last separator; empty where it has none.
std::string FolderOf(std::string_view path);
/// `path` behind its last separator.
std::string FileNameOf(std::string_view path);

/// The folder of the running program, without a separator at its end.
std::string ProgramFolder();

/// The files of one folder, read once.
class DirectoryListing {
public:
    /// A folder that is empty, missing or unreadable lists nothing. Only regular files and links to them
    /// are listed, and no hidden ones. Of names that differ in case alone the first by bytes is listed.
    /// With an extension, such as ".org", only files that have it, without regard to case.
    explicit DirectoryListing(std::string_view folder, std::string_view extension = {});

    /// Names in order, without regard to case.
    const std::vector<std::string>& Names() const { return mNames; }
    /// The names that end in `extension`, such as ".org", without regard to case.
    std::vector<std::string> WithExtension(std::string_view extension) const;
    /// The name as it stands on disk: the exact one first, else one that differs in case alone.
    std::optional<std::string> Find(std::string_view name) const;
    /// Every file that has this name, however it is written.
    std::vector<std::string> Spellings(std::string_view name) const;

private:
    std::vector<std::string> mNames;
    std::vector<std::string> mOtherSpellings;
};

/// `path` with the last folder's name as it stands on disk: the exact one first, else one that differs in
/// case alone. A separator at the end goes. Where there is no such folder, the path itself.
std::string FolderOnDisk(std::string_view path);

/// The path of the file `name` in `folder`, without regard to case, or nothing.
std::optional<std::string> FindFile(std::string_view folder, std::string_view name);

bool FileExists(const std::string& path);
/// Length in bytes; raises error 53 where there is no such file.
std::uint64_t FileLength(const std::string& path);
/// As FileLength, of a file that the caller may read; raises error 70 where it may not.
std::uint64_t ReadableLength(const std::string& path);
/// When the file was last modified; raises error 53 where there is none.
LocalTime FileStamp(const std::string& path);

/// Ten times what the fullest machine's inventory takes.
constexpr std::uint64_t kLargestFile = 32U << 20U;
enum class FollowLinks { Yes, No };
/// The whole of a regular file; raises error 53, 70 or 75, and error 7 where it has more than `largest`
/// bytes.
std::string ReadFile(const std::string& path, std::uint64_t largest = kLargestFile,
                     FollowLinks follow = FollowLinks::Yes);

/// Raises error 53 where there is no file.
void DeleteFile(const std::string& path);
/// Copies the bytes to a file that its owner alone can read and write; an existing target is replaced.
void CopyFile(const std::string& source, const std::string& target);
/// Deletes a database and the "-wal" and "-shm" files that a killed run leaves beside it, whichever are
/// there and however their names are written: another file under the same name would take them for its own.
void DeleteDatabase(const std::string& path);
