// SPDX-License-Identifier: GPL-3.0-or-later
// Formulas of report documents: computed fields and the selection of records.
//
//   {Table.Field} {@Formula} 12.5 "text" 'text' true false null
//   + - * / & = <> < <= > >= not and or     if … then … else …
//   Abs Len Trim UCase LCase Left Right Mid InStr Val Text IsNull Round
//
// A comparison with Null is Null, and a Null condition is not true; `&` takes Null as "", arithmetic on Null
// is Null. Texts compare without regard to the case of ASCII letters; Exact(a, b) compares to the byte. A
// number and a text compare as numbers where the text is a number, else as texts. Division by zero is Null.
#pragma once

#include "platform/adodb.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace report {

struct FieldDefinition {
    enum class Type { Text, Number, Boolean };
    std::string name;
    Type type = Type::Text;
    /// Characters, for texts.
    int width = 0;
};

class Formula {
public:
    /// Parses `text` against a table's fields and the formulas that stand before it. Raises error -1 with the
    /// position (from 1) and what was expected; nesting beyond 64 levels is refused.
    Formula(std::string_view text, std::string_view tableName, std::span<const FieldDefinition> fields,
            std::span<const struct NamedFormula> formulas);

    /// The value for one row, whose values stand in the order of the fields. Never raises.
    ADODB::Value Evaluate(std::span<const ADODB::Value> row) const;
    /// Whether the value is a number other than 0.
    bool IsTrue(std::span<const ADODB::Value> row) const;

    struct Node;

private:
    std::shared_ptr<const Node> mRoot;
};

struct NamedFormula {
    std::string name;
    Formula formula;
};

} // namespace report
