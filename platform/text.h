// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers, dates and positions in text by the rules that the inventory's texts were written for. Nothing
// else in the system parses or formats numbers. Everything is plain ASCII arithmetic on bytes, independent
// of the locale; positions count from 1.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Local time in whole seconds, as files are stamped and dates are stored.
using LocalTime = std::chrono::local_seconds;

/// The number that `text` begins with: blanks, tabs and line feeds are passed over, then sign, digits, one
/// point, and an exponent behind E or D. 0 where no number begins. Raises error 6 past the double's range.
/// Only the first thousand bytes are looked at.
double Val(std::string_view text);

/// The number that the whole of `text` writes, blanks around it aside. Raises error 13 for any other text.
double CDbl(std::string_view text);
/// As CDbl, but nothing for any other text and for a number past the double's range.
std::optional<double> NumberOrNothing(std::string_view text);

/// `value` as a 16-bit integer, halves rounded to even. Raises error 6 outside -32768 to 32767.
std::int16_t CInt(double value);

/// The number that `text` begins with as a 16-bit integer, as CInt and Val have it; nothing where it does not
/// fit. So console and collectors read what they leave each other.
std::optional<std::int16_t> ShortOrNothing(std::string_view text);

/// `value` as a 32-bit integer, halves rounded to even. Raises error 6 outside the range.
std::int32_t CLng(double value);

/// A number as plain text: whole numbers without a point, others with up to 15 digits, as few as needed.
std::string NumberText(double value);

/// Formats a number by a pattern of "0", "#", ",", "." and literal characters: 20011102 by "0000-00-00" is
/// "2001-11-02". The digits fill the places from the right; surplus digits stand before the first place.
std::string FormatNumber(double value, std::string_view pattern);

/// A stored date for display: text that is a whole number through "0000-00-00", any other text unchanged.
std::string DisplayDate(std::string_view stored);

/// `moment` by a pattern of "yyyy", "mmmm", "mmm", "mm", "m", "dd", "d", "hh", "nn", "ss"; other characters
/// stand for themselves. Month names are English.
std::string FormatDate(LocalTime moment, std::string_view pattern);

/// The date that `text` writes as y-m-d or m-d-y with "-" or "/"; day first where the first number is above
/// 12. Two-digit years: 00 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999. Nothing for any other text:
/// bare numbers and times are no dates.
std::optional<std::chrono::local_days> ParseDate(std::string_view text);

/// The date of eight digits yyyymmdd, if they make one of the calendar.
std::optional<std::chrono::local_days> ParseStoredDate(std::string_view digits);

/// The 1-based position of `sought` in `text` at or behind `start`, 0 if none; bytes compare exactly.
std::size_t InStr(std::size_t start, std::string_view text, std::string_view sought);

/// 1-based position of the last occurrence of `sought` in `text`, 0 if none.
std::size_t LastPositionOf(std::string_view text, std::string_view sought);

/// ASCII letters in upper or lower case, other bytes unchanged.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

/// Whether two texts are equal but for the case of ASCII letters, as the database compares.
bool EqualNoCase(std::string_view a, std::string_view b);

/// Orders texts without regard to the case of ASCII letters.
bool LessNoCase(std::string_view a, std::string_view b);

/// `text` without the blanks before and behind it; other white space stays.
std::string_view WithoutOuterBlanks(std::string_view text);

/// `text` without any of its NUL characters, as every path from a dialog is stored.
std::string WithoutNuls(std::string_view text);

/// The characters of UTF-8 text; a byte that begins no character counts as one.
std::size_t CharacterCount(std::string_view utf8);

/// The first `count` characters of UTF-8 text.
std::string_view FirstCharacters(std::string_view utf8, std::size_t count);
