// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/Formula.h"

#include "platform/report/FormulaNode.h"
#include "platform/text.h"

#include <algorithm>
#include <cmath>

namespace report {

namespace {

using ADODB::IsNull;
using ADODB::Value;
using Row = std::span<const Value>;
using Node = Formula::Node;

Value ValueOf(const Node& node, Row row);

/// Nothing where neither is known.
std::optional<bool> TruthOf(const Value& value) {
    const std::optional<double> number = NumberIn(value);
    return number ? std::optional(*number != 0) : std::nullopt;
}

std::string TextOf(const Value& value, bool isFlag) {
    return FormatValue(Format(), value, isFlag);
}

/// Below, at and above 0 as `a` stands before, with and behind `b`. Neither is Null.
int Order(const Value& a, bool isFlagA, const Value& b, bool isFlagB, TextComparison comparison) {
    const bool areTexts = std::holds_alternative<std::string>(a) && std::holds_alternative<std::string>(b);
    if (!areTexts) {
        const std::optional<double> x = NumberIn(a);
        const std::optional<double> y = NumberIn(b);
        if (x && y)
            return *x < *y ? -1 : static_cast<int>(*x > *y);
    }
    const std::string x = TextOf(a, isFlagA);
    const std::string y = TextOf(b, isFlagB);
    if (comparison == TextComparison::Exact)
        return x.compare(y);
    return LessNoCase(x, y) ? -1 : static_cast<int>(LessNoCase(y, x));
}

Value Compared(const Node& comparison, Row row) {
    const Node& left = *comparison.children.front();
    const Node& right = *comparison.children.back();
    const Operator meaning = comparison.operators.front();
    const bool asksForEqual = meaning == Operator::Equal;
    const Value a = ValueOf(left, row);
    const Value b = ValueOf(right, row);
    if (IsNull(a) || IsNull(b)) {
        if (!asksForEqual && meaning != Operator::NotEqual)
            return {};
        return FlagValue((IsNull(a) && IsNull(b)) == asksForEqual);
    }
    const int order = Order(a, left.isFlag, b, right.isFlag, comparison.comparison);
    switch (meaning) {
        case Operator::Equal:
            return FlagValue(order == 0);
        case Operator::NotEqual:
            return FlagValue(order != 0);
        case Operator::Less:
            return FlagValue(order < 0);
        case Operator::LessOrEqual:
            return FlagValue(order <= 0);
        case Operator::Greater:
            return FlagValue(order > 0);
        default:
            return FlagValue(order >= 0);
    }
}

/// One operand that decides makes the rest of no account, known or not.
Value Joined(const Node& chain, Row row) {
    const bool decider = chain.operators.front() == Operator::Or;
    bool areAllKnown = true;
    for (const Node::Pointer& child : chain.children) {
        const std::optional<bool> truth = TruthOf(ValueOf(*child, row));
        if (truth == decider)
            return FlagValue(decider);
        areAllKnown = areAllKnown && truth.has_value();
    }
    return areAllKnown ? FlagValue(!decider) : Value();
}

Value Concatenated(const Node& chain, Row row) {
    std::string text;
    for (const Node::Pointer& child : chain.children) {
        text += TextOf(ValueOf(*child, row), child->isFlag);
        if (text.size() > kLongestText)
            break;
    }
    return text;
}

Value Calculated(const Node& chain, Row row) {
    std::optional<double> result = NumberIn(ValueOf(*chain.children.front(), row));
    for (std::size_t i = 0; i < chain.operators.size() && result; ++i) {
        const std::optional<double> operand = NumberIn(ValueOf(*chain.children[i + 1], row));
        if (!operand)
            return {};
        switch (chain.operators[i]) {
            case Operator::Add:
                *result += *operand;
                break;
            case Operator::Subtract:
                *result -= *operand;
                break;
            case Operator::Multiply:
                *result *= *operand;
                break;
            default:
                // Division by zero ends in no finite number.
                if (*operand == 0)
                    return {};
                *result /= *operand;
        }
    }
    return result ? FiniteOrNull(*result) : Value();
}

Value ChainValue(const Node& chain, Row row) {
    switch (chain.operators.front()) {
        case Operator::Or:
        case Operator::And:
            return Joined(chain, row);
        case Operator::Join:
            return Concatenated(chain, row);
        case Operator::Add:
        case Operator::Subtract:
        case Operator::Multiply:
        case Operator::Divide:
            return Calculated(chain, row);
        default:
            return Compared(chain, row);
    }
}

Value ChosenValue(const Node& choice, Row row) {
    const std::vector<Node::Pointer>& parts = choice.children;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2)
        if (TruthOf(ValueOf(*parts[i], row)) == true)
            return ValueOf(*parts[i + 1], row);
    return parts.size() % 2 == 1 ? ValueOf(*parts.back(), row) : Value();
}

Value CalledValue(const Node& call, Row row) {
    std::vector<Value> arguments;
    arguments.reserve(call.children.size());
    for (const Node::Pointer& child : call.children)
        arguments.push_back(ValueOf(*child, row));
    return CallFunction(call, arguments);
}

/// No text grows beyond the limit, whatever is joined to what: cut at a character.
Value Limited(Value value) {
    std::string* text = std::get_if<std::string>(&value);
    if (text != nullptr && text->size() > kLongestText) {
        std::size_t end = kLongestText;
        while (end > 0 && (static_cast<unsigned char>((*text)[end]) & 0xC0U) == 0x80U)
            --end;
        text->resize(end);
    }
    return value;
}

Value ValueOf(const Node& node, Row row) {
    switch (node.kind) {
        case Node::Kind::Literal:
            return node.literal;
        case Node::Kind::Field:
            return node.field < row.size() ? Limited(row[node.field]) : Value();
        case Node::Kind::Chain:
            return Limited(ChainValue(node, row));
        case Node::Kind::Not: {
            const std::optional<bool> truth = TruthOf(ValueOf(*node.children.front(), row));
            return truth ? FlagValue(!*truth) : Value();
        }
        case Node::Kind::Negate: {
            const std::optional<double> number = NumberIn(ValueOf(*node.children.front(), row));
            return number ? FiniteOrNull(-*number) : Value();
        }
        case Node::Kind::If:
            return ChosenValue(node, row);
        case Node::Kind::Call:
            return Limited(CalledValue(node, row));
    }
    return {};
}

} // namespace

