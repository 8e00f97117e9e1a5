// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/text.h"

#include "platform/errors.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n';
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

/// Rounds half to even and checks the range; NaN fails the check too.
double RoundedWithin(double value, double low, double high) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= low && rounded <= high))
        Raise(Errors::kOverflow);
    return rounded;
}

/// What is longer is not looked at whole: a client could make a field of megabytes.
constexpr std::size_t kLongestNumber = 1000;

struct Places {
    int whole = 0;
    int decimals = 0;
    bool thousands = false;
};

Places CountPlaces(std::string_view pattern) {
    Places places;
    bool behindPoint = false;
    for (const char c : pattern) {
        if (c == '.')
            behindPoint = true;
        else if (c == '0' || c == '#')
            ++(behindPoint ? places.decimals : places.whole);
        else if (c == ',' && !behindPoint)
            places.thousands = true;
    }
    return places;
}

/// The number that the whole of `text` writes, without the blanks around it; empty for any other text.
std::string_view NumberWritten(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\n";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos)
        return {};
    text = text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
    const std::string_view digits = text.substr(text.front() == '-' || text.front() == '+' ? 1 : 0);
    // A number's words ("inf", "nan") are no numbers here.
    const bool beginsAsNumber = !digits.empty() && (IsDigit(digits.front()) || digits.front() == '.');
    double value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool isWhole =
        result.ec != std::errc::invalid_argument && result.ptr == digits.data() + digits.size();
    return beginsAsNumber && isWhole ? text : std::string_view();
}

std::optional<int> WholeNumber(std::string_view digits) {
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const bool isAllDigits = std::all_of(digits.begin(), digits.end(), IsDigit);
    if (digits.empty() || !isAllDigits || error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return value;
}

std::optional<std::chrono::local_days> CalendarDate(int year, int month, int day) {
    if (year < 100 || year > 9999)
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (month < 1 || day < 1 || !date.ok())
        return std::nullopt;
    return std::chrono::local_days(date);
}

constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};

std::string Padded(int value, std::size_t width) {
    std::string digits = std::to_string(value);
    return std::string(digits.size() < width ? width - digits.size() : 0, '0') + digits;
}

} // namespace

double Val(std::string_view text) {
    // Blanks count for nothing wherever they stand, so the number is gathered first.
    text = text.substr(0, kLongestNumber);
    std::string number;
    bool hasDigit = false;
    bool hasPoint = false;
    bool hasExponent = false;
    for (const char c : text) {
        if (IsBlank(c))
            continue;
        const bool isSign = c == '-' || c == '+';
        if (IsDigit(c)) {
            hasDigit = true;
        } else if (isSign && (number.empty() || number.back() == 'e')) {
            if (c == '+' && number.empty())
                continue;
        } else if (c == '.' && !hasPoint && !hasExponent) {
            hasPoint = true;
        } else if ((Lower(c) == 'e' || Lower(c) == 'd') && hasDigit && !hasExponent) {
            hasExponent = true;
            number += 'e';
            continue;
        } else {
            break;
        }
        number += c;
    }
    if (!hasDigit)
        return 0;
    double value = 0;
    // An exponent without digits is left out by from_chars itself; a sign of "+" it does not take.
    number.erase(std::remove(number.begin(), number.end(), '+'), number.end());
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // Too small or too large, by the first digit that counts.
        const std::size_t end = std::min(number.find('e'), number.size());
        const auto point = static_cast<int>(std::min(number.find('.'), end));
        const auto significant = static_cast<int>(number.find_first_not_of("-0."));
        constexpr int kFarther = 100000; // than the thousand places of a number
        int exponent = 0;
        if (end < number.size() &&
            std::from_chars(number.data() + end + 1, number.data() + number.size(), exponent).ec ==
                std::errc::result_out_of_range)
            exponent = number[end + 1] == '-' ? -kFarther : kFarther;
        if (std::clamp(exponent, -kFarther, kFarther) + point - significant > 0)
            Raise(Errors::kOverflow);
        return 0;
    }
    return value;
}

double CDbl(std::string_view text) {
    const std::string_view number = NumberWritten(text);
    if (number.empty())
        Raise(Errors::kTypeMismatch);
    return Val(number);
}

