// SPDX-License-Identifier: GPL-3.0-or-later
// From a formula's text to its tree, by recursive descent. What has its precedence in common makes one node
// with all its operands, so depth comes from what is written inside of each other alone.
#include "platform/errors.h"
#include "platform/report/FormulaNode.h"
#include "platform/report/FormulaTokens.h"
#include "platform/text.h"

#include <algorithm>

namespace report {

namespace {

using Node = Formula::Node;

constexpr std::size_t kLongestFormula = 4096;
constexpr int kDeepestNesting = 64;
constexpr int kHighestCost = 2000;

struct OperatorName {
    std::string_view text;
    Operator meaning;
    /// From the loosest, 0, to the tightest.
    std::size_t level;
};

constexpr OperatorName kOperators[] = {
    {"or", Operator::Or, 0},      {"and", Operator::And, 1},
    {"=", Operator::Equal, 2},    {"<>", Operator::NotEqual, 2},
    {"<", Operator::Less, 2},     {"<=", Operator::LessOrEqual, 2},
    {">", Operator::Greater, 2},  {">=", Operator::GreaterOrEqual, 2},
    {"&", Operator::Join, 3},     {"+", Operator::Add, 4},
    {"-", Operator::Subtract, 4}, {"*", Operator::Multiply, 5},
    {"/", Operator::Divide, 5},
};
/// "not" stands just outside of a comparison.
constexpr std::size_t kComparisons = 2;
constexpr std::size_t kLevels = 6;

struct FunctionName {
    std::string_view name;
    Function function;
    std::uint8_t least;
    std::uint8_t most;
    bool isFlag = false;
};

constexpr FunctionName kFunctions[] = {
    {"Abs", Function::Abs, 1, 1},         {"Exact", Function::Exact, 2, 2, true},
    {"InStr", Function::InStr, 2, 2},     {"IsNull", Function::IsNull, 1, 1, true},
    {"LCase", Function::LCase, 1, 1},     {"Left", Function::Left, 2, 2},
    {"Len", Function::Len, 1, 1},         {"Mid", Function::Mid, 2, 3},
    {"Replace", Function::Replace, 3, 3}, {"Right", Function::Right, 2, 2},
    {"Round", Function::Round, 1, 2},     {"Text", Function::Text, 1, 2},
    {"Trim", Function::Trim, 1, 1},       {"UCase", Function::UCase, 1, 1},
    {"Val", Function::Val, 1, 1},
};

class Parser {
public:
    Parser(std::string_view text, std::string_view tableName, std::span<const FieldDefinition> fields,
           const KnownFormulas& formulas, TextComparison comparison)
        : mTokens(text),
          mTableName(tableName),
          mFields(fields),
          mFormulas(formulas),
          mComparison(comparison) {}

    Node::Pointer Whole() {
        Node::Pointer root = Expression();
        if (mTokens.Current().kind != FormulaToken::Kind::End)
            Fail("an operator is expected");
        return root;
    }

private:
    [[noreturn]] void Fail(const std::string& cause) const { mTokens.Fail(cause); }

    void Expect(std::string_view text) {
        if (!mTokens.TakeIf(text))
            Fail("\"" + std::string(text) + "\" is expected");
    }

    Node::Pointer Made(Node node) const {
        for (const Node::Pointer& child : node.children) {
            node.depth = std::max(node.depth, child->depth + 1);
            node.cost += child->cost;
        }
        if (node.depth > kDeepestNesting)
            Fail("this nests too deep");
        if (node.cost > kHighestCost)
            Fail("this takes too many steps");
        return std::make_shared<const Node>(std::move(node));
    }

    Node::Pointer Expression() {
        if (++mNesting > kDeepestNesting)
            Fail("this nests too deep");
        Node::Pointer node = mTokens.TakeIf("if") ? Choice() : Level(0);
        --mNesting;
        return node;
    }

    /// Behind the first "if".
    Node::Pointer Choice() {
        Node node;
        node.kind = Node::Kind::If;
        node.isFlag = true;
        const auto value = [&] {
            node.children.push_back(Expression());
            node.isFlag = node.isFlag && node.children.back()->isFlag;
        };
        do {
            node.children.push_back(Expression());
            Expect("then");
            value();
            if (!mTokens.TakeIf("else"))
                return Made(std::move(node));
        } while (mTokens.TakeIf("if"));
        value();
        return Made(std::move(node));
    }

    Node::Pointer Level(std::size_t level) {
        if (level == kLevels)
            return Signed();
        if (level == kComparisons && mTokens.TakeIf("not"))
            return Prefixed(Node::Kind::Not, level);
        Node chain;
        chain.kind = Node::Kind::Chain;
        chain.isFlag = level <= kComparisons;
        chain.comparison = mComparison;
        chain.children.push_back(Level(level + 1));
        while (const OperatorName* found = OperatorHere(level)) {
            if (level == kComparisons && !chain.operators.empty())
                Fail("a comparison has two sides; \"and\" or \"or\" is expected");
            mTokens.Take();
            chain.operators.push_back(found->meaning);
            chain.children.push_back(Level(level + 1));
        }
        return chain.operators.empty() ? chain.children.front() : Made(std::move(chain));
    }

