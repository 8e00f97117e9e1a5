// SPDX-License-Identifier: GPL-3.0-or-later
// The translator behind TranslateAccessSQL: one descent over the tokens that writes SQLite's text as it goes.
// What turns out to be a function's argument only when its operator is met gets the function's name inserted
// ahead of it. Names are written in brackets, which SQLite never takes for texts as it does double quotes.
//
// Statements are in accesssql.cpp, operators in accessoperators.cpp, their operands in accessexpression.cpp.
#pragma once

#include "platform/accessfunctions.h"
#include "platform/accesssql.h"
#include "platform/accesstokens.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Access {

class Translator {
public:
    explicit Translator(std::string_view statement);
    TranslatedSQL Run();

private:
    enum class Shape { Other, Column, Literal, Subquery };

    /// An expression that was written from `start` to the end of the text.
    struct Operand {
        std::size_t start = 0;
        ValueKind kind = ValueKind::Unknown;
        Shape shape = Shape::Other;
        /// Of a literal, with the sign that stood ahead of it.
        const Token* literal = nullptr;
        bool isNegative = false;
    };

    /// One SELECT of a query: what decides how it can be joined to others and whether its rows can be
    /// updated.
    struct Member {
        std::size_t start = 0;
        /// The number behind TOP.
        std::string_view top;
        bool isParenthesised = false;
        /// The one table of a plain SELECT *.
        std::string_view table;
        bool isPlain = true;
    };

    /// Counts the nesting while it lives, so that the descent cannot exhaust the stack.
    class Nesting {
    public:
        explicit Nesting(Translator& translator);
        ~Nesting() { --mDepth; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        int& mDepth;
    };

    /// While it lives, literals are lifted as far as the surroundings allow (true), or none is within
    /// (false).
    class Lifting {
    public:
        Lifting(Translator& translator, bool isWanted);
        ~Lifting();
        Lifting(const Lifting&) = delete;
        Lifting& operator=(const Lifting&) = delete;

    private:
        Translator& mTranslator;
        bool mMayLift;
        bool mIsLifting;
    };

    void Statement();
    void Definition();
    void InsertStatement();
    void UpdateStatement();
    void DeleteStatement();

    Member Query();
    void Wrap(const Member& member);
    Member ReadMember();
    void SelectList(Member& member);
    void SelectItem(std::size_t position, Member& member);
    void From(Member& member);
    void JoinedTables(Member& member);
    void TableSource(Member& member);
    bool Alias();
    void Where();
    void GroupBy(Member& member);
    void SortTerm(bool isOrder);
    std::string_view Name();

    /// An expression of the operators that bind at least as tightly as `leastLevel`.
    Operand Expression(int leastLevel);
    /// A whole expression whose value is wanted: a condition becomes -1 or 0.
    Operand Value();
    /// A whole expression as it stands: a condition remains one.
    Operand Condition();
    int OperatorLevel() const;
    Operand Prefix();
    Operand Sign();
    Operand Primary();
    Operand WordPrimary();
    Operand Column();
    Operand Literal();
    Operand Parenthesised();

    Operand FunctionCall();
    bool SpecialForm(Operand& result);
    ValueKind IIf();
    void Switch();
    void Choose();
    void Nz();

    Operand Infix(Operand left, int level);
    Operand Logical(const Operand& left, std::string_view word, int level);
    Operand Comparison(Operand left);
    Operand Between(const Operand& left, bool isNegated);
    Operand In(const Operand& left, bool isNegated);
    Operand Like(const Operand& left, bool isNegated);
    Operand Concatenation(Operand left);
    Operand Sum(Operand left);
    Operand Product(Operand left);
    Operand FunctionOperator(Operand left, std::string_view function, int level);

    void MakeValue(Operand& operand);
    bool Lift(const Operand& literal);
    /// The text that a text or date literal stands for.
    std::string LiteralText(const Token& token) const;
    static bool IsCaseOpen(const Operand& operand);

    void Put(std::string_view text) { mOut.sql += text; }
    void PutName(std::string_view name);
    void PutText(const Token& token);
    void PutNegative(std::string_view number);
    std::size_t End() const { return mOut.sql.size(); }
    void InsertAt(std::size_t position, std::string_view text) { mOut.sql.insert(position, text); }

    Tokens mTokens;
    TranslatedSQL mOut;
    int mDepth = 0;
    bool mMayLift = true;
    bool mIsLifting = false;
};

/// Comparing, grouping and sorting go by this where no column lends its own collation.
constexpr std::string_view kCaseless = " COLLATE NOCASE";

} // namespace Access
