// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/FormulaTokens.h"

#include "platform/errors.h"
#include "platform/report/Formula.h"
#include "platform/text.h"

#include <algorithm>

namespace report {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

} // namespace

FormulaTokens::FormulaTokens(std::string_view text) : mText(text) {
    Take();
}

void FormulaTokens::Take() {
    while (mNext < mText.size() && IsBlank(mText[mNext]))
        ++mNext;
    mCurrent = {};
    mCurrent.position = mNext;
    if (mNext == mText.size())
        return;
    const std::string_view rest = mText.substr(mNext);
    const char first = rest.front();
    std::size_t length = 1;
    if (first == '"' || first == '\'')
        return Quoted(first);
    if (IsDigit(first) || (first == '.' && rest.size() > 1 && IsDigit(rest[1])))
        return Number();
    if (first == '{') {
        mCurrent.kind = FormulaToken::Kind::Reference;
        const std::size_t end = rest.find('}');
        if (end == std::string_view::npos)
            Fail("\"}\" is missing");
        length = end + 1;
    } else if (IsLetter(first)) {
        mCurrent.kind = FormulaToken::Kind::Word;
        while (length < rest.size() && (IsLetter(rest[length]) || IsDigit(rest[length])))
            ++length;
    } else {
        mCurrent.kind = FormulaToken::Kind::Symbol;
        for (const std::string_view pair : {"<>", "<=", ">="})
            if (rest.starts_with(pair))
                length = 2;
    }
    mCurrent.text = rest.substr(0, length);
    mNext += length;
}

/// A quote inside of a text is written twice.
void FormulaTokens::Quoted(char quote) {
    mCurrent.kind = FormulaToken::Kind::Text;
    for (;;) {
        const std::size_t end = mText.find(quote, mNext + 1);
        if (end == std::string_view::npos)
            Fail("the closing quote is missing");
        mCurrent.text += mText.substr(mNext + 1, end - mNext - 1);
        mNext = end;
        if (end + 1 == mText.size() || mText[end + 1] != quote)
            break;
        mCurrent.text += quote;
        ++mNext;
    }
    ++mNext;
}

void FormulaTokens::Number() {
    mCurrent.kind = FormulaToken::Kind::Number;
    const std::size_t begin = mNext;
    while (mNext < mText.size() && (IsDigit(mText[mNext]) || mText[mNext] == '.' || IsLetter(mText[mNext])))
        ++mNext;
    mCurrent.text = mText.substr(begin, mNext - begin);
    const auto number = NumberOrNothing(mCurrent.text);
    if (!number)
        Fail("\"" + mCurrent.text + "\" is no number");
    mCurrent.number = *number;
}

bool FormulaTokens::Is(std::string_view wordOrSymbol) const {
    const bool canBe =
        mCurrent.kind == FormulaToken::Kind::Word || mCurrent.kind == FormulaToken::Kind::Symbol;
    return canBe && EqualNoCase(mCurrent.text, wordOrSymbol);
}

bool FormulaTokens::TakeIf(std::string_view wordOrSymbol) {
    if (!Is(wordOrSymbol))
        return false;
    Take();
    return true;
}

void FormulaTokens::Fail(const std::string& cause) const {
    throw RunTimeError(kMalformed, "position " + std::to_string(mCurrent.position + 1) + ": " + cause);
}

} // namespace report
