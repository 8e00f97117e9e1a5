// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/Document.h"
#include "platform/text.h"

#include <cmath>

namespace report {

namespace {

struct NamedFormat {
    std::string_view name;
    Format::Kind kind;
    double divisor;
    const char* suffix;
};

constexpr NamedFormat kFormats[] = {
    {"general", Format::Kind::General, 1, ""},
    {"date", Format::Kind::Date, 1, ""},
    {"yes-no", Format::Kind::YesNo, 1, ""},
    {"number", Format::Kind::Number, 1, ""},
    {"percent", Format::Kind::Number, 0.01, " %"},
    // Sizes of drives come in bytes, those of memory in kilobytes.
    {"megabytes", Format::Kind::Number, 1024.0 * 1024.0, " MB"},
    {"megabytes-kb", Format::Kind::Number, 1024, " MB"},
};

/// A double holds no more digits for sure.
constexpr double kLargestGrouped = 1e15;

/// Rounded as FormatNumber rounds.
double Rounded(const Format& format, double value) {
    const double scaled = value / format.divisor;
    if (!(std::abs(scaled) < kLargestGrouped))
        return scaled;
    const double places = std::pow(10.0, format.decimals);
    // Both zeros are one.
    return std::copysign(std::floor(std::abs(scaled) * places + 0.5) / places, scaled) + 0.0;
}

/// Whether `text` holds nothing but blanks and control characters, which are shown as blanks.
bool IsBlank(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte <= 0x20 || byte == 0x7F)
            continue;
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        // U+0080 to the no-break space, U+00A0.
        if (byte != 0xC2 || next < 0x80 || next > 0xA0)
            return false;
        ++i;
    }
    return true;
}

std::string Grouped(const Format& format, double value) {
    const double scaled = value / format.divisor;
    if (!(std::abs(scaled) < kLargestGrouped))
        return NumberText(value);
    std::string pattern = "#,##0";
    if (format.decimals > 0)
        pattern += "." + std::string(static_cast<std::size_t>(format.decimals), '0');
    return FormatNumber(scaled, pattern) + format.suffix;
}

std::string NumberUnder(const Format& format, double value, bool isFlag) {
    switch (format.kind) {
        case Format::Kind::Date:
            return DisplayDate(NumberText(value));
        case Format::Kind::YesNo:
            return value != 0 ? "Yes" : "No";
        case Format::Kind::Number:
            return Grouped(format, value);
        case Format::Kind::General:
            break;
    }
    if (isFlag)
        return value != 0 ? "True" : "False";
    return NumberText(value);
}

} // namespace

std::vector<std::string_view> FormatNames() {
    std::vector<std::string_view> names;
    for (const NamedFormat& format : kFormats)
        names.push_back(format.name);
    return names;
}

std::optional<Format> FindFormat(std::string_view name) {
    for (const NamedFormat& known : kFormats)
        if (known.name == name)
            return Format{known.kind, known.divisor, 0, known.suffix};
    return std::nullopt;
}

std::string FormatValue(const Format& format, const ADODB::Value& value, bool isFlag) {
    if (const double* number = std::get_if<double>(&value))
        return NumberUnder(format, *number, isFlag);
    const std::string* text = std::get_if<std::string>(&value);
    if (text == nullptr)
        return {};
    if (format.kind == Format::Kind::Date)
        return DisplayDate(*text);
    if (format.kind == Format::Kind::Number)
        if (const std::optional<double> written = NumberOrNothing(*text))
            return Grouped(format, *written);
    return *text;
}

ADODB::Value ShownValue(const Format& format, const ADODB::Value& value, bool isFlag) {
    if (format.kind == Format::Kind::Number) {
        const double* number = std::get_if<double>(&value);
        const std::string* text = std::get_if<std::string>(&value);
        if (number != nullptr)
            return Rounded(format, *number);
        if (const std::optional<double> written = text != nullptr ? NumberOrNothing(*text) : std::nullopt)
            return Rounded(format, *written);
    } else if (const double* number = std::get_if<double>(&value);
               number != nullptr && format.kind != Format::Kind::Date) {
        const bool isTruth = isFlag || format.kind == Format::Kind::YesNo;
        return isTruth ? (*number != 0 ? -1.0 : 0.0) : *number + 0.0;
    }
    std::string text = FormatValue(format, value, isFlag);
    return IsBlank(text) ? ADODB::Value() : ADODB::Value(std::move(text));
}

} // namespace report
