// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/accesstranslator.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <optional>

namespace Access {

/// Two minus signs in a row would begin a comment.
void Translator::PutNegative(std::string_view number) {
    if (mOut.sql.ends_with('-'))
        Put(" ");
    Put("-");
    Put(number);
}

Translator::Operand Translator::Primary() {
    switch (mTokens.Current().kind) {
        case TokenKind::Number:
        case TokenKind::Text:
        case TokenKind::Date:
            return Literal();
        case TokenKind::Bracketed:
            return Column();
        case TokenKind::Word:
            return WordPrimary();
        default:
            break;
    }
    if (!mTokens.Is('('))
        mTokens.FailHere();
    return Parenthesised();
}

Translator::Operand Translator::WordPrimary() {
    const std::size_t start = End();
    const Word word = mTokens.Current().word;
    const bool isCall = Tokens::IsSymbol(mTokens.Ahead(1), '(');
    const bool isFunction =
        word == Word::None || word == Word::Left || word == Word::Right || word == Word::Asc;
    if (isCall && isFunction)
        return FunctionCall();
    switch (word) {
        case Word::None:
            return Column();
        case Word::True:
        case Word::Yes:
        case Word::On:
            mTokens.Take();
            PutNegative("1");
            return {start, ValueKind::Number};
        case Word::False:
        case Word::No:
        case Word::Off:
            mTokens.Take();
            Put("0");
            return {start, ValueKind::Number};
        case Word::Null:
            mTokens.Take();
            Put("NULL");
            return {start};
        case Word::Exists:
            mTokens.Take();
            mTokens.Expect('(');
            Put("EXISTS (");
            Query();
            mTokens.Expect(')');
            Put(")");
            return {start, ValueKind::Truth};
        default:
            mTokens.FailHere();
    }
}

Translator::Operand Translator::Column() {
    const std::size_t start = End();
    PutName(mTokens.Take().text);
    if (mTokens.TakeIf('.') || mTokens.TakeIf('!')) {
        const TokenKind kind = mTokens.Current().kind;
        if (kind != TokenKind::Word && kind != TokenKind::Bracketed)
            mTokens.FailHere();
        Put(".");
        PutName(mTokens.Take().text);
    }
    return {start, ValueKind::Unknown, Shape::Column};
}

Translator::Operand Translator::Literal() {
    const std::size_t start = End();
    const Token& token = mTokens.Take();
    if (token.kind == TokenKind::Number) {
        Put(token.text);
        return {start, ValueKind::Number, Shape::Literal, &token};
    }
    PutText(token);
    return {start, token.kind == TokenKind::Date ? ValueKind::Date : ValueKind::Text, Shape::Literal, &token};
}

void Translator::PutText(const Token& token) {
    Put("'");
    if (token.delimiter == '\'') {
        Put(token.text);
    } else {
        for (const char c : LiteralText(token))
            mOut.sql.append(c == '\'' ? 2 : 1, c);
    }
    Put("'");
}

std::string Translator::LiteralText(const Token& token) const {
    if (token.kind == TokenKind::Text)
        return Unquoted(token);
    const std::optional<std::chrono::local_days> date = ParseDate(token.text);
    if (!date)
        mTokens.Fail("no date between the number signs", token.position);
    return FormatDate(*date, "yyyymmdd");
}

Translator::Operand Translator::Parenthesised() {
    const std::size_t start = End();
    mTokens.Take();
    Put("(");
    Operand operand;
    if (mTokens.Is(Word::Select)) {
        Query();
        operand.shape = Shape::Subquery;
    } else {
        operand = Condition();
    }
    mTokens.Expect(')');
    Put(")");
    operand.start = start;
    return operand;
}

Translator::Operand Translator::FunctionCall() {
    const Lifting none(*this, false);
    Operand result;
    result.start = End();
    if (SpecialForm(result))
        return result;
    const Token& name = mTokens.Take();
    const Function* function = FindFunction(name.text);
    if (function == nullptr)
        mTokens.Fail("undefined function \"" + std::string(name.text) + "\"", name.position);
    mTokens.Take();
    Put(function->engineName);
    Put("(");
    int count = 0;
    if (mTokens.Is('*') && function->name == "COUNT") {
        mTokens.Take();
        Put("*");
        count = 1;
    } else if (!mTokens.Is(')')) {
        do {
            if (count++ > 0)
                Put(", ");
            Value();
        } while (mTokens.TakeIf(','));
    }
    mTokens.Expect(')');
    Put(")");
    if (count < function->leastArguments || count > function->mostArguments)
        mTokens.Fail("wrong number of arguments for \"" + std::string(name.text) + "\"", name.position);
    result.kind = function->result;
    return result;
}

/// Forms that evaluate only what they need, or have a twin in SQLite's grammar.
bool Translator::SpecialForm(Operand& result) {
    enum class Form { IIf, Switch, Choose, Nz, IsNull };
    struct Entry {
        std::string_view name;
        Form form;
    };
    static constexpr std::array kForms = {Entry{"IIF", Form::IIf}, Entry{"SWITCH", Form::Switch},
                                          Entry{"CHOOSE", Form::Choose}, Entry{"NZ", Form::Nz},
                                          Entry{"ISNULL", Form::IsNull}};
    const auto* found = std::find_if(kForms.begin(), kForms.end(), [this](const Entry& entry) {
        return EqualNoCase(entry.name, mTokens.Current().text);
    });
    if (found == kForms.end())
        return false;
    mTokens.Take();
    mTokens.Take();
    switch (found->form) {
        case Form::IIf:
            result.kind = IIf();
            break;
        case Form::Switch:
            Switch();
            break;
        case Form::Choose:
            Choose();
            break;
        case Form::Nz:
            Nz();
            break;
        case Form::IsNull:
            Put("(");
            Value();
            Put(" IS NULL)");
            result.kind = ValueKind::Truth;
            break;
    }
    mTokens.Expect(')');
    return true;
}

ValueKind Translator::IIf() {
    Put("CASE WHEN ");
    Condition();
    mTokens.Expect(',');
    Put(" THEN ");
    const ValueKind first = Value().kind;
    mTokens.Expect(',');
    Put(" ELSE ");
    const ValueKind second = Value().kind;
    Put(" END");
    return first == second ? first : ValueKind::Unknown;
}

void Translator::Switch() {
    Put("CASE");
    do {
        Put(" WHEN ");
        Condition();
        mTokens.Expect(',');
        Put(" THEN ");
        Value();
    } while (mTokens.TakeIf(','));
    Put(" END");
}

void Translator::Choose() {
    Put("CASE AccessCLng(");
    Value();
    Put(")");
    int index = 0;
    mTokens.Expect(',');
    do {
        Put(" WHEN " + std::to_string(++index) + " THEN ");
        Value();
    } while (mTokens.TakeIf(','));
    Put(" END");
}

void Translator::Nz() {
    Put("coalesce(");
    Value();
    Put(", ");
    if (mTokens.TakeIf(','))
        Value();
    else
        Put("''");
    Put(")");
}

} // namespace Access
