// SPDX-License-Identifier: GPL-3.0-or-later
// Cuts a statement of the desktop database's SQL into tokens. The tokens are views into the statement's text,
// which must outlive them. Comments may stand ahead of a statement and nowhere else: inside of one, two
// dashes are two minus signs.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Access {

/// The words that mean something to the grammar wherever they stand bare.
enum class Word : std::uint8_t {
    None,
    All,
    Alter,
    And,
    As,
    Asc,
    Between,
    By,
    Create,
    Delete,
    Desc,
    Distinct,
    DistinctRow,
    Drop,
    Eqv,
    Exists,
    False,
    From,
    Group,
    Having,
    Imp,
    In,
    Inner,
    Insert,
    Into,
    Is,
    Join,
    Left,
    Like,
    Mod,
    No,
    Not,
    Null,
    Off,
    On,
    Or,
    Order,
    Outer,
    Percent,
    Right,
    Select,
    Set,
    Top,
    True,
    Union,
    Update,
    Values,
    Where,
    Xor,
    Yes
};

enum class TokenKind : std::uint8_t { End, Word, Bracketed, Number, Text, Date, Symbol };

struct Token {
    TokenKind kind = TokenKind::End;
    Word word = Word::None;
    /// Without the brackets, quotes or number signs around it; the delimiter of a text is still doubled
    /// inside.
    std::string_view text;
    /// Where the token begins in the statement.
    std::size_t position = 0;
    /// The quote of a text.
    char delimiter = 0;
};

/// Longer statements are refused, as the desktop database does.
constexpr std::size_t kLongestStatement = 65535;

class Tokens {
public:
    /// Raises the engine's syntax error for what is no token.
    explicit Tokens(std::string_view statement);

    const Token& Current() const { return mTokens[mIndex]; }
    /// The token `distance` places ahead; the end stands behind the last one.
    const Token& Ahead(std::size_t distance) const;
    bool AtEnd() const { return Current().kind == TokenKind::End; }

    bool Is(Word word) const { return Current().word == word; }
    bool Is(char symbol) const { return IsSymbol(Current(), symbol); }
    static bool IsSymbol(const Token& token, char symbol);

    /// The current token, past which the reading goes on; the end is never passed.
    const Token& Take();
    bool TakeIf(Word word);
    bool TakeIf(char symbol);
    void Expect(Word word, const char* name);
    void Expect(char symbol);

    /// Raises the engine's syntax error about the current token.
    [[noreturn]] void FailHere() const;
    /// Raises the engine's syntax error: `complaint`, with the text around `position` quoted.
    [[noreturn]] void Fail(const std::string& complaint, std::size_t position) const;

private:
    void SkipLeadingComments();
    void Scan();
    Token Delimited(TokenKind kind, char close, bool doubles);
    Token WordOrName();
    Token Number();
    Token Symbol();
    char At(std::size_t position) const { return position < mText.size() ? mText[position] : '\0'; }

    std::string_view mText;
    std::size_t mPosition = 0;
    std::vector<Token> mTokens;
    std::size_t mIndex = 0;
};

/// What a text token stands for: doubled delimiters are one.
std::string Unquoted(const Token& text);

} // namespace Access