std::optional<double> NumberIn(const Value& value) {
    if (const double* number = std::get_if<double>(&value))
        return std::isfinite(*number) ? std::optional(*number) : std::nullopt;
    const std::string* text = std::get_if<std::string>(&value);
    return text != nullptr ? NumberOrNothing(*text) : std::nullopt;
}

Value FiniteOrNull(double number) {
    return std::isfinite(number) ? Value(number) : Value();
}

Value FlagValue(bool isTrue) {
    return isTrue ? -1.0 : 0.0;
}

std::optional<std::size_t> FindField(std::string_view reference, std::string_view tableName,
                                     std::span<const FieldDefinition> fields) {
    const std::size_t prefix = tableName.size() + 2;
    if (reference.size() <= prefix || reference.front() != '{' || reference.back() != '}' ||
        reference[prefix - 1] != '.' || !EqualNoCase(reference.substr(1, tableName.size()), tableName))
        return std::nullopt;
    const std::string_view name = reference.substr(prefix, reference.size() - prefix - 1);
    const auto found =
        std::ranges::find_if(fields, [name](const auto& field) { return EqualNoCase(field.name, name); });
    if (found == fields.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - fields.begin());
}

Formula::Formula(std::string_view text, std::string_view tableName, std::span<const FieldDefinition> fields,
                 std::span<const NamedFormula> formulas, TextComparison comparison) {
    KnownFormulas known;
    known.reserve(formulas.size());
    for (const NamedFormula& formula : formulas)
        known.emplace_back(formula.name, formula.formula.mRoot);
    mRoot = ParseFormula(text, tableName, fields, known, comparison);
}

Value Formula::Evaluate(Row row) const {
    return ValueOf(*mRoot, row);
}

bool Formula::IsTrue(Row row) const {
    return TruthOf(ValueOf(*mRoot, row)) == true;
}

int Formula::Cost() const {
    return mRoot->cost;
}

bool Formula::IsFlag() const {
    return mRoot->isFlag;
}

} // namespace report
