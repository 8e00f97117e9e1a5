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

} // namespace report
