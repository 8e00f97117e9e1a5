// SPDX-License-Identifier: GPL-3.0-or-later
// A database that another one is to take the place of. It is kept, under its own names, in a folder beside,
// named after it and ".replaced-": until the new one has opened, and for good if the program is killed before
// that. Its log files are part of it, and go with it: the new database would take them for its own.
// At every moment one of the two is whole under the database's own name, where the disk has links.
#pragma once

#include "platform/ReplacedFile.h"

#include <string>
#include <vector>

class KeptDatabase {
public:
    /// Keeps whatever has the path of `successor`, in any spelling; nothing there is nothing to keep. Raises
    /// what the disk refuses, and then all is as it was.
    explicit KeptDatabase(const ReplacedFile& successor);
    /// Puts back what was not released. The new database must be closed.
    ~KeptDatabase();
    KeptDatabase(const KeptDatabase&) = delete;
    KeptDatabase& operator=(const KeptDatabase&) = delete;

    /// Lets `successor` take the place.
    void GiveWayTo(ReplacedFile& successor);
    /// The new database is good: the old one is deleted.
    void Release();

private:
    void PutBack();

    /// Where the new database will stand.
    std::string mPath;
    /// The folder of what is kept; empty where nothing is.
    std::string mKeeping;
    std::vector<std::string> mNames;
    bool mHasGivenWay = false;
};
