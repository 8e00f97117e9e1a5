// SPDX-License-Identifier: GPL-3.0-or-later
// A file that is written whole or not at all. It grows under a hidden name of its own beside its target, and
// takes the target's place with Commit; given up before, by an error or a stop, it leaves nothing, and an
// older target as it was.
#pragma once

#include "platform/Descriptor.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

class ReplacedFile {
public:
    enum class Rights {
        /// Those of the target where there is one, its group too, else those of any new file of the user.
        Usual,
        /// As Usual, and a new file can be read by everybody, whatever the user's mask.
        Shared,
        /// Reading and writing by the owner alone: for what holds the whole database.
        OwnerOnly,
    };

    enum class Links {
        /// A target that is a link is replaced where it points.
        Follow,
        /// The link itself is replaced: for folders that others write to, whose links may lead anywhere.
        Replace,
    };

    struct Access {
        mode_t mode;
        /// That of the target; without one the folder or the user decides.
        std::optional<gid_t> group;
    };

    /// Raises error 75 for a target that is no file, 70 for one that may not be written, 76 where its folder
    /// is missing.
    explicit ReplacedFile(const std::string& path, Rights rights = Rights::Usual,
                          Links links = Links::Follow);
    ~ReplacedFile();
    ReplacedFile(const ReplacedFile&) = delete;
    ReplacedFile& operator=(const ReplacedFile&) = delete;

    /// Adds to the file, through a buffer. Raises error 61 where the disk is full.
    void Write(std::string_view bytes);
    /// Writes out the buffer, so that a full disk is known before Commit.
    void Flush();

    /// Where it will stand.
    const std::string& Path() const { return mTarget; }
    /// Where the file grows: for libraries that write to a name. What they write and what Write does are
    /// not to be mixed.
    const std::string& TemporaryPath() const { return mTemporary; }

    /// Puts the file on disk and in its target's place. Raises what the disk refuses.
    void Commit();

    /// Deletes what killed programs of this user have left in `folder` of files that they never committed.
    /// One that is still being written is left alone.
    static void ClearAbandoned(const std::string& folder);

private:
    std::string mTarget;
    std::string mTemporary;
    Access mAccess;
    Descriptor mFile;
    std::string mBuffer;
};
