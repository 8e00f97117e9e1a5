// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/accessfunctions.h"

#include "platform/accesscall.h"
#include "platform/codepage.h"
#include "platform/errors.h"
#include "platform/text.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

namespace Access {

namespace {

std::string_view LastCharacters(std::string_view text, std::size_t count) {
    const std::size_t all = CharacterCount(text);
    return all <= count ? text : text.substr(FirstCharacters(text, all - count).size());
}

void Left(Call& call) {
    const std::string text = call.Text(0);
    call.Return(FirstCharacters(text, call.Length(1)));
}

void Right(Call& call) {
    const std::string text = call.Text(0);
    call.Return(LastCharacters(text, call.Length(1)));
}

void Mid(Call& call) {
    const std::string text = call.Text(0);
    const std::size_t start = call.Length(1);
    if (start == 0)
        Raise(Errors::kInvalidCall);
    const std::string_view rest = std::string_view(text).substr(FirstCharacters(text, start - 1).size());
    call.Return(call.Count() > 2 ? FirstCharacters(rest, call.Length(2)) : rest);
}

void Len(Call& call) {
    call.Return(static_cast<std::int64_t>(CharacterCount(call.Text(0))));
}

void UCase(Call& call) {
    call.Return(UpperCase(call.Text(0)));
}

void LCase(Call& call) {
    call.Return(LowerCase(call.Text(0)));
}

void ReturnTrimmed(Call& call, bool isLeft, bool isRight) {
    const std::string text = call.Text(0);
    const std::size_t begin = isLeft ? std::min(text.find_first_not_of(' '), text.size()) : 0;
    const std::size_t end = isRight ? text.find_last_not_of(' ') + 1 : text.size();
    call.Return(std::string_view(text).substr(begin, end > begin ? end - begin : 0));
}

void Trim(Call& call) {
    ReturnTrimmed(call, true, true);
}

void LTrim(Call& call) {
    ReturnTrimmed(call, true, false);
}

void RTrim(Call& call) {
    ReturnTrimmed(call, false, true);
}

/// InStr([start,] text, sought [, compare]): without regard to case, as the database compares, unless compare
/// is 0. Positions count characters from 1.
void InStr(Call& call) {
    const bool hasStart = call.Count() > 2;
    const std::size_t start = hasStart ? call.Length(0) : 1;
    if (start == 0)
        Raise(Errors::kInvalidCall);
    std::string text = call.Text(hasStart ? 1 : 0);
    std::string sought = call.Text(hasStart ? 2 : 1);
    if (call.Count() < 4 || call.Whole(3) != 0) {
        text = LowerCase(text);
        sought = LowerCase(sought);
    }
    if (start > CharacterCount(text) + (sought.empty() ? 0 : 1))
        return call.Return(std::int64_t{0});
    const std::size_t from = FirstCharacters(text, start - 1).size() + 1;
    const std::size_t found = ::InStr(from, text, sought);
    if (found == 0)
        return call.Return(std::int64_t{0});
    call.Return(static_cast<std::int64_t>(CharacterCount(std::string_view(text).substr(0, found - 1)) + 1));
}

/// Without regard to case, as InStr.
void Replace(Call& call) {
    const std::string text = call.Text(0);
    const std::string sought = LowerCase(call.Text(1));
    const std::string replacement = call.Text(2);
    if (sought.empty())
        return call.Return(text);
    const std::string lower = LowerCase(text);
    std::string result;
    std::size_t position = 0;
    for (std::size_t found = lower.find(sought); found != std::string::npos;
         found = lower.find(sought, position)) {
        result.append(text, position, found - position);
        result += replacement;
        CheckLength(result.size());
        position = found + sought.size();
    }
    call.Return(result.append(text, position));
}

/// By the number of a character in the system's code page.
void Chr(Call& call) {
    const std::size_t number = call.Length(0);
    if (number < 1 || number > 255)
        Raise(Errors::kInvalidCall);
    call.Return(CodePage::System().Decode(std::string(1, static_cast<char>(number))));
}

void Asc(Call& call) {
    const std::string text = call.Text(0);
    if (text.empty())
        Raise(Errors::kInvalidCall);
    const std::string byte = CodePage::System().Encode(FirstCharacters(text, 1));
    call.Return(std::int64_t{static_cast<unsigned char>(byte.front())});
}

std::string Repeated(std::string_view piece, std::size_t count) {
    CheckLength(count);
    CheckLength(count * piece.size());
    std::string result;
    result.reserve(count * piece.size());
    for (std::size_t i = 0; i < count; ++i)
        result += piece;
    return result;
}

void Space(Call& call) {
    call.Return(Repeated(" ", call.Length(0)));
}

/// String(count, character): of a longer text the first one counts; a number is a character's code.
void String(Call& call) {
    const std::string character =
        call.IsText(1) ? call.Text(1)
                       : CodePage::System().Decode(std::string(1, static_cast<char>(call.Whole(1))));
    if (character.empty() || character.front() == '\0')
        Raise(Errors::kInvalidCall);
    call.Return(Repeated(FirstCharacters(character, 1), call.Length(0)));
}

void StrReverse(Call& call) {
    const std::string text = call.Text(0);
    std::string result(text.size(), ' ');
    auto end = result.end();
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view character = FirstCharacters(rest, 1);
        end -= static_cast<std::ptrdiff_t>(character.size());
        std::copy(character.begin(), character.end(), end);
        rest.remove_prefix(character.size());
    }
    call.Return(result);
}

void Value(Call& call) {
    call.Return(Val(call.Text(0)));
}

void ToInteger(Call& call) {
    call.Return(std::int64_t{CInt(call.Number(0))});
}

void ToLong(Call& call) {
    call.Return(std::int64_t{call.Whole(0)});
}

void ToDouble(Call& call) {
    call.Return(call.Number(0));
}

void ToText(Call& call) {
    call.Return(call.Text(0));
}

void Int(Call& call) {
    call.Return(std::floor(call.Number(0)));
}

void Fix(Call& call) {
    call.Return(std::trunc(call.Number(0)));
}

void Abs(Call& call) {
    call.Return(std::abs(call.Number(0)));
}

/// Halves to even.
void Round(Call& call) {
    const double number = call.Number(0);
    const std::size_t places = call.Count() > 1 ? call.Length(1) : 0;
    const double scale = std::pow(10.0, static_cast<double>(std::min<std::size_t>(places, 22)));
    const double scaled = number * scale;
    // Beyond 2^52 a double has no fraction left to round.
    call.Return(std::abs(scaled) < 4503599627370496.0 ? std::nearbyint(scaled) / scale : number);
}

/// A pattern with the letters of a date formats dates; any other, numbers. A value that the pattern does not
/// suit comes back unchanged, Null as an empty text. "%" shows hundredths.
void Format(Call& call) {
    if (call.IsNull(0) || call.Count() < 2 || call.IsNull(1))
        return call.Return(call.Text(0));
    const std::string text = call.Text(0);
    const std::string pattern = call.Text(1);
    CheckLength(pattern.size());
    if (pattern == ">")
        return call.Return(UpperCase(text));
    if (pattern == "<")
        return call.Return(LowerCase(text));
    const std::string lower = LowerCase(pattern);
    if (lower.find_first_of("ymdhns") != std::string::npos) {
        const std::optional<Moment> moment = call.Date(0);
        return call.Return(moment ? FormatDate(moment->time, lower) : text);
    }
    double number = 0;
    try {
        number = call.Number(0);
    } catch (const RunTimeError&) {
        return call.Return(text); // not a number, so there is nothing to format
    }
    const bool isPercent = pattern.find('%') != std::string::npos;
    call.Return(FormatNumber(isPercent ? number * 100 : number, pattern));
}

/// The operator "&": Null is an empty text, unless all are Null.
void Concat(Call& call) {
    std::string result;
    bool isNull = true;
    for (int i = 0; i < call.Count(); ++i) {
        isNull = isNull && call.IsNull(i);
        result += call.Text(i);
        CheckLength(result.size());
    }
    if (isNull)
        call.ReturnNull();
    else
        call.Return(result);
}

/// The operator "+": two texts are joined, anything else is added.
void Add(Call& call) {
    if (call.IsText(0) && call.IsText(1))
        call.Return(call.Text(0) + call.Text(1));
    else
        call.Return(call.Number(0) + call.Number(1));
}

void IntegerDivision(Call& call) {
    const std::int64_t divisor = call.BigWhole(1);
    const std::int64_t dividend = call.BigWhole(0);
    if (divisor == 0)
        return call.ReturnNull();
    // The one quotient of 64-bit numbers that has no place in 64 bits.
    if (divisor == -1)
        return call.Return(-static_cast<double>(dividend));
    call.Return(dividend / divisor);
}

void Mod(Call& call) {
    const std::int64_t divisor = call.BigWhole(1);
    const std::int64_t dividend = call.BigWhole(0);
    if (divisor == 0)
        return call.ReturnNull();
    call.Return(divisor == -1 ? std::int64_t{0} : dividend % divisor);
}

void Power(Call& call) {
    const double base = call.Number(0);
    const double exponent = call.Number(1);
    if (base < 0 && exponent != std::trunc(exponent))
        Raise(Errors::kInvalidCall);
    call.Return(std::pow(base, exponent));
}

// True is -1, all bits set, so these work bit by bit.
void Xor(Call& call) {
    call.Return(call.BigWhole(0) ^ call.BigWhole(1));
}

void Eqv(Call& call) {
    call.Return(~(call.BigWhole(0) ^ call.BigWhole(1)));
}

void Imp(Call& call) {
    call.Return(~call.BigWhole(0) | call.BigWhole(1));
}

void Like(Call& call) {
    call.Return(std::int64_t{IsLike(call.Text(0), call.Text(1))});
}

constexpr auto kNumber = ValueKind::Number;
constexpr auto kText = ValueKind::Text;
constexpr auto kDate = ValueKind::Date;
constexpr auto kUnknown = ValueKind::Unknown;
constexpr auto kTruth = ValueKind::Truth;
constexpr int kMostArguments = 127;

constexpr std::array kFunctions = {
    Function{"ABS", "AccessAbs", 1, 1, kNumber, Abs},
    Function{"ASC", "AccessAsc", 1, 1, kNumber, Asc},
    Function{"AVG", "avg", 1, 1, kNumber, nullptr},
    Function{"CDATE", "AccessDateValue", 1, 1, kDate, DateValue},
    Function{"CDBL", "AccessCDbl", 1, 1, kNumber, ToDouble},
    Function{"CHR", "AccessChr", 1, 1, kText, Chr},
    Function{"CINT", "AccessCInt", 1, 1, kNumber, ToInteger},
    Function{"CLNG", "AccessCLng", 1, 1, kNumber, ToLong},
    Function{"COUNT", "count", 1, 1, kNumber, nullptr},
    Function{"CSTR", "AccessCStr", 1, 1, kText, ToText},
    Function{"DATE", "AccessDate", 0, 0, kDate, Date, FunctionTraits::Changing},
    Function{"DATEADD", "AccessDateAdd", 3, 3, kDate, DateAdd},
    Function{"DATEDIFF", "AccessDateDiff", 3, 3, kNumber, DateDiff},
    Function{"DATESERIAL", "AccessDateSerial", 3, 3, kDate, DateSerial},
    Function{"DATEVALUE", "AccessDateValue", 1, 1, kDate, DateValue},
    Function{"DAY", "AccessDay", 1, 1, kNumber, Day},
    Function{"FIRST", "AccessFirst", 1, 1, kUnknown, nullptr},
    Function{"FIX", "AccessFix", 1, 1, kNumber, Fix},
    Function{"FORMAT", "AccessFormat", 1, 2, kText, Format, FunctionTraits::TakesNull},
    Function{"INSTR", "AccessInStr", 2, 4, kNumber, InStr},
    Function{"INT", "AccessInt", 1, 1, kNumber, Int},
    Function{"LAST", "AccessLast", 1, 1, kUnknown, nullptr},
    Function{"LCASE", "AccessLCase", 1, 1, kText, LCase},
    Function{"LEFT", "AccessLeft", 2, 2, kText, Left},
    Function{"LEN", "AccessLen", 1, 1, kNumber, Len},
    Function{"LTRIM", "AccessLTrim", 1, 1, kText, LTrim},
    Function{"MAX", "max", 1, 1, kUnknown, nullptr},
    Function{"MID", "AccessMid", 2, 3, kText, Mid},
    Function{"MIN", "min", 1, 1, kUnknown, nullptr},
    Function{"MONTH", "AccessMonth", 1, 1, kNumber, Month},
    Function{"NOW", "AccessNow", 0, 0, kDate, Now, FunctionTraits::Changing},
    Function{"REPLACE", "AccessReplace", 3, 3, kText, Replace},
    Function{"RIGHT", "AccessRight", 2, 2, kText, Right},
    Function{"ROUND", "AccessRound", 1, 2, kNumber, Round},
    Function{"RTRIM", "AccessRTrim", 1, 1, kText, RTrim},
    Function{"SPACE", "AccessSpace", 1, 1, kText, Space},
    Function{"STRING", "AccessString", 2, 2, kText, String},
    Function{"STRREVERSE", "AccessStrReverse", 1, 1, kText, StrReverse},
    Function{"SUM", "AccessSum", 1, 1, kNumber, nullptr},
    Function{"TIME", "AccessTime", 0, 0, kText, Time, FunctionTraits::Changing},
    Function{"TRIM", "AccessTrim", 1, 1, kText, Trim},
    Function{"UCASE", "AccessUCase", 1, 1, kText, UCase},
    Function{"VAL", "AccessVal", 1, 1, kNumber, Value},
    Function{"YEAR", "AccessYear", 1, 1, kNumber, Year},
    Function{"", "AccessAdd", 2, 2, kUnknown, Add},
    Function{"", "AccessConcat", 2, kMostArguments, kText, Concat, FunctionTraits::TakesNull},
    Function{"", "AccessDateMinus", 2, 2, kUnknown, DateMinus},
    Function{"", "AccessDatePlus", 2, 2, kDate, DatePlus},
    Function{"", "AccessEqv", 2, 2, kNumber, Eqv},
    Function{"", "AccessImp", 2, 2, kNumber, Imp},
    Function{"", "AccessIntegerDivision", 2, 2, kNumber, IntegerDivision},
    Function{"", "AccessLike", 2, 2, kTruth, Like},
    Function{"", "AccessMod", 2, 2, kNumber, Mod},
    Function{"", "AccessPower", 2, 2, kNumber, Power},
    Function{"", "AccessXor", 2, 2, kNumber, Xor},
};

/// No exception may cross the engine's own code.
void Run(sqlite3_context* context, int count, sqlite3_value** values) {
    const auto& function = *static_cast<const Function*>(sqlite3_user_data(context));
    Call call(context, count, values);
    try {
        // The translator counts the arguments. Who else may call has not, and functions read all of theirs.
        if (count < function.leastArguments || count > function.mostArguments)
            Raise(Errors::kInvalidCall);
        if (function.traits != FunctionTraits::TakesNull && call.IsAnyNull())
            call.ReturnNull();
        else
            function.run(call);
    } catch (const RunTimeError& error) {
        sqlite3_result_error(context, error.description.c_str(), -1);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

/// The value of the first or the last row; the engine hands out a zeroed place for the group.
struct Kept {
    sqlite3_value* value;
};

void KeepFirst(sqlite3_context* context, int /*count*/, sqlite3_value** values) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, sizeof(Kept)));
    if (kept != nullptr && kept->value == nullptr)
        kept->value = sqlite3_value_dup(values[0]);
}