    const OperatorName* OperatorHere(std::size_t level) const {
        for (const OperatorName& known : kOperators)
            if (known.level == level && mTokens.Is(known.text))
                return &known;
        return nullptr;
    }

    /// "not" and the sign may be repeated, and each stands for a level of nesting.
    Node::Pointer Prefixed(Node::Kind kind, std::size_t level) {
        if (++mNesting > kDeepestNesting)
            Fail("this nests too deep");
        Node node;
        node.kind = kind;
        node.isFlag = kind == Node::Kind::Not;
        node.children.push_back(Level(level));
        --mNesting;
        return Made(std::move(node));
    }

    Node::Pointer Signed() {
        if (mTokens.TakeIf("-"))
            return Prefixed(Node::Kind::Negate, kLevels);
        return Primary();
    }

    Node::Pointer Primary() {
        const FormulaToken token = mTokens.Current();
        switch (token.kind) {
            case FormulaToken::Kind::Number:
                mTokens.Take();
                return Literal(token.number);
            case FormulaToken::Kind::Text:
                mTokens.Take();
                return Literal(token.text);
            case FormulaToken::Kind::Reference:
                return Reference(token.text);
            case FormulaToken::Kind::Word:
                return WordOrCall(token.text);
            default:
                break;
        }
        if (!mTokens.TakeIf("("))
            Fail("a value is expected");
        Node::Pointer inner = Expression();
        Expect(")");
        return inner;
    }

    Node::Pointer Literal(ADODB::Value value, bool isFlag = false) const {
        Node node;
        node.literal = std::move(value);
        node.isFlag = isFlag;
        return Made(std::move(node));
    }

    Node::Pointer Reference(const std::string& reference) {
        if (reference.starts_with("{@")) {
            const std::string name = reference.substr(2, reference.size() - 3);
            const auto found = std::ranges::find_if(
                mFormulas, [&name](const auto& known) { return EqualNoCase(known.first, name); });
            if (found == mFormulas.end())
                Fail("no formula before this one has the name " + reference);
            mTokens.Take();
            return found->second;
        }
        const std::optional<std::size_t> field = FindField(reference, mTableName, mFields);
        if (!field)
            Fail("the table has no field " + reference);
        mTokens.Take();
        Node node;
        node.kind = Node::Kind::Field;
        node.field = *field;
        node.isFlag = mFields[*field].IsFlag();
        return Made(std::move(node));
    }

    Node::Pointer WordOrCall(const std::string& word) {
        for (const auto& [name, value] : {std::pair("true", -1.0), std::pair("false", 0.0)})
            if (mTokens.TakeIf(name))
                return Literal(value, true);
        if (mTokens.TakeIf("null"))
            return Literal({});
        const auto* known = std::ranges::find_if(
            kFunctions, [&word](const auto& function) { return EqualNoCase(function.name, word); });
        if (known == std::end(kFunctions))
            Fail("\"" + word + "\" has no meaning here; a value is expected");
        mTokens.Take();
        Expect("(");
        return Call(*known);
    }

    Node::Pointer Call(const FunctionName& known) {
        Node node;
        node.kind = Node::Kind::Call;
        node.function = known.function;
        node.isFlag = known.isFlag;
        while (node.children.empty() || mTokens.TakeIf(",")) {
            if (node.children.size() == known.most)
                Fail(std::string(known.name) + " takes fewer values");
            node.children.push_back(Expression());
        }
        if (node.children.size() < known.least)
            Fail(std::string(known.name) + " takes more values");
        if (known.function == Function::Text && node.children.size() == 2)
            node.format = FormatNamedBy(node.children);
        Expect(")");
        return Made(std::move(node));
    }

    /// The format's name must be known now, and takes no part in the evaluation.
    Format FormatNamedBy(std::vector<Node::Pointer>& arguments) const {
        const auto* name = std::get_if<std::string>(&arguments.back()->literal);
        const std::optional<Format> format = name != nullptr ? FindFormat(*name) : std::nullopt;
        if (!format)
            Fail("the name of a format is expected, such as \"megabytes\"");
        arguments.pop_back();
        return *format;
    }

    FormulaTokens mTokens;
    std::string_view mTableName;
    std::span<const FieldDefinition> mFields;
    const KnownFormulas& mFormulas;
    TextComparison mComparison;
    int mNesting = 0;
};

} // namespace

Node::Pointer ParseFormula(std::string_view text, std::string_view tableName,
                           std::span<const FieldDefinition> fields, const KnownFormulas& formulas,
                           TextComparison comparison) {
    if (text.size() > kLongestFormula)
        throw RunTimeError(kMalformed, "position 4097: the formula is too long");
    return Parser(text, tableName, fields, formulas, comparison).Whole();
}

} // namespace report
