// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/accesssql.h"

#include "platform/accesstranslator.h"
#include "platform/errors.h"
#include "platform/text.h"

namespace Access {

Translator::Translator(std::string_view statement) : mTokens(statement) {
    mOut.sql.reserve(statement.size() + statement.size() / 4 + 32);
}

Translator::Nesting::Nesting(Translator& translator) : mDepth(translator.mDepth) {
    constexpr int kDeepest = 200;
    if (++mDepth > kDeepest)
        translator.mTokens.Fail("it is nested too deeply", translator.mTokens.Current().position);
}

Translator::Lifting::Lifting(Translator& translator, bool isWanted)
    : mTranslator(translator), mMayLift(translator.mMayLift), mIsLifting(translator.mIsLifting) {
    translator.mIsLifting = isWanted && mMayLift;
    translator.mMayLift = isWanted && mMayLift;
}

Translator::Lifting::~Lifting() {
    mTranslator.mMayLift = mMayLift;
    mTranslator.mIsLifting = mIsLifting;
}

TranslatedSQL Translator::Run() {
    Statement();
    while (mTokens.TakeIf(';')) {
    }
    if (!mTokens.AtEnd())
        mTokens.FailHere();
    return std::move(mOut);
}

void Translator::Statement() {
    switch (mTokens.Current().word) {
        case Word::Insert:
            return InsertStatement();
        case Word::Update:
            return UpdateStatement();
        case Word::Delete:
            return DeleteStatement();
        case Word::Create:
        case Word::Drop:
        case Word::Alter:
            return Definition();
        default:
            break;
    }
    if (!mTokens.Is(Word::Select) && !mTokens.Is('('))
        mTokens.Fail("a statement begins with SELECT, INSERT, UPDATE, DELETE, CREATE, DROP or ALTER",
                     mTokens.Current().position);
    const Member query = Query();
    if (query.isPlain)
        mOut.updatableTable = query.table;
}

/// Definitions have SQLite's grammar already; only names and literals are spelled anew.
void Translator::Definition() {
    bool isDefault = false;
    bool isBehindPoint = true;
    while (!mTokens.AtEnd() && !mTokens.Is(';')) {
        const bool isPoint = mTokens.Is('.');
        if (!isPoint && !isBehindPoint)
            Put(" ");
        if (mTokens.Is(Word::Select)) {
            const Lifting none(*this, false);
            Query();
            return;
        }
        const Token& token = mTokens.Take();
        const bool isTrue = token.word == Word::True || token.word == Word::Yes || token.word == Word::On;
        const bool isFalse = token.word == Word::False || token.word == Word::No || token.word == Word::Off;
        if (token.kind == TokenKind::Bracketed)
            PutName(token.text);
        else if (token.kind == TokenKind::Text || token.kind == TokenKind::Date)
            PutText(token);
        else if (isDefault && (isTrue || isFalse))
            Put(isTrue ? "-1" : "0");
        else
            Put(token.text);
        isDefault = token.kind == TokenKind::Word && EqualNoCase(token.text, "DEFAULT");
        isBehindPoint = isPoint;
    }
}

void Translator::InsertStatement() {
    mTokens.Take();
    mTokens.Expect(Word::Into, "INTO");
    Put("INSERT INTO ");
    PutName(Name());
    if (mTokens.Is('(') && mTokens.Ahead(1).word != Word::Select) {
        mTokens.Take();
        Put(" (");
        PutName(Name());
        while (mTokens.TakeIf(',')) {
            Put(", ");
            PutName(Name());
        }
        mTokens.Expect(')');
        Put(")");
    }
    const Lifting none(*this, false);
    if (!mTokens.TakeIf(Word::Values)) {
        Put(" ");
        Query();
        return;
    }
    mTokens.Expect('(');
    Put(" VALUES (");
    Value();
    while (mTokens.TakeIf(',')) {
        Put(", ");
        Value();
    }
    mTokens.Expect(')');
    Put(")");
}

void Translator::UpdateStatement() {
    mTokens.Take();
    Put("UPDATE ");
    PutName(Name());
    Alias();
    mTokens.Expect(Word::Set, "SET");
    Put(" SET ");
    bool isFirst = true;
    do {
        const Lifting none(*this, false);
        if (!isFirst)
            Put(", ");
        isFirst = false;
        // SQLite takes no table's name here, and there is only one table that could be meant.
        std::string_view column = Name();
        if (mTokens.TakeIf('.') || mTokens.TakeIf('!'))
            column = Name();
        PutName(column);
        mTokens.Expect('=');
        Put(" = ");
        Value();
    } while (mTokens.TakeIf(','));
    Where();
}

void Translator::DeleteStatement() {
    mTokens.Take();
    if (!mTokens.TakeIf('*') && !mTokens.Is(Word::From)) {
        Name();
        mTokens.Expect('.');
        mTokens.Expect('*');
    }
    mTokens.Expect(Word::From, "FROM");
    Put("DELETE FROM ");
    PutName(Name());
    Alias();
    Where();
}

Translator::Member Translator::Query() {
    const Nesting nesting(*this);
    Member query = ReadMember();
    bool isUnion = false;
    while (mTokens.TakeIf(Word::Union)) {
        if (!isUnion)
            Wrap(query);
        isUnion = true;
        Put(mTokens.TakeIf(Word::All) ? " UNION ALL " : " UNION ");
        Wrap(ReadMember());
    }
    const bool isOrdered = mTokens.TakeIf(Word::Order);
    if (isOrdered) {
        if (query.isParenthesised && !isUnion)
            Wrap(query);
        const Lifting none(*this, false);
        mTokens.Expect(Word::By, "BY");
        Put(" ORDER BY ");
        SortTerm(true);
        while (mTokens.TakeIf(',')) {
            Put(", ");
            SortTerm(true);
        }
    }
    if (!query.top.empty() && !isUnion) {
        Put(" LIMIT ");
        Put(query.top);
    }
    query.isPlain = query.isPlain && !isUnion && !isOrdered && !query.isParenthesised;
    return query;
}

/// A member of a union can have no limit of its own in SQLite, and no parentheses, unless it is wrapped.
void Translator::Wrap(const Member& member) {
    if (member.top.empty() && !member.isParenthesised)
        return;
    InsertAt(member.start, "SELECT * FROM (");
    if (!member.top.empty()) {
        Put(" LIMIT ");
        Put(member.top);
    }
    Put(")");
}

Translator::Member Translator::ReadMember() {
    Member member;
    member.start = End();
    if (mTokens.TakeIf('(')) {
        Query();
        mTokens.Expect(')');
        member.isParenthesised = true;
        return member;
    }
    mTokens.Expect(Word::Select, "SELECT");
    Put("SELECT ");
    if (mTokens.TakeIf(Word::Distinct)) {
        Put("DISTINCT ");
        member.isPlain = false;
    } else if (!mTokens.TakeIf(Word::All)) {
        // Tells updatable joins apart in the desktop database; the rows are those of a SELECT without it.
        mTokens.TakeIf(Word::DistinctRow);
    }
    if (mTokens.TakeIf(Word::Top)) {
        const Token& count = mTokens.Take();
        if (count.kind != TokenKind::Number ||
            count.text.find_first_not_of("0123456789") != std::string::npos)
            mTokens.Fail("TOP wants a whole number", count.position);
        if (mTokens.Is(Word::Percent))
            mTokens.Fail("TOP … PERCENT is not known", count.position);
        member.top = count.text;
        member.isPlain = false;
    }
    SelectList(member);
    if (mTokens.Is(Word::From))
        From(member);
    else
        member.isPlain = false;
    Where();
    GroupBy(member);
    return member;
}

void Translator::SelectList(Member& member) {
    const Lifting none(*this, false);
    std::size_t position = 0;
    SelectItem(position, member);
    while (mTokens.TakeIf(',')) {
        Put(", ");
        SelectItem(++position, member);
        member.isPlain = false;
    }
}

void Translator::SelectItem(std::size_t position, Member& member) {
    if (mTokens.TakeIf('*'))
        return Put("*");
    member.isPlain = false;
    if (Tokens::IsSymbol(mTokens.Ahead(1), '.') && Tokens::IsSymbol(mTokens.Ahead(2), '*')) {
        PutName(Name());
        mTokens.Take();
        mTokens.Take();
        return Put(".*");
    }
    const Operand item = Value();
    // A subquery keeps the declared type of its column only when it stands alone.
    if (item.shape != Shape::Subquery && IsCaseOpen(item))
        Put(kCaseless);
    if (mTokens.TakeIf(Word::As)) {
        Put(" AS ");
        PutName(Name());
    } else if (item.shape != Shape::Column) {
        // The name that the desktop database gives to a column without one.
        Put(" AS [Expr" + std::to_string(1000 + position) + "]");
    }
}

void Translator::From(Member& member) {
    mTokens.Take();
    Put(" FROM ");
    JoinedTables(member);
    while (mTokens.TakeIf(',')) {
        member.isPlain = false;
        Put(" CROSS JOIN ");
        JoinedTables(member);
    }
}

void Translator::JoinedTables(Member& member) {
    TableSource(member);
    for (;;) {
        std::string_view join;
        if (mTokens.TakeIf(Word::Inner)) {
            // SQLite reads the tables of a CROSS JOIN in the order in which they are written.
            join = " CROSS JOIN ";
        } else if (mTokens.TakeIf(Word::Left)) {
            join = " LEFT JOIN ";
            mTokens.TakeIf(Word::Outer);
        } else if (mTokens.TakeIf(Word::Right)) {
            join = " RIGHT JOIN ";
            mTokens.TakeIf(Word::Outer);
        } else {
            return;
        }
        member.isPlain = false;
        mTokens.Expect(Word::Join, "JOIN");
        Put(join);
        TableSource(member);
        mTokens.Expect(Word::On, "ON");
        Put(" ON ");
        const Lifting none(*this, false);
        Condition();
    }
}

void Translator::TableSource(Member& member) {
    const Nesting nesting(*this);
    if (!mTokens.Is('(')) {
        member.table = Name();
        PutName(member.table);
        if (Alias())
            member.isPlain = false;
        return;
    }
    member.isPlain = false;
    mTokens.Take();
    Put("(");
    const bool isQuery = mTokens.Is(Word::Select);
    if (isQuery) {
        const Lifting none(*this, false);
        Query();
    } else {
        JoinedTables(member);
    }
    mTokens.Expect(')');
    Put(")");
    if (isQuery)
        Alias();
}

bool Translator::Alias() {
    const bool isNamed = mTokens.TakeIf(Word::As);
    const Token& next = mTokens.Current();
    const bool isName =
        next.kind == TokenKind::Bracketed || (next.kind == TokenKind::Word && next.word == Word::None);
    if (!isNamed && !isName)
        return false;
    Put(" AS ");
    PutName(Name());
    return true;
}

void Translator::Where() {
    if (!mTokens.TakeIf(Word::Where))
        return;
    Put(" WHERE ");
    const Lifting lifting(*this, true);
    Condition();
}

void Translator::GroupBy(Member& member) {
    const Lifting none(*this, false);
    if (mTokens.TakeIf(Word::Group)) {
        mTokens.Expect(Word::By, "BY");
        member.isPlain = false;
        Put(" GROUP BY ");
        SortTerm(false);
        while (mTokens.TakeIf(',')) {
            Put(", ");
            SortTerm(false);
        }
    }
    if (mTokens.TakeIf(Word::Having)) {
        member.isPlain = false;
        Put(" HAVING ");
        Condition();
    }
}

void Translator::SortTerm(bool isOrder) {
    const Operand term = Value();
    if (IsCaseOpen(term))
        Put(kCaseless);
    if (!isOrder)
        return;
    if (mTokens.TakeIf(Word::Desc))
        Put(" DESC");
    else
        mTokens.TakeIf(Word::Asc);
}

std::string_view Translator::Name() {
    const Token& token = mTokens.Current();
    if (token.kind != TokenKind::Bracketed && (token.kind != TokenKind::Word || token.word != Word::None))
        mTokens.FailHere();
    return mTokens.Take().text;
}

void Translator::PutName(std::string_view name) {
    Put("[");
    Put(name);
    Put("]");
}

} // namespace Access

TranslatedSQL TranslateAccessSQL(std::string_view text) {
    return Access::Translator(text).Run();
}

std::string SQLText(std::string_view text) {
    if (text.find_first_of(std::string_view("'\0", 2)) != std::string_view::npos)
        throw RunTimeError(Errors::kDatabase, "Syntax error in query: an apostrophe or a NUL in the name \"" +
                                                  WithoutNuls(text) + "\"");
    std::string quoted;
    quoted.reserve(text.size() + 2);
    quoted += '\'';
    quoted += text;
    quoted += '\'';
    return quoted;
}

bool IsQuery(std::string_view text) {
    try {
        Access::Tokens tokens(text);
        while (tokens.TakeIf('(')) {
        }
        if (!tokens.Is(Access::Word::Select))
            return false;
        while (!tokens.AtEnd() && !tokens.Is(';'))
            tokens.Take();
        while (tokens.TakeIf(';')) {
        }
        return tokens.AtEnd();
    } catch (const RunTimeError&) {
        return false; // what has no tokens is no query, and says so itself when it is run
    }
}