void KeepLast(sqlite3_context* context, int /*count*/, sqlite3_value** values) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, sizeof(Kept)));
    if (kept == nullptr)
        return;
    sqlite3_value_free(kept->value);
    kept->value = sqlite3_value_dup(values[0]);
}

void ReturnKept(sqlite3_context* context) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, 0));
    if (kept == nullptr || kept->value == nullptr)
        return sqlite3_result_null(context);
    sqlite3_result_value(context, kept->value);
    sqlite3_value_free(kept->value);
    kept->value = nullptr;
}

/// The engine's own sum fails when it leaves 64 bits; this one goes on as a double, so that no PC can break a
/// report by the size of its drives.
struct Total {
    std::int64_t exact;
    double rounded;
    bool isRounded;
    bool hasRows;
};

void AddToTotal(sqlite3_context* context, int /*count*/, sqlite3_value** values) {
    auto* total = static_cast<Total*>(sqlite3_aggregate_context(context, sizeof(Total)));
    const int type = sqlite3_value_numeric_type(values[0]);
    if (total == nullptr || type == SQLITE_NULL)
        return;
    total->hasRows = true;
    total->rounded += sqlite3_value_double(values[0]);
    if (type != SQLITE_INTEGER ||
        __builtin_add_overflow(total->exact, sqlite3_value_int64(values[0]), &total->exact))
        total->isRounded = true;
}

