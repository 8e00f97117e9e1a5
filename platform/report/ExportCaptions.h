// SPDX-License-Identifier: GPL-3.0-or-later
// The columns that a document makes when it is shown as a table, and their captions: a document places
// captions and values by themselves, so what belongs together is found by the places.
#pragma once

#include "platform/report/Report.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace report {

struct ShownColumn {
    /// A field object, or a text object that is no caption.
    const ObjectDefinition* object = nullptr;
    std::string caption;
    /// Position among the section's field and text objects, as its format event counts them.
    std::size_t place = 0;
};

class ShownColumns {
public:
    explicit ShownColumns(const Report& report);

    /// The section that makes the table's rows: the details, or in a document that counts groups and shows no
    /// details the innermost group's footer.
    const Section& Rows() const { return *mRows; }
    const std::vector<ShownColumn>& Columns() const { return mColumns; }
    /// Whether every value has its label beside it, so that a row reads as a list of labels and values.
    bool IsLabelled() const { return mIsLabelled; }
    /// Whether a line of a header holds captions of the columns, and nothing else.
    bool IsCaptionLine(const Line& line) const { return mCaptionLines.contains(&line); }
    /// The column that an object of a footer stands below; the first where it stands below none.
    std::size_t ColumnAt(const ObjectDefinition& object) const;

private:
    const Section* mRows;
    std::vector<ShownColumn> mColumns;
    std::set<const Line*> mCaptionLines;
    bool mIsLabelled = false;
};

/// The section of that kind, and of that group where it belongs to one.
const Section& SectionOf(const Document& document, SectionKind kind, std::size_t group = 0);

} // namespace report