std::optional<double> NumberOrNothing(std::string_view text) {
    std::string_view number = NumberWritten(text);
    if (number.starts_with('+'))
        number.remove_prefix(1);
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec != std::errc())
        return std::nullopt;
    return value;
}

std::int16_t CInt(double value) {
    return static_cast<std::int16_t>(RoundedWithin(value, -32768, 32767));
}

std::optional<std::int16_t> ShortOrNothing(std::string_view text) {
    try {
        return CInt(Val(text));
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

std::int32_t CLng(double value) {
    return static_cast<std::int32_t>(RoundedWithin(value, std::numeric_limits<std::int32_t>::min(),
                                                   std::numeric_limits<std::int32_t>::max()));
}

std::string NumberText(double value) {
    std::array<char, 400> buffer;
    if (value == std::trunc(value) && std::abs(value) < 1e15) {
        const auto whole = static_cast<long long>(value);
        return std::to_string(whole);
    }
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 15);
    std::string text(buffer.data(), result.ptr);
    std::replace(text.begin(), text.end(), 'e', 'E');
    return text;
}

std::string FormatNumber(double value, std::string_view pattern) {
    const Places places = CountPlaces(pattern);
    if (places.whole + places.decimals == 0)
        return std::string(pattern);
    // 15 digits are what a double holds for sure; half is rounded away from zero.
    const double scale = std::pow(10.0, std::min(places.decimals, 15));
    constexpr double kWhole = 9007199254740992.0; // from here on doubles have no halves
    const double scaled = std::abs(value) * scale;
    const double rounded = scaled < kWhole ? std::floor(scaled + 0.5) / scale : std::abs(value);
    std::array<char, 400> buffer;
    const auto printed = std::to_chars(buffer.data(), buffer.data() + buffer.size(), rounded,
                                       std::chars_format::fixed, std::min(places.decimals, 15));
    const std::string_view all(buffer.data(), static_cast<std::size_t>(printed.ptr - buffer.data()));
    const std::size_t point = all.find('.');
    std::string whole(all.substr(0, point));
    std::string decimals(point == std::string_view::npos ? std::string_view() : all.substr(point + 1));
    if (whole == "0")
        whole.clear();

    // Digits fill the whole places from the right, so the pattern is walked backwards from its point.
    const std::size_t patternPoint = std::min(pattern.find('.'), pattern.size());
    std::string front;
    std::size_t used = 0;
    int placesLeft = places.whole;
    const auto takeDigit = [&](char digit) {
        if (places.thousands && used > 0 && used % 3 == 0)
            front += ',';
        front += digit;
        ++used;
    };
    for (std::size_t i = patternPoint; i-- > 0;) {
        const char c = pattern[i];
        if (c == '0' || c == '#') {
            if (used < whole.size())
                takeDigit(whole[whole.size() - 1 - used]);
            else if (c == '0')
                takeDigit('0');
            if (--placesLeft == 0)
                while (used < whole.size())
                    takeDigit(whole[whole.size() - 1 - used]);
        } else if (c != ',') {
            front += c;
        }
    }
    std::reverse(front.begin(), front.end());
    std::string back;
    std::size_t decimal = 0;
    for (const char c : pattern.substr(std::min(patternPoint + 1, pattern.size()))) {
        if (c != '0' && c != '#') {
            back += c;
            continue;
        }
        const char digit = decimal < decimals.size() ? decimals[decimal] : '0';
        const bool isDropped = c == '#' && decimals.find_first_not_of('0', decimal) == std::string::npos;
        if (!isDropped)
            back += digit;
        ++decimal;
    }
    std::string text = value < 0 && rounded != 0 ? "-" : "";
    text += front;
    if (patternPoint < pattern.size())
        text += '.';
    return text + back;
}

std::string DisplayDate(std::string_view stored) {
    if (stored.empty() || stored.size() > 15 || !std::all_of(stored.begin(), stored.end(), IsDigit))
        return std::string(stored);
    return FormatNumber(Val(stored), "0000-00-00");
}

std::string FormatDate(LocalTime moment, std::string_view pattern) {
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(moment - day);
    const int month = static_cast<int>(static_cast<unsigned>(date.month()));
    const int dayOfMonth = static_cast<int>(static_cast<unsigned>(date.day()));
    const std::string_view monthName = kMonths[static_cast<std::size_t>(month - 1)];
    std::string text;
    const auto take = [&pattern](std::string_view field) {
        if (!pattern.starts_with(field))
            return false;
        pattern.remove_prefix(field.size());
        return true;
    };
    while (!pattern.empty()) {
        if (take("yyyy")) {
            text += Padded(static_cast<int>(date.year()), 4);
        } else if (take("mmmm")) {
            text += monthName;
        } else if (take("mmm")) {
            text += monthName.substr(0, 3);
        } else if (take("mm")) {
            text += Padded(month, 2);
        } else if (take("m")) {
            text += std::to_string(month);
        } else if (take("dd")) {
            text += Padded(dayOfMonth, 2);
        } else if (take("d")) {
            text += std::to_string(dayOfMonth);
        } else if (take("hh")) {
            text += Padded(static_cast<int>(time.hours().count()), 2);
        } else if (take("nn")) {
            text += Padded(static_cast<int>(time.minutes().count()), 2);
        } else if (take("ss")) {
            text += Padded(static_cast<int>(time.seconds().count()), 2);
        } else {
            text += pattern.front();
            pattern.remove_prefix(1);
        }
    }
    return text;
}

std::optional<std::chrono::local_days> ParseDate(std::string_view text) {
    constexpr std::size_t kLongestDate = 10;
    if (text.size() > kLongestDate)
        return std::nullopt;
    const std::size_t first = text.find_first_of("-/");
    if (first == std::string_view::npos)
        return std::nullopt;
    const std::size_t second = text.find(text[first], first + 1);
    if (second == std::string_view::npos)
        return std::nullopt;
    const std::array parts = {text.substr(0, first), text.substr(first + 1, second - first - 1),
                              text.substr(second + 1)};
    std::array<int, 3> numbers{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::optional<int> number = WholeNumber(parts[i]);
        if (!number || parts[i].size() > 4)
            return std::nullopt;
        numbers[i] = *number;
    }
    if (parts[0].size() > 2)
        return CalendarDate(numbers[0], numbers[1], numbers[2]);
    int year = numbers[2];
    if (parts[2].size() <= 2)
        year += year < 30 ? 2000 : 1900;
    if (numbers[0] > 12)
        return CalendarDate(year, numbers[1], numbers[0]);
    return CalendarDate(year, numbers[0], numbers[1]);
}

std::optional<std::chrono::local_days> ParseStoredDate(std::string_view digits) {
    if (digits.size() != 8)
        return std::nullopt;
    const std::optional<int> number = WholeNumber(digits);
    if (!number)
        return std::nullopt;
    return CalendarDate(*number / 10000, *number / 100 % 100, *number % 100);
}

std::size_t InStr(std::size_t start, std::string_view text, std::string_view sought) {
    if (start < 1 || start > text.size() + 1)
        return 0;
    const std::size_t found = text.find(sought, start - 1);
    return found == std::string_view::npos ? 0 : found + 1;
}

std::size_t LastPositionOf(std::string_view text, std::string_view sought) {
    const std::size_t found = text.rfind(sought);
    return found == std::string_view::npos ? 0 : found + 1;
}

std::string UpperCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), Upper);
    return result;
}

std::string LowerCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), Lower);
    return result;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Lower(x) == Lower(y); });
}

bool LessNoCase(std::string_view a, std::string_view b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return static_cast<unsigned char>(Lower(x)) < static_cast<unsigned char>(Lower(y));
    });
}

std::string_view WithoutOuterBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string WithoutNuls(std::string_view text) {
    std::string result(text);
    std::erase(result, '\0');
    return result;
}

std::size_t CharacterCount(std::string_view utf8) {
    return static_cast<std::size_t>(std::count_if(
        utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

std::string_view FirstCharacters(std::string_view utf8, std::size_t count) {
    std::size_t characters = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i)
        if ((static_cast<unsigned char>(utf8[i]) & 0xC0U) != 0x80U && ++characters > count)
            return utf8.substr(0, i);
    return utf8;
}