void ReturnTotal(sqlite3_context* context) {
    const auto* total = static_cast<Total*>(sqlite3_aggregate_context(context, 0));
    if (total == nullptr || !total->hasRows)
        sqlite3_result_null(context);
    else if (total->isRounded)
        sqlite3_result_double(context, total->rounded);
    else
        sqlite3_result_int64(context, total->exact);
}

// For the whole process, before it opens a database: a scan of all rows never goes by an index that happens
// to hold all the columns, since its order would not be the order of insertion.
const int gScanOrder = sqlite3_config(SQLITE_CONFIG_COVERING_INDEX_SCAN, 0);

void RegisterAggregate(sqlite3* db, const char* name, void (*step)(sqlite3_context*, int, sqlite3_value**),
                       void (*finish)(sqlite3_context*)) {
    if (sqlite3_create_function(db, name, 1, SQLITE_UTF8, nullptr, nullptr, step, finish) != SQLITE_OK)
        throw RunTimeError(Errors::kDatabase, sqlite3_errmsg(db));
}

} // namespace

const Function* FindFunction(std::string_view name) {
    if (name.ends_with('$'))
        name.remove_suffix(1);
    const auto* found = std::find_if(kFunctions.begin(), kFunctions.end(), [name](const Function& function) {
        return !function.name.empty() && EqualNoCase(function.name, name);
    });
    return found == kFunctions.end() ? nullptr : found;
}

} // namespace Access

void RegisterAccessFunctions(sqlite3* db) {
    using Access::Function;
    using Access::FunctionTraits;
    if (Access::gScanOrder != SQLITE_OK)
        throw RunTimeError(Errors::kDatabase, "The database engine was in use before its settings were made");
    for (const Function& function : Access::kFunctions) {
        if (function.run == nullptr)
            continue;
        const int flags =
            SQLITE_UTF8 | (function.traits == FunctionTraits::Changing ? 0 : SQLITE_DETERMINISTIC);
        auto* self = const_cast<Function*>(&function);
        if (sqlite3_create_function(db, function.engineName, -1, flags, self, Access::Run, nullptr,
                                    nullptr) != SQLITE_OK)
            throw RunTimeError(Errors::kDatabase, sqlite3_errmsg(db));
    }
    Access::RegisterAggregate(db, "AccessFirst", Access::KeepFirst, Access::ReturnKept);
    Access::RegisterAggregate(db, "AccessLast", Access::KeepLast, Access::ReturnKept);
    Access::RegisterAggregate(db, "AccessSum", Access::AddToTotal, Access::ReturnTotal);
}
