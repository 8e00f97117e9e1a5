// SPDX-License-Identifier: GPL-3.0-or-later
// What a list takes from whoever fills it: columns first, then row after row, each row's cells behind its
// text. Lists are made against this, so they need no toolkit.
#pragma once

#include "browser/ImageKeys.h"

#include <string_view>

class ListSink {
public:
    /// `width` in twips.
    virtual void AddColumn(std::string_view caption, int width) = 0;
    /// Adds a row with the text of its first column. Raises error 35602 where another row has the same key;
    /// an empty key is none.
    virtual void AddRow(std::string_view key, std::string_view text, Image icon) = 0;
    /// Adds a row whose key is `machine`, `keyEnd`, which ends in "?", and the number of rows before it. No
    /// two such keys can be equal, whatever stands in front of the number, so they are neither compared nor
    /// held: that alone would take as long as the rest of a million rows.
    virtual void AddCountedRow(std::string_view machine, std::string_view keyEnd, std::string_view text,
                               Image icon) = 0;
    /// The text of column `column`, from 1, of the row added last.
    virtual void SetSubItem(int column, std::string_view text) = 0;

protected:
    ~ListSink() = default;
};
