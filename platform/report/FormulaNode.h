// SPDX-License-Identifier: GPL-3.0-or-later
// The tree that a formula is parsed to. Nodes never change once made, so formulas that use another one share
// its tree. Depth and cost count what is shared as often as it is used: a few formulas that double each other
// would take forever otherwise.
#pragma once

#include "platform/report/Document.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace report {

enum class Operator : std::uint8_t {
    Or,
    And,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Join,
    Add,
    Subtract,
    Multiply,
    Divide
};

enum class Function : std::uint8_t {
    Abs,
    Exact,
    InStr,
    IsNull,
    LCase,
    Left,
    Len,
    Mid,
    Replace,
    Right,
    Round,
    Text,
    Trim,
    UCase,
    Val
};

struct Formula::Node {
    enum class Kind : std::uint8_t { Literal, Field, Chain, Not, Negate, If, Call };
    using Pointer = std::shared_ptr<const Node>;

    Kind kind = Kind::Literal;
    Function function = Function::Abs;
    /// Whether a number is a flag and reads so as text.
    bool isFlag = false;
    /// Of a comparison.
    TextComparison comparison = TextComparison::NoCase;
    int depth = 1;
    int cost = 1;
    std::size_t field = 0;
    ADODB::Value literal;
    /// Of Text with a format.
    Format format;
    /// Of a chain: its operands, with an operator of one precedence between each two. Of an If: condition and
    /// value in turns, and the last value, if there is one, alone.
    std::vector<Pointer> children;
    std::vector<Operator> operators;
};

/// The formulas that another one may use, by name.
using KnownFormulas = std::vector<std::pair<std::string_view, Formula::Node::Pointer>>;

/// Raises error -1 with position and cause.
Formula::Node::Pointer ParseFormula(std::string_view text, std::string_view tableName,
                                    std::span<const FieldDefinition> fields, const KnownFormulas& formulas,
                                    TextComparison comparison);

/// No text that a formula makes is longer; the rest is cut.
constexpr std::size_t kLongestText = 32767;

/// The value as a number: text where the whole of it is one. Nothing for Null and any other text.
std::optional<double> NumberIn(const ADODB::Value& value);
/// Null where `number` is none that is finite.
ADODB::Value FiniteOrNull(double number);
ADODB::Value FlagValue(bool isTrue);

/// Calls the function of `call` with the values of its arguments.
ADODB::Value CallFunction(const Formula::Node& call, const std::vector<ADODB::Value>& values);

} // namespace report
