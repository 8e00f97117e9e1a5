// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/accesscall.h"
#include "platform/clock.h"
#include "platform/errors.h"

#include <array>
#include <cmath>

namespace Access {

namespace {

using std::chrono::days;
using std::chrono::local_days;
using std::chrono::seconds;
using std::chrono::year_month_day;

constexpr std::int64_t kSecondsPerDay = 86400;
// Months since the year 0: the dialect's dates go from the year 100 to 9999.
constexpr std::int64_t kFirstMonth = 1200;
constexpr std::int64_t kEndMonth = 120000;

enum class Interval { Years, Quarters, Months, Weeks, CalendarWeeks, Days, Hours, Minutes, Seconds };

Interval IntervalOf(const std::string& text) {
    struct Entry {
        std::string_view text;
        Interval interval;
    };
    static constexpr std::array kIntervals = {
        Entry{"yyyy", Interval::Years},       Entry{"q", Interval::Quarters}, Entry{"m", Interval::Months},
        Entry{"y", Interval::Days},           Entry{"d", Interval::Days},     Entry{"w", Interval::Weeks},
        Entry{"ww", Interval::CalendarWeeks}, Entry{"h", Interval::Hours},    Entry{"n", Interval::Minutes},
        Entry{"s", Interval::Seconds},
    };
    for (const Entry& entry : kIntervals)
        if (EqualNoCase(entry.text, text))
            return entry.interval;
    Raise(Errors::kInvalidCall);
}

year_month_day CalendarOf(LocalTime time) {
    return year_month_day(std::chrono::floor<days>(time));
}

std::int64_t MonthNumber(LocalTime time) {
    const year_month_day date = CalendarOf(time);
    return static_cast<int>(date.year()) * std::int64_t{12} + static_cast<unsigned>(date.month()) - 1;
}

/// Raises error 5 outside of those years.
LocalTime Checked(std::int64_t secondsSinceEpoch) {
    constexpr LocalTime kFirst = local_days(std::chrono::year(100) / 1 / 1);
    constexpr LocalTime kEnd = local_days(std::chrono::year(10000) / 1 / 1);
    const LocalTime time{seconds(secondsSinceEpoch)};
    if (time < kFirst || time >= kEnd)
        Raise(Errors::kInvalidCall);
    return time;
}

LocalTime PlusSeconds(LocalTime time, std::int64_t count, std::int64_t unit) {
    return Checked(time.time_since_epoch().count() + count * unit);
}

/// The day of the month stays, but for the end of a shorter month.
LocalTime PlusMonths(LocalTime time, std::int64_t count) {
    const std::int64_t month = MonthNumber(time) + count;
    if (month < kFirstMonth || month >= kEndMonth)
        Raise(Errors::kInvalidCall);
    const auto day = std::chrono::floor<days>(time);
    const auto timeOfDay = time - day;
    const std::chrono::year_month target{std::chrono::year(static_cast<int>(month / 12)),
                                         std::chrono::month(static_cast<unsigned>(month % 12) + 1)};
    year_month_day date = target / CalendarOf(time).day();
    if (!date.ok())
        date = target / std::chrono::last;
    return LocalTime(local_days(date)) + timeOfDay;
}

Moment Plus(const Moment& moment, Interval interval, std::int64_t count) {
    switch (interval) {
        case Interval::Years:
            return {PlusMonths(moment.time, count * 12), moment.hasTime};
        case Interval::Quarters:
            return {PlusMonths(moment.time, count * 3), moment.hasTime};
        case Interval::Months:
            return {PlusMonths(moment.time, count), moment.hasTime};
        case Interval::CalendarWeeks:
            return {PlusSeconds(moment.time, count, 7 * kSecondsPerDay), moment.hasTime};
        case Interval::Hours:
            return {PlusSeconds(moment.time, count, 3600), true};
        case Interval::Minutes:
            return {PlusSeconds(moment.time, count, 60), true};
        case Interval::Seconds:
            return {PlusSeconds(moment.time, count, 1), true};
        case Interval::Weeks: // a week day is a day to DateAdd
        case Interval::Days:
            break;
    }
    return {PlusSeconds(moment.time, count, kSecondsPerDay), moment.hasTime};
}

/// How often the boundary of a unit is crossed on the way from one moment to the other.
std::int64_t Boundaries(LocalTime from, LocalTime to, std::int64_t unit) {
    const auto number = [unit](LocalTime time) {
        const std::int64_t count = time.time_since_epoch().count();
        return count >= 0 ? count / unit : -((-count + unit - 1) / unit);
    };
    return number(to) - number(from);
}

std::int64_t Difference(Interval interval, LocalTime from, LocalTime to) {
    switch (interval) {
        case Interval::Years:
            return MonthNumber(to) / 12 - MonthNumber(from) / 12;
        case Interval::Quarters:
            return MonthNumber(to) / 3 - MonthNumber(from) / 3;
        case Interval::Months:
            return MonthNumber(to) - MonthNumber(from);
        case Interval::Weeks:
            return Boundaries(from, to, kSecondsPerDay) / 7;
        case Interval::CalendarWeeks: {
            // Weeks begin on Sundays; the first day of 1970 was a Thursday.
            const days toSunday(4);
            return Boundaries(from + toSunday, to + toSunday, 7 * kSecondsPerDay);
        }
        case Interval::Hours:
            return Boundaries(from, to, 3600);
        case Interval::Minutes:
            return Boundaries(from, to, 60);
        case Interval::Seconds:
            return Boundaries(from, to, 1);
        case Interval::Days:
            break;
    }
    return Boundaries(from, to, kSecondsPerDay);
}

std::optional<Moment> Shifted(const std::optional<Moment>& moment, double count) {
    if (!moment)
        return std::nullopt;
    const double shift = std::nearbyint(count * static_cast<double>(kSecondsPerDay));
    if (!(std::abs(shift) < 1e15))
        Raise(Errors::kInvalidCall);
    const bool hasTime = moment->hasTime || std::trunc(count) != count;
    return Moment{PlusSeconds(moment->time, static_cast<std::int64_t>(shift), 1), hasTime};
}

/// Two digits stand for 1930 to 2029.
int FullYear(int year) {
    if (year < 0 || year > 99)
        return year;
    return year + (year < 30 ? 2000 : 1900);
}

std::optional<std::int64_t> TwoDigits(std::string_view text) {
    const bool isNumber =
        text.size() == 2 && text[0] >= '0' && text[0] <= '9' && text[1] >= '0' && text[1] <= '9';
    if (!isNumber)
        return std::nullopt;
    return (text[0] - '0') * 10 + (text[1] - '0');
}

/// The seconds of hh:mm:ss.
std::optional<seconds> TimeOfDay(std::string_view text) {
    if (text.size() != 8 || text[2] != ':' || text[5] != ':')
        return std::nullopt;
    const auto hours = TwoDigits(text.substr(0, 2));
    const auto minutes = TwoDigits(text.substr(3, 2));
    const auto rest = TwoDigits(text.substr(6, 2));
    if (!hours || !minutes || !rest || *hours > 23 || *minutes > 59 || *rest > 59)
        return std::nullopt;
    return seconds(*hours * 3600 + *minutes * 60 + *rest);
}

} // namespace

std::optional<Moment> Call::Date(int index) const {
    const std::string text = Text(index);
    const std::size_t blank = text.find(' ');
    const std::string_view dateText = std::string_view(text).substr(0, blank);
    std::optional<local_days> date = ParseStoredDate(dateText);
    if (!date)
        date = ParseDate(dateText);
    if (!date)
        return std::nullopt;
    if (blank == std::string::npos)
        return Moment{*date, false};
    const std::optional<seconds> time = TimeOfDay(std::string_view(text).substr(blank + 1));
    if (!time)
        return std::nullopt;
    return Moment{*date + *time, true};
}

void Call::Return(const Moment& moment) {
    Return(FormatDate(moment.time, moment.hasTime ? "yyyymmdd hh:nn:ss" : "yyyymmdd"));
}

void Call::Return(const std::optional<Moment>& moment) {
    if (moment)
        Return(*moment);
    else
        ReturnNull();
}

void Date(Call& call) {
    call.Return(Moment{SystemClock().Now(), false});
}

void Now(Call& call) {
    call.Return(Moment{SystemClock().Now(), true});
}

void Time(Call& call) {
    call.Return(FormatDate(SystemClock().Now(), "hh:nn:ss"));
}

void Year(Call& call) {
    const std::optional<Moment> moment = call.Date(0);
    if (!moment)
        return call.ReturnNull();
    call.Return(std::int64_t{static_cast<int>(CalendarOf(moment->time).year())});
}

void Month(Call& call) {
    const std::optional<Moment> moment = call.Date(0);
    if (!moment)
        return call.ReturnNull();
    call.Return(std::int64_t{static_cast<unsigned>(CalendarOf(moment->time).month())});
}

void Day(Call& call) {
    const std::optional<Moment> moment = call.Date(0);
    if (!moment)
        return call.ReturnNull();
    call.Return(std::int64_t{static_cast<unsigned>(CalendarOf(moment->time).day())});
}

void DateValue(Call& call) {
    std::optional<Moment> moment = call.Date(0);
    if (moment)
        moment->hasTime = false;
    call.Return(moment);
}

/// Months and days beyond the calendar's run on into the next year and month, or back from zero.
void DateSerial(Call& call) {
    const int year = FullYear(call.Whole(0));
    if (year < 0 || year > 9999)
        Raise(Errors::kInvalidCall);
    const std::int64_t month = std::int64_t{year} * 12 + call.Whole(1) - 1;
    if (month < kFirstMonth || month >= kEndMonth)
        Raise(Errors::kInvalidCall);
    const local_days first{std::chrono::year(static_cast<int>(month / 12)) /
                           std::chrono::month(static_cast<unsigned>(month % 12) + 1) / 1};
    call.Return(Moment{PlusSeconds(first, std::int64_t{call.Whole(2)} - 1, kSecondsPerDay), false});
}

void DateAdd(Call& call) {
    const Interval interval = IntervalOf(call.Text(0));
    const std::optional<Moment> moment = call.Date(2);
    if (!moment)
        return call.ReturnNull();
    call.Return(Plus(*moment, interval, call.Whole(1)));
}

void DateDiff(Call& call) {
    const Interval interval = IntervalOf(call.Text(0));
    const std::optional<Moment> from = call.Date(1);
    const std::optional<Moment> to = call.Date(2);
    if (!from || !to)
        return call.ReturnNull();
    call.Return(Difference(interval, from->time, to->time));
}

void DatePlus(Call& call) {
    // A stored date is a text; a number of eight digits is a count of days.
    const int date = call.IsText(0) ? 0 : 1;
    call.Return(Shifted(call.Date(date), call.Number(1 - date)));
}

void DateMinus(Call& call) {
    const std::optional<Moment> left = call.Date(0);
    if (!call.IsText(1))
        return call.Return(Shifted(left, -call.Number(1)));
    const std::optional<Moment> right = call.Date(1);
    if (!left || !right)
        return call.ReturnNull();
    call.Return(static_cast<double>((left->time - right->time).count()) /
                static_cast<double>(kSecondsPerDay));
}

} // namespace Access
