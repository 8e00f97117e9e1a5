// SPDX-License-Identifier: GPL-3.0-or-later
// Texts as the files of an export take them. What stands in the inventory comes from client PCs, so any
// character may: each file format gets what it can hold and what no reader of it takes for a command.
#pragma once

#include "platform/adodb.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace report {

/// One character of UTF-8 text and the bytes it takes; U+FFFD and one byte where they are no UTF-8.
struct Character {
    char32_t code = 0;
    std::size_t length = 1;
};
Character CharacterAt(std::string_view utf8, std::size_t position);

/// Appends `text` to a page, with its markup escaped. Control characters become blanks, other characters
/// that HTML forbids U+FFFD.
void AppendHTML(std::string& html, std::string_view text);

/// Appends a cell of comma-separated values (RFC 4180). A spreadsheet would run a text that begins with
/// = + - @, with their full-width forms or with a control character as a formula. Such a text gets an
/// apostrophe in front, and so does one that begins with an apostrophe itself: whoever takes one leading
/// apostrophe off each text has what the database holds.
void AppendCSV(std::string& line, std::string_view text);

/// `text` for a cell of a workbook: at most the 32,767 UTF-16 units that a cell holds, control characters in
/// the workbook's own notation "_x0007_", and that notation itself escaped where the text holds it.
std::string WorkbookText(std::string_view text);

/// `text` cut to `units` UTF-16 units, which is how workbooks count.
std::string_view FirstUnits(std::string_view utf8, std::size_t units);

} // namespace report
