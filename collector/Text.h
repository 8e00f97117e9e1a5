// SPDX-License-Identifier: GPL-3.0-or-later
// What is done again and again with the line-oriented texts that the kernel and the system's tools keep.
// All work on bytes; the views point into the text that was given.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace collector {

/// `text` without the blanks, tabs, line ends and NULs at both ends.
std::string_view Trimmed(std::string_view text);

/// The parts of `text` between `separator`s, empty ones too; an empty text has none.
std::vector<std::string_view> Split(std::string_view text, char separator);

/// The parts of `text` between runs of blanks, tabs, line ends and NULs; none is empty.
std::vector<std::string_view> Words(std::string_view text);

/// The trimmed text behind the first `separator` of `line`, empty where there is none.
std::string_view Behind(std::string_view line, char separator);

/// `text` as a whole number, with or without "0x" in base 16. Nothing where anything else is in it.
std::optional<std::uint64_t> WholeNumber(std::string_view text, int base = 10);

} // namespace collector
