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
    /// The same for a key that ends in "?" and a number which no other row of the list ends in. No two such
    /// keys can be equal, whatever stands in front, so they are not compared: that alone would take as long
    /// as the rest of a million rows.
    virtual void AddCountedRow(std::string_view key, std::string_view text, Image icon) = 0;
    /// The text of column `column`, from 1, of the row added last.
    virtual void SetSubItem(int column, std::string_view text) = 0;

protected:
    ~ListSink() = default;
};
