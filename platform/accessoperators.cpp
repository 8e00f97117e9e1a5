// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/accesstranslator.h"
#include "platform/text.h"

#include <string>

namespace Access {

namespace {

// How tightly the operators bind, by the desktop database's rules. SQLite's differ for &, Mod, \ and ^, which
// all become functions.
enum Level : int {
    kLowest = 1,
    kImp = 1,
    kEqv,
    kXor,
    kOr,
    kAnd,
    kNot,
    kComparison,
    kConcatenation,
    kSum,
    kMod,
    kIntegerDivision,
    kProduct,
    kSign,
    kPower
};

// SQLite takes at most 127 arguments.
constexpr int kMostPieces = 100;
// Integers of up to 15 digits go through a double unchanged.
constexpr std::size_t kExactDigits = 15;

int SymbolLevel(std::string_view symbol) {
    switch (symbol.front()) {
        case '=':
        case '<':
        case '>':
            return kComparison;
        case '!':
            return symbol.size() == 2 ? kComparison : 0;
        case '&':
            return kConcatenation;
        case '+':
        case '-':
            return kSum;
        case '\\':
            return kIntegerDivision;
        case '*':
        case '/':
            return kProduct;
        case '^':
            return kPower;
        default:
            return 0;
    }
}

} // namespace

int Translator::OperatorLevel() const {
    const Token& token = mTokens.Current();
    if (token.kind == TokenKind::Symbol)
        return SymbolLevel(token.text);
    switch (token.word) {
        case Word::Imp:
            return kImp;
        case Word::Eqv:
            return kEqv;
        case Word::Xor:
            return kXor;
        case Word::Or:
            return kOr;
        case Word::And:
            return kAnd;
        case Word::Mod:
            return kMod;
        case Word::Not: // NOT LIKE, NOT IN, NOT BETWEEN
        case Word::Like:
        case Word::In:
        case Word::Is:
        case Word::Between:
            return kComparison;
        default:
            return 0;
    }
}

Translator::Operand Translator::Expression(int leastLevel) {
    const Nesting nesting(*this);
    Operand left = Prefix();
    for (int level = OperatorLevel(); level >= leastLevel; level = OperatorLevel())
        left = Infix(left, level);
    return left;
}

Translator::Operand Translator::Value() {
    Operand operand = Expression(kLowest);
    MakeValue(operand);
    return operand;
}

Translator::Operand Translator::Condition() {
    return Expression(kLowest);
}

/// SQLite's conditions are 1 and 0, the desktop database's -1 and 0.
void Translator::MakeValue(Operand& operand) {
    if (operand.kind != ValueKind::Truth)
        return;
    InsertAt(operand.start, "(-(");
    Put("))");
    operand.kind = ValueKind::Number;
}

/// Whether a comparison with this operand would regard case: it may be a text, and is no column that brings
/// its collation along.
bool Translator::IsCaseOpen(const Operand& operand) {
    return operand.shape != Shape::Column &&
           (operand.kind == ValueKind::Text || operand.kind == ValueKind::Unknown);
}

Translator::Operand Translator::Prefix() {
    if (mTokens.Is('-') || mTokens.Is('+'))
        return Sign();
    if (!mTokens.TakeIf(Word::Not))
        return Primary();
    const std::size_t start = End();
    Put("NOT ");
    Expression(kNot);
    return {start, ValueKind::Truth};
}

Translator::Operand Translator::Sign() {
    const std::size_t start = End();
    const bool isMinus = mTokens.Take().text == "-";
    if (isMinus)
        PutNegative("");
    Operand operand = Expression(kPower);
    MakeValue(operand);
    operand.start = start;
    if (!isMinus)
        return operand;
    const bool isNumber = operand.literal != nullptr && operand.literal->kind == TokenKind::Number;
    if (!isNumber)
        return {start, ValueKind::Number};
    operand.isNegative = !operand.isNegative;
    return operand;
}

Translator::Operand Translator::Infix(Operand left, int level) {
    switch (level) {
        case kImp:
            return FunctionOperator(left, "AccessImp(", level);
        case kEqv:
            return FunctionOperator(left, "AccessEqv(", level);
        case kXor:
            return FunctionOperator(left, "AccessXor(", level);
        case kOr:
            return Logical(left, " OR ", level);
        case kAnd:
            return Logical(left, " AND ", level);
        case kComparison:
            return Comparison(left);
        case kConcatenation:
            return Concatenation(left);
        case kSum:
            return Sum(left);
        case kMod:
            return FunctionOperator(left, "AccessMod(", level);
        case kIntegerDivision:
            return FunctionOperator(left, "AccessIntegerDivision(", level);
        case kProduct:
            return Product(left);
        default:
            return FunctionOperator(left, "AccessPower(", level);
    }
}

Translator::Operand Translator::Logical(const Operand& left, std::string_view word, int level) {
    mTokens.Take();
    Put(word);
    Expression(level + 1);
    return {left.start, ValueKind::Truth};
}

Translator::Operand Translator::FunctionOperator(Operand left, std::string_view function, int level) {
    MakeValue(left);
    mTokens.Take();
    InsertAt(left.start, function);
    Put(", ");
    Operand right = Expression(level + 1);
    MakeValue(right);
    Put(")");
    return {left.start, ValueKind::Number};
}

Translator::Operand Translator::Comparison(Operand left) {
    MakeValue(left);
    const Token& sign = mTokens.Take();
    const bool isNegated = sign.word == Word::Not;
    switch (isNegated ? mTokens.Take().word : sign.word) {
        case Word::Like:
            return Like(left, isNegated);
        case Word::In:
            return In(left, isNegated);
        case Word::Between:
            return Between(left, isNegated);
        case Word::Is:
            Put(mTokens.TakeIf(Word::Not) ? " IS NOT NULL" : " IS NULL");
            mTokens.Expect(Word::Null, "NULL");
            return {left.start, ValueKind::Truth};
        default:
            break;
    }
    if (isNegated)
        mTokens.Fail("NOT where an operator should be", sign.position);
    const std::size_t middle = End();
    Put(" ");
    Put(sign.text == "!=" ? "<>" : sign.text);
    Put(" ");
    Operand right = Expression(kConcatenation);
    MakeValue(right);
    const bool isLifted =
        mIsLifting && left.shape == Shape::Column && right.shape == Shape::Literal && Lift(right);
    if (!isLifted && IsCaseOpen(left) && right.shape != Shape::Column)
        InsertAt(middle, kCaseless);
    return {left.start, ValueKind::Truth};
}

bool Translator::Lift(const Operand& literal) {
    const Token& token = *literal.literal;
    if (token.kind != TokenKind::Number) {
        mOut.parameters.emplace_back(LiteralText(token));
    } else {
        if (token.text.size() > kExactDigits)
            return false;
        const double number = Val(token.text);
        mOut.parameters.emplace_back(literal.isNegative ? -number : number);
    }
    mOut.sql.resize(literal.start);
    Put("?");
    Put(std::to_string(mOut.parameters.size()));
    return true;
}

Translator::Operand Translator::Like(const Operand& left, bool isNegated) {
    InsertAt(left.start, isNegated ? "NOT AccessLike(" : "AccessLike(");
    Put(", ");
    Operand pattern = Expression(kConcatenation);
    MakeValue(pattern);
    Put(")");
    return {left.start, ValueKind::Truth};
}

Translator::Operand Translator::In(const Operand& left, bool isNegated) {
    const Lifting none(*this, false);
    if (IsCaseOpen(left))
        Put(kCaseless);
    mTokens.Expect('(');
    Put(isNegated ? " NOT IN (" : " IN (");
    if (mTokens.Is(Word::Select)) {
        Query();
    } else {
        Value();
        while (mTokens.TakeIf(',')) {
            Put(", ");
            Value();
        }
    }
    mTokens.Expect(')');
    Put(")");
    return {left.start, ValueKind::Truth};
}

/// Either bound may be the lower one. That is settled for literals, which is how people write them.
Translator::Operand Translator::Between(const Operand& left, bool isNegated) {
    if (IsCaseOpen(left))
        Put(kCaseless);
    Put(isNegated ? " NOT BETWEEN " : " BETWEEN ");
    Operand low = Expression(kConcatenation);
    MakeValue(low);
    mTokens.Expect(Word::And, "AND");
    const std::size_t middle = End();
    Put(" AND ");
    Operand high = Expression(kConcatenation);
    MakeValue(high);

    const auto isTurned = [this, &low, &high] {
        if (low.shape != Shape::Literal || high.shape != Shape::Literal)
            return false;
        const bool isNumber = low.literal->kind == TokenKind::Number;
        if (isNumber != (high.literal->kind == TokenKind::Number))
            return false;
        if (!isNumber)
            return LessNoCase(LiteralText(*high.literal), LiteralText(*low.literal));
        const auto number = [](const Operand& operand) {
            return (operand.isNegative ? -1 : 1) * Val(operand.literal->text);
        };
        return number(high) < number(low);
    };
    if (isTurned()) {
        const std::string lowText = mOut.sql.substr(low.start, middle - low.start);
        const std::string highText = mOut.sql.substr(high.start);
        mOut.sql.resize(low.start);
        Put(highText);
        Put(" AND ");
        Put(lowText);
    }
    return {left.start, ValueKind::Truth};
}

Translator::Operand Translator::Concatenation(Operand left) {
    MakeValue(left);
    InsertAt(left.start, "AccessConcat(");
    for (int pieces = 1; mTokens.Is('&') && pieces < kMostPieces; ++pieces) {
        mTokens.Take();
        Put(", ");
        Operand right = Expression(kConcatenation + 1);
        MakeValue(right);
    }
    Put(")");
    return {left.start, ValueKind::Text};
}

/// "+" joins two texts and moves a date; "-" moves a date or counts the days between two.
Translator::Operand Translator::Sum(Operand left) {
    MakeValue(left);
    const bool isMinus = mTokens.Take().text == "-";
    const std::size_t middle = End();
    Operand right = Expression(kSum + 1);
    MakeValue(right);

    std::string_view function;
    ValueKind kind = ValueKind::Number;
    if (left.kind == ValueKind::Date || right.kind == ValueKind::Date) {
        function = isMinus ? "AccessDateMinus(" : "AccessDatePlus(";
        if (!isMinus || right.kind == ValueKind::Number)
            kind = ValueKind::Date;
        else if (left.kind != right.kind)
            kind = ValueKind::Unknown;
    } else if (!isMinus && left.kind != ValueKind::Number && right.kind != ValueKind::Number) {
        function = "AccessAdd(";
        kind = left.kind == right.kind ? left.kind : ValueKind::Unknown;
    }
    if (function.empty()) {
        InsertAt(middle, isMinus ? " - " : " + ");
    } else {
        InsertAt(middle, ", ");
        InsertAt(left.start, function);
        Put(")");
    }
    return {left.start, kind};
}

Translator::Operand Translator::Product(Operand left) {
    MakeValue(left);
    // Between two integers SQLite's division would drop the fraction.
    Put(mTokens.Take().text == "*" ? " * " : " * 1.0 / ");
    Operand right = Expression(kProduct + 1);
    MakeValue(right);
    return {left.start, ValueKind::Number};
}

} // namespace Access
