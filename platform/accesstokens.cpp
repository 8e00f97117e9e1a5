// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/accesstokens.h"

#include "platform/errors.h"

#include <algorithm>
#include <array>

namespace Access {

namespace {

struct Spelling {
    std::string_view text;
    Word word;
};

// In alphabetical order, for the search by halves.
constexpr std::array kWords = {
    Spelling{"ALL", Word::All},
    Spelling{"ALTER", Word::Alter},
    Spelling{"AND", Word::And},
    Spelling{"AS", Word::As},
    Spelling{"ASC", Word::Asc},
    Spelling{"BETWEEN", Word::Between},
    Spelling{"BY", Word::By},
    Spelling{"CREATE", Word::Create},
    Spelling{"DELETE", Word::Delete},
    Spelling{"DESC", Word::Desc},
    Spelling{"DISTINCT", Word::Distinct},
    Spelling{"DISTINCTROW", Word::DistinctRow},
    Spelling{"DROP", Word::Drop},
    Spelling{"EQV", Word::Eqv},
    Spelling{"EXISTS", Word::Exists},
    Spelling{"FALSE", Word::False},
    Spelling{"FROM", Word::From},
    Spelling{"GROUP", Word::Group},
    Spelling{"HAVING", Word::Having},
    Spelling{"IMP", Word::Imp},
    Spelling{"IN", Word::In},
    Spelling{"INNER", Word::Inner},
    Spelling{"INSERT", Word::Insert},
    Spelling{"INTO", Word::Into},
    Spelling{"IS", Word::Is},
    Spelling{"JOIN", Word::Join},
    Spelling{"LEFT", Word::Left},
    Spelling{"LIKE", Word::Like},
    Spelling{"MOD", Word::Mod},
    Spelling{"NO", Word::No},
    Spelling{"NOT", Word::Not},
    Spelling{"NULL", Word::Null},
    Spelling{"OFF", Word::Off},
    Spelling{"ON", Word::On},
    Spelling{"OR", Word::Or},
    Spelling{"ORDER", Word::Order},
    Spelling{"OUTER", Word::Outer},
    Spelling{"PERCENT", Word::Percent},
    Spelling{"RIGHT", Word::Right},
    Spelling{"SELECT", Word::Select},
    Spelling{"SET", Word::Set},
    Spelling{"TOP", Word::Top},
    Spelling{"TRUE", Word::True},
    Spelling{"UNION", Word::Union},
    Spelling{"UPDATE", Word::Update},
    Spelling{"VALUES", Word::Values},
    Spelling{"WHERE", Word::Where},
    Spelling{"XOR", Word::Xor},
    Spelling{"YES", Word::Yes},
};
constexpr std::size_t kLongestWord = 11;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool BeginsName(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool ContinuesName(char c) {
    return BeginsName(c) || IsDigit(c) || c == '$';
}

bool IsContinuationByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

Word WordOf(std::string_view text) {
    if (text.size() < 2 || text.size() > kLongestWord)
        return Word::None;
    std::array<char, kLongestWord> upper{};
    std::transform(text.begin(), text.end(), upper.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; });
    const std::string_view sought(upper.data(), text.size());
    const auto* found = std::lower_bound(
        kWords.begin(), kWords.end(), sought,
        [](const Spelling& spelling, std::string_view word) { return spelling.text < word; });
    return found != kWords.end() && found->text == sought ? found->word : Word::None;
}

} // namespace

Tokens::Tokens(std::string_view statement) : mText(statement) {
    if (mText.size() > kLongestStatement)
        Fail("the statement is too long", 0);
    mTokens.reserve(mText.size() / 4 + 8);
    SkipLeadingComments();
    Scan();
}

void Tokens::SkipLeadingComments() {
    for (;;) {
        while (IsBlank(At(mPosition)))
            ++mPosition;
        const std::string_view rest = mText.substr(mPosition);
        if (rest.starts_with("--")) {
            mPosition = std::min(mText.find('\n', mPosition), mText.size());
        } else if (rest.starts_with("/*")) {
            const std::size_t close = mText.find("*/", mPosition + 2);
            if (close == std::string_view::npos)
                Fail("a comment has no end", mPosition);
            mPosition = close + 2;
        } else {
            return;
        }
    }
}

void Tokens::Scan() {
    bool endsName = false;
    for (;;) {
        while (IsBlank(At(mPosition)))
            ++mPosition;
        if (mPosition >= mText.size())
            break;
        const char c = mText[mPosition];
        Token token;
        if (BeginsName(c))
            token = WordOrName();
        else if (IsDigit(c) || (c == '.' && !endsName && IsDigit(At(mPosition + 1))))
            token = Number();
        else if (c == '[')
            token = Delimited(TokenKind::Bracketed, ']', false);
        else if (c == '\'' || c == '"')
            token = Delimited(TokenKind::Text, c, true);
        else if (c == '#')
            token = Delimited(TokenKind::Date, '#', false);
        else
            token = Symbol();
        // What follows a point is a name, however it is spelled: Computers.No is no constant.
        const bool followsPoint = !mTokens.empty() && IsSymbol(mTokens.back(), '.');
        if (followsPoint)
            token.word = Word::None;
        endsName =
            token.kind == TokenKind::Bracketed || (token.kind == TokenKind::Word && token.word == Word::None);
        mTokens.push_back(token);
    }
    Token end;
    end.position = mText.size();
    mTokens.push_back(end);
}

Token Tokens::Delimited(TokenKind kind, char close, bool doubles) {
    const std::size_t begin = mPosition;
    std::size_t end = begin + 1;
    for (;;) {
        end = mText.find(close, end);
        if (end == std::string_view::npos)
            Fail(std::string("there is no closing ") + close, begin);
        if (!doubles || At(end + 1) != close)
            break;
        end += 2;
    }
    Token token{kind, Word::None, mText.substr(begin + 1, end - begin - 1), begin, close};
    if (token.text.find('\0') != std::string_view::npos)
        Fail("a NUL character", begin);
    if (kind == TokenKind::Bracketed && token.text.empty())
        Fail("a name is empty", begin);
    mPosition = end + 1;
    return token;
}

Token Tokens::WordOrName() {
    const std::size_t begin = mPosition;
    while (ContinuesName(At(mPosition)))
        ++mPosition;
    const std::string_view text = mText.substr(begin, mPosition - begin);
    return {TokenKind::Word, WordOf(text), text, begin};
}

Token Tokens::Number() {
    const std::size_t begin = mPosition;
    const auto digits = [this] {
        while (IsDigit(At(mPosition)))
            ++mPosition;
    };
    digits();
    if (At(mPosition) == '.') {
        ++mPosition;
        digits();
    }
    if (At(mPosition) == 'e' || At(mPosition) == 'E') {
        const std::size_t exponent = mPosition++;
        if (At(mPosition) == '+' || At(mPosition) == '-')
            ++mPosition;
        if (!IsDigit(At(mPosition)))
            Fail("a number has no exponent behind its E", exponent);
        digits();
    }
    if (ContinuesName(At(mPosition)))
        Fail("a name begins with a digit", begin);
    return {TokenKind::Number, Word::None, mText.substr(begin, mPosition - begin), begin};
}

Token Tokens::Symbol() {
    static constexpr std::string_view kSymbols = "()*,.;=<>+-/\\^&!";
    const std::size_t begin = mPosition;
    const char first = mText[begin];
    if (kSymbols.find(first) == std::string_view::npos)
        Fail("a character that has no meaning here", begin);
    const char second = At(begin + 1);
    const bool isPair = (first == '<' && (second == '=' || second == '>')) ||
                        ((first == '>' || first == '!') && second == '=');
    mPosition += isPair ? 2 : 1;
    return {TokenKind::Symbol, Word::None, mText.substr(begin, mPosition - begin), begin};
}

const Token& Tokens::Ahead(std::size_t distance) const {
    return mTokens[std::min(mIndex + distance, mTokens.size() - 1)];
}

bool Tokens::IsSymbol(const Token& token, char symbol) {
    return token.kind == TokenKind::Symbol && token.text.size() == 1 && token.text.front() == symbol;
}

const Token& Tokens::Take() {
    const Token& taken = mTokens[mIndex];
    if (mIndex + 1 < mTokens.size())
        ++mIndex;
    return taken;
}

bool Tokens::TakeIf(Word word) {
    if (!Is(word))
        return false;
    Take();
    return true;
}

bool Tokens::TakeIf(char symbol) {
    if (!Is(symbol))
        return false;
    Take();
    return true;
}

void Tokens::Expect(Word word, const char* name) {
    if (!TakeIf(word))
        Fail(std::string("missing ") + name, Current().position);
}

void Tokens::Expect(char symbol) {
    if (!TakeIf(symbol))
        Fail(std::string("missing ") + symbol, Current().position);
}

void Tokens::FailHere() const {
    Fail(AtEnd() ? "it ends too early" : "a word or sign that does not belong here", Current().position);
}

void Tokens::Fail(const std::string& complaint, std::size_t position) const {
    constexpr std::size_t kBefore = 8;
    constexpr std::size_t kQuoted = 28;
    std::size_t begin = position > kBefore ? position - kBefore : 0;
    std::size_t end = std::min(begin + kQuoted, mText.size());
    while (begin < end && IsContinuationByte(mText[begin]))
        ++begin;
    while (end > begin && end < mText.size() && IsContinuationByte(mText[end]))
        --end;
    std::string place(mText.substr(begin, end - begin));
    // The place is shown in a box, as one line.
    std::replace_if(
        place.begin(), place.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    throw RunTimeError(Errors::kDatabase, "Syntax error in query: " + complaint + ", near \"" + place + "\"");
}

std::string Unquoted(const Token& text) {
    std::string result;
    result.reserve(text.text.size());
    for (std::size_t i = 0; i < text.text.size(); ++i) {
        result += text.text[i];
        if (text.text[i] == text.delimiter)
            ++i;
    }
    return result;
}

} // namespace Access
