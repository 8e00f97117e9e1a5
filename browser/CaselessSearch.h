// SPDX-License-Identifier: GPL-3.0-or-later
// Looks for one text in many without regard to case. A million rows are looked through at every key that is
// typed, so a text that can be told by its bytes is never decoded.
#pragma once

#include <QString>

#include <array>
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
    /// The bytes that the first one of mFolded stands for.
    std::array<bool, 256> mBegins{};
    /// What only a text with such letters can hold; empty where all is ASCII.
    QString mBeyondASCII;
};
