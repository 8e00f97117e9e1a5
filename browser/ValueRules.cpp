// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ValueRules.h"

#include "platform/errors.h"
#include "platform/text.h"

#include <cmath>

namespace {

constexpr std::string_view kNotAvailable = "n/a";
constexpr std::string_view kNoProblem = "00 00 00 00 ";

constexpr std::int16_t kBytes = 0;
constexpr std::int16_t kKilobytes = 1;

std::string_view YesNo(bool isYes) {
    return isYes ? "Yes" : "No";
}

std::string_view FlagText(const ADODB::Field& field, std::string_view ofNull) {
    return field.IsNull() ? ofNull : YesNo(field.Number() != 0);
}

std::string_view TextOr(std::string_view ofNull, const ADODB::Field& field) {
    // Asking an empty text alone whether it is Null halves what a cell costs.
    const std::string_view text = field.Text();
    return text.empty() && field.IsNull() ? ofNull : text;
}

std::string_view NotNull(const ADODB::Field& field) {
    if (field.IsNull())
        Raise(Errors::kInvalidNull, field.Name());
    return field.Text();
}

/// Text that is no number equals none.
bool IsZero(std::string_view text) {
    try {
        return CDbl(text) == 0;
    } catch (const RunTimeError&) {
        return false;
    }
}

std::string_view WithoutBars(std::string_view text, std::string& buffer) {
    buffer = text;
    std::erase(buffer, '|');
    return buffer;
}

bool HasProblem(const ADODB::Field& code) {
    return !code.IsNull() && code.Text() != kNoProblem;
}

std::string_view ProblemText(const ADODB::Field& code, std::string& buffer) {
    if (!HasProblem(code) || code.Text().empty())
        return YesNo(false);
    buffer = "Yes (";
    buffer += WithoutOuterBlanks(code.Text());
    return buffer += ')';
}

std::string_view SizeText(const ADODB::Field& field, std::int16_t mode, std::string& buffer) {
    return buffer = FormatMegabytes(field.Value(), mode);
}

std::string_view DateText(const ADODB::Field& field, std::string& buffer) {
    if (field.IsNull())
        return kNotAvailable;
    return buffer = DisplayDate(field.Text());
}

} // namespace

std::string_view DisplayText(Rule rule, const ADODB::Field& field, std::string& buffer) {
    switch (rule) {
        case Rule::Text:
            return TextOr(kNotAvailable, field);
        case Rule::Date:
            return DateText(field, buffer);
        case Rule::Plain:
            return NotNull(field);
        case Rule::SizeBytes:
            return SizeText(field, kBytes, buffer);
        case Rule::SizeKilobytes:
            return SizeText(field, kKilobytes, buffer);
        case Rule::YesNo:
            return FlagText(field, YesNo(false));
        case Rule::YesNoNotAvailable:
            return FlagText(field, kNotAvailable);
        case Rule::FlagOrText:
        case Rule::FlagOrKilobytes:
            if (field.Type() == ADODB::kTypeFlag)
                return FlagText(field, "");
            return rule == Rule::FlagOrText ? TextOr(kNotAvailable, field)
                                            : SizeText(field, kKilobytes, buffer);
        case Rule::NullYes:
            return YesNo(field.IsNull());
        case Rule::ZeroNotAvailable: {
            const std::string_view text = NotNull(field);
            return IsZero(text) ? kNotAvailable : text;
        }
        case Rule::ProblemOfAll:
            return YesNo(HasProblem(field));
        case Rule::ProblemOfOne:
            return YesNo(HasProblem(field) && !field.Text().empty());
        case Rule::ProblemCode:
            return ProblemText(field, buffer);
        case Rule::LocalRemote:
            return field.Text() == "L" ? "Local" : "Remote";
        case Rule::OfficeNotAvailable:
            return WithoutBars(TextOr(kNotAvailable, field), buffer);
        case Rule::OfficeNotInstalled:
            return WithoutBars(TextOr("Not Installed", field), buffer);
        case Rule::OfficeInstalled: {
            const std::string_view names = WithoutBars(NotNull(field), buffer);
            return names.empty() ? "-- Not Installed --" : names;
        }
    }
    return {};
}

std::string FormatMegabytes(const ADODB::Value& value, std::int16_t mode) {
    constexpr double kStep = 1024;
    if (ADODB::IsNull(value))
        Raise(Errors::kInvalidNull);
    const auto* const number = std::get_if<double>(&value);
    const double size = number != nullptr ? *number : Val(std::get<std::string>(value));
    if (size == 0)
        return {};
    double megabytes = 0;
    if (mode == kBytes)
        megabytes = size / kStep / kStep;
    else if (mode == kKilobytes)
        megabytes = size / kStep;
    return NumberText(CLng(std::trunc(megabytes * 100) / 100)) + "Mb";
}
