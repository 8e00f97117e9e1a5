// SPDX-License-Identifier: GPL-3.0-or-later
// Texts that every part of the console needs: scrambled ones, short paths, versions.
#pragma once

#include <string>
#include <string_view>

namespace Admin {

/// Hides a text from a casual eye, no more: the characters in reverse order, each replaced by the one whose
/// code in the system's code page is higher by one. Text is UTF-8 on both sides. Raises error 5 for a
/// character whose code is 255.
std::string ScrambleText(std::string_view text);
/// Undoes ScrambleText. Raises error 5 for a character whose code is 0.
std::string UnscrambleText(std::string_view text);

/// `path`, at most 164 characters of it. Paths have no other short form here.
std::string GetShortPath(std::string_view path);

/// The program's version as databases name it, such as "1.20".
std::string VersionText();
/// The version with its revision, each part a plain number, such as "1.20.8".
std::string LongVersionText();

} // namespace Admin
