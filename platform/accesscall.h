// SPDX-License-Identifier: GPL-3.0-or-later
// One call of a built-in function by SQLite: its arguments by the dialect's rules, and its result. Arguments
// count from 0. Exactly one of the Return functions is called, or an error is raised.
#pragma once

#include "platform/text.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3_context;
struct sqlite3_value;

namespace Access {

/// A date, and the time of day if its text had one.
struct Moment {
    LocalTime time;
    bool hasTime = false;
};

class Call {
public:
    Call(sqlite3_context* context, int count, sqlite3_value** values)
        : mContext(context), mCount(count), mValues(values) {}

    int Count() const { return mCount; }
    bool IsNull(int index) const;
    bool IsText(int index) const;
    bool IsAnyNull() const;

    /// A number reads as it is shown.
    std::string Text(int index) const;
    /// Raises error 13 for a text that is no number.
    double Number(int index) const;
    /// Halves to even. Raises error 6 outside of 32 bits.
    std::int32_t Whole(int index) const;
    /// A count of characters: raises error 5 for a negative one.
    std::size_t Length(int index) const;
    /// Halves to even. Raises error 6 outside of 63 bits.
    std::int64_t BigWhole(int index) const;
    std::optional<Moment> Date(int index) const;

    void ReturnNull();
    /// A whole number becomes an integer, so that its text has no point. Raises error 6 for what is no
    /// finite number.
    void Return(double number);
    void Return(std::int64_t number);
    void Return(std::string_view text);
    void Return(const Moment& moment);
    void Return(const std::optional<Moment>& moment);

private:
    sqlite3_context* mContext;
    int mCount;
    sqlite3_value** mValues;
};

/// Raises error 7 where a text would grow out of all bounds; no result of these functions is longer.
void CheckLength(std::size_t bytes);

// The functions on dates, as they stand in the table of functions.
void Date(Call& call);
void Now(Call& call);
void Time(Call& call);
void Year(Call& call);
void Month(Call& call);
void Day(Call& call);
void DateValue(Call& call);
void DateSerial(Call& call);
void DateAdd(Call& call);
void DateDiff(Call& call);
/// The operators "+" and "-" where a date stands on either side.
void DatePlus(Call& call);
void DateMinus(Call& call);

/// Whether `text` is like `pattern`, by character and without regard to case: "%" and "*" stand for any
/// characters, "_" and "?" for one, "#" for a digit, "[a-z]" for one of a range, "[!a-z]" for one outside of
/// it. Both manners of writing wildcards work side by side; each also matches itself, so that 'C#%' finds
/// "C#". Raises error 5 for a "[" without its "]".
bool IsLike(std::string_view text, std::string_view pattern);

} // namespace Access
