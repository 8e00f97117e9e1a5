// SPDX-License-Identifier: GPL-3.0-or-later
// Looks for one text in many without regard to case. A million rows are looked through at every key that is
// typed, so a text that can be told by its bytes is never decoded.
#pragma once

#include <QString>

#include <string>
#include <string_view>

class CaselessSearch {
public:
    /// `sought` is UTF-8, as are the texts.
    explicit CaselessSearch(std::string_view sought);

    /// Any text holds an empty one.
    bool IsIn(std::string_view text) const;

private:
    bool IsBytesIn(std::string_view text) const;

    /// With ASCII letters in lower case.
    std::string mFolded;
    /// The first byte of mFolded in both cases; one form where it has none.
    std::string mBeginnings;
    /// What only a text with such letters can hold; empty where all is ASCII.
    QString mBeyondASCII;
};
