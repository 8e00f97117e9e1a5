// SPDX-License-Identifier: GPL-3.0-or-later
// Formulas of report documents: computed fields and the selection of records.
//
//   {Table.Field} {@Formula} 12.5 "text" 'text' true false null
//   + - * / & = <> < <= > >= not and or     if … then … else …
//   Abs Round Val IsNull Exact Len Trim UCase LCase Left Right Mid InStr Replace Text
//
// `=` and `<>` always answer: Null equals Null alone, so `<>` holds where exactly one side is Null. Any other
// comparison with Null is Null, as is arithmetic on Null and on text that is no number; a Null condition is
// not true; `&` takes Null as "". Texts compare without regard to the case of ASCII letters, unless the
// formula is made to compare them exactly; Exact(a, b) always compares to the byte. A number and a text
// compare as numbers where the text is a number, else as texts. Division by zero and overflow are Null.
// Positions count characters from 1; Round goes half to even, to 0 places where it has no second argument.
// Replace(text, sought, other) takes what it finds in any case. Text(value, "megabytes") formats as an object
// of that format does.
#pragma once

#include "platform/adodb.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace report {

/// The number of errors in documents and formulas.
constexpr int kMalformed = -1;

struct FieldDefinition {
    enum class Type { Text, Number, Boolean };
    std::string name;
    Type type = Type::Text;
    /// Characters, for texts.
    int width = 0;

    bool IsFlag() const { return type == Type::Boolean; }
};

/// The field that a reference such as "{PC.RAM}" names, without regard to case; nothing where it names none.
std::optional<std::size_t> FindField(std::string_view reference, std::string_view tableName,
                                     std::span<const FieldDefinition> fields);

/// How the comparisons that a formula spells out take texts: without regard to the case of ASCII letters, or
/// to the byte.
enum class TextComparison : std::uint8_t { NoCase, Exact };

class Formula {
public:
    /// Parses `text` against a table's fields and the formulas that stand before it. Raises error -1 with the
    /// position (from 1) and what was expected. More than 4,096 bytes, 64 levels of nesting or 2,000 steps to
    /// a value, each with those of the formulas that it uses, are refused.
    Formula(std::string_view text, std::string_view tableName, std::span<const FieldDefinition> fields,
            std::span<const struct NamedFormula> formulas,
            TextComparison comparison = TextComparison::NoCase);

    /// The value for one row, whose values stand in the order of the fields. Never raises.
    ADODB::Value Evaluate(std::span<const ADODB::Value> row) const;
    /// Whether the value is a number other than 0.
    bool IsTrue(std::span<const ADODB::Value> row) const;
    /// Steps to a value, with those of the formulas that it uses.
    int Cost() const;
    /// Whether its values are flags, to be shown as such.
    bool IsFlag() const;

    struct Node;

private:
    std::shared_ptr<const Node> mRoot;
};

struct NamedFormula {
    std::string name;
    Formula formula;
};

} // namespace report
