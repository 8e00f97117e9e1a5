// SPDX-License-Identifier: GPL-3.0-or-later
// A database that another one is to take the place of. It is kept, under its own names, in a folder beside,
// named after it and ".replaced-": until the new one has opened, and for good if the program is killed before
// that. Its log files are part of it, and go with it: the new database would take them for its own.
// At every moment one of the two is whole under the database's own name. No other program can open the old
// one meanwhile.
#pragma once

#include "archive/SoleHold.h"
#include "platform/ReplacedFile.h"

#include <deque>
#include <string>
#include <vector>

class MainForm;

class KeptDatabase {
public:
    /// Keeps whatever has the path of `successor`, in any spelling, if there is anything. Raises error 70
    /// where another program has it open, and what the disk refuses: on one without links there must be room
    /// for a copy, whose progress `form` shows. Then all is as it was.
    KeptDatabase(MainForm& form, const ReplacedFile& successor);
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
    std::deque<SoleHold> mHolds;
    bool mHasGivenWay = false;
};
