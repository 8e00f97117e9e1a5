// SPDX-License-Identifier: GPL-3.0-or-later
// Cuts a formula into tokens, one after the other. The text must outlive it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace report {

struct FormulaToken {
    enum class Kind : std::uint8_t { End, Number, Text, Reference, Word, Symbol };
    Kind kind = Kind::End;
    /// A text without its quotes; a reference with its braces.
    std::string text;
    double number = 0;
    /// Where it begins, from 0.
    std::size_t position = 0;
};

class FormulaTokens {
public:
    /// Raises error -1 for what is no token, here and wherever a token is taken.
    explicit FormulaTokens(std::string_view text);

    const FormulaToken& Current() const { return mCurrent; }
    void Take();
    /// Whether the current token is that word, in any case, or that symbol.
    bool Is(std::string_view wordOrSymbol) const;
    /// Takes it if so.
    bool TakeIf(std::string_view wordOrSymbol);
    /// Raises error -1 about the current token.
    [[noreturn]] void Fail(const std::string& cause) const;

private:
    void Quoted(char quote);
    void Number();

    std::string_view mText;
    std::size_t mNext = 0;
    FormulaToken mCurrent;
};

} // namespace report
