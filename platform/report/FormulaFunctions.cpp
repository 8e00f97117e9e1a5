// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors.h"
#include "platform/report/FormulaNode.h"
#include "platform/text.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace report {

namespace {

using ADODB::IsNull;
using ADODB::Value;

/// A function's arguments as it wants them.
class Arguments {
public:
    Arguments(const Formula::Node& call, const std::vector<Value>& values) : mCall(call), mValues(values) {}

    std::size_t Count() const { return mValues.size(); }
    const Value& At(std::size_t index) const { return mValues[index]; }
    bool IsFlag(std::size_t index) const { return mCall.children[index]->isFlag; }
    std::string Text(std::size_t index) const { return FormatValue(Format(), At(index), IsFlag(index)); }
    std::optional<double> Number(std::size_t index) const { return NumberIn(At(index)); }

    /// A count of characters: none below 0, and no more than any text has.
    std::optional<std::size_t> Length(std::size_t index) const {
        const std::optional<double> number = Number(index);
        if (!number)
            return std::nullopt;
        return static_cast<std::size_t>(std::clamp(*number, 0.0, static_cast<double>(kLongestText)));
    }

private:
    const Formula::Node& mCall;
    const std::vector<Value>& mValues;
};

/// `text` without its first `count` characters.
std::string_view WithoutFirst(std::string_view text, std::size_t count) {
    return text.substr(FirstCharacters(text, count).size());
}

Value Left(const Arguments& arguments) {
    const std::optional<std::size_t> length = arguments.Length(1);
    return length ? Value(std::string(FirstCharacters(arguments.Text(0), *length))) : Value();
}

Value Right(const Arguments& arguments) {
    const std::optional<std::size_t> length = arguments.Length(1);
    if (!length)
        return {};
    const std::string text = arguments.Text(0);
    const std::size_t all = CharacterCount(text);
    return std::string(WithoutFirst(text, all - std::min(all, *length)));
}

Value Mid(const Arguments& arguments) {
    const std::optional<std::size_t> start = arguments.Length(1);
    const std::optional<std::size_t> length =
        arguments.Count() > 2 ? arguments.Length(2) : std::optional(kLongestText);
    if (!start || !length)
        return {};
    const std::string text = arguments.Text(0);
    return std::string(FirstCharacters(WithoutFirst(text, std::max<std::size_t>(*start, 1) - 1), *length));
}

/// As find, but in time that grows with the lengths' sum: with their product, two texts of one letter each
/// would take a second.
std::size_t FindText(std::string_view text, std::string_view sought, std::size_t from = 0) {
    const void* const found = memmem(text.data() + from, text.size() - from, sought.data(),
                                     sought.size()); // two-way in the GNU library
    return found == nullptr ? std::string_view::npos
                            : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

Value PositionOf(const Arguments& arguments) {
    const std::string text = LowerCase(arguments.Text(0));
    const std::size_t found = FindText(text, LowerCase(arguments.Text(1)));
    if (found == std::string::npos)
        return 0.0;
    return static_cast<double>(CharacterCount(std::string_view(text).substr(0, found)) + 1);
}

Value Replaced(const Arguments& arguments) {
    const std::string text = arguments.Text(0);
    const std::string lower = LowerCase(text);
    const std::string sought = LowerCase(arguments.Text(1));
    const std::string other = arguments.Text(2);
    if (sought.empty())
        return text;
    std::string made;
    std::size_t from = 0;
    for (std::size_t found = FindText(lower, sought);
         found != std::string::npos && made.size() <= kLongestText; found = FindText(lower, sought, from)) {
        made += text.substr(from, found - from) + other;
        from = found + sought.size();
    }
    return made + text.substr(from);
}

Value Rounded(const Arguments& arguments) {
    const std::optional<double> number = arguments.Number(0);
    const std::optional<double> places = arguments.Count() > 1 ? arguments.Number(1) : std::optional(0.0);
    if (!number || !places)
        return {};
    const double scale = std::pow(10.0, std::trunc(std::clamp(*places, 0.0, 15.0)));
    const double scaled = *number * scale;
    return std::isfinite(scaled) ? std::nearbyint(scaled) / scale : *number;
}

Value Absolute(const Arguments& arguments) {
    const std::optional<double> number = arguments.Number(0);
    return number ? Value(std::abs(*number)) : Value();
}

/// A text is Null where its number is past the double's range.
Value LeadingNumber(const Arguments& arguments) {
    if (std::holds_alternative<double>(arguments.At(0)))
        return arguments.At(0);
    try {
        return Val(arguments.Text(0));
    } catch (const RunTimeError&) {
        return {};
    }
}

} // namespace

Value CallFunction(const Formula::Node& call, const std::vector<Value>& values) {
    const Arguments arguments(call, values);
    if (call.function == Function::IsNull)
        return FlagValue(IsNull(values.front()));
    if (call.function == Function::Exact) {
        const bool haveOneNull = IsNull(values[0]) != IsNull(values[1]);
        return FlagValue(!haveOneNull && arguments.Text(0) == arguments.Text(1));
    }
    if (std::ranges::any_of(values, IsNull))
        return {};
    switch (call.function) {
        case Function::Abs:
            return Absolute(arguments);
        case Function::InStr:
            return PositionOf(arguments);
        case Function::LCase:
            return LowerCase(arguments.Text(0));
        case Function::Left:
            return Left(arguments);
        case Function::Len:
            return static_cast<double>(CharacterCount(arguments.Text(0)));
        case Function::Mid:
            return Mid(arguments);
        case Function::Replace:
            return Replaced(arguments);
        case Function::Right:
            return Right(arguments);
        case Function::Round:
            return Rounded(arguments);
        case Function::Text:
            return FormatValue(call.format, values.front(), arguments.IsFlag(0));
        case Function::Trim:
            return std::string(WithoutOuterBlanks(arguments.Text(0)));
        case Function::UCase:
            return UpperCase(arguments.Text(0));
        case Function::Val:
            return LeadingNumber(arguments);
        default:
            return {};
    }
}

} // namespace report
