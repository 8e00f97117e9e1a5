// SPDX-License-Identifier: GPL-3.0-or-later
// A report document: what a `.rpt` file says. It names the table that the report is poured from, the fields
// of that table in order, and the sections with what they print. A document holds no data; many reports may
// be made from one.
//
// Horizontal places are in percent of the printable width, so one document fits A4 and Letter. Sections are
// stacks of lines; a line is as high as the highest of its objects, so wrapped text moves down what follows.
#pragma once

#include "platform/report/Formula.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace report {

/// What an object of a section is. The numbers are those that callers test for.
enum class Kind { Field = 1, Text = 2, Rule = 3, Chart = 4, Subreport = 5 };

enum class Alignment { Left, Center, Right };

/// What becomes of a text that is wider than its object.
enum class Overflow { Wrap, Cut };

/// Colours are whole 24-bit values with red in the low byte; kTextColor is the paper's own black.
constexpr std::uint32_t kTextColor = 0;

struct TextStyle {
    /// Points.
    double size = 9;
    bool isBold = false;
    bool isItalic = false;
    std::uint32_t color = kTextColor;

    friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// How a value reads. Null is always empty.
struct Format {
    enum class Kind {
        /// Numbers in decimal, flags as "True" and "False".
        General,
        /// A stored date through "0000-00-00"; any other text unchanged.
        Date,
        /// Flags as "Yes" and "No".
        YesNo,
        /// Numbers with "," between thousands, divided by `divisor`, with `decimals` places, then `suffix`.
        Number,
    };
    Kind kind = Kind::General;
    double divisor = 1;
    int decimals = 0;
    std::string suffix;
};

/// The names that documents have for formats.
std::vector<std::string_view> FormatNames();

/// The format that documents call `name`; nothing where there is none.
std::optional<Format> FindFormat(std::string_view name);

/// The text of `value` under `format`. `isFlag` says that a number comes from a column of flags.
std::string FormatValue(const Format& format, const ADODB::Value& value, bool isFlag);

/// What FormatValue makes of `value`, as a value that still sorts: equal for two values that read alike,
/// letters' case aside. Texts that show nothing are Null; numbers are rounded as they are shown.
ADODB::Value ShownValue(const Format& format, const ADODB::Value& value, bool isFlag);

/// How groups and slices without a name are called.
constexpr const char* kNoName = "(none)";

/// What a field object shows.
struct Source {
    enum class Kind {
        Field,
        Formula,
        PageNumber,
        PageCount,
        PrintDate,
        /// Rows, or the sum of a field over the rows, of the group that the section closes; of the report
        /// elsewhere. Stands in group and report footers alone, since it is known only there.
        Count,
        Sum,
        /// The rows of the group that the section closes, over those of the report: 0 to 1. In group footers.
        Share,
    };
    Kind kind = Kind::Field;
    /// Field or formula, from 0; the summed field for Sum.
    std::size_t index = 0;
};

struct ObjectDefinition {
    Kind kind = Kind::Text;
    /// Unique in the document; made up ("Text3") where the file gives none.
    std::string name;
    /// Percent of the printable width.
    double left = 0;
    double width = 100;
    Alignment alignment = Alignment::Left;
    Overflow overflow = Overflow::Wrap;
    TextStyle style;
    /// Of a text object: its text. Of a chart: what its values are, the field's name where the file gives
    /// none.
    std::string text;
    /// Of a field object. `prefix` and `suffix` stand around the value; they go with an empty one.
    Source source;
    Format format;
    std::string prefix;
    std::string suffix;
    /// Of a subreport object: where its document comes from, and the fields that join it: rows of the
    /// subreport whose `childField` equals the main row's `parentField`, without regard to case. The child's
    /// field is known by its reference ("{PC.COMPUTERNAME}") until the report has both documents. Such an
    /// object stands in the detail section, alone in its line.
    std::string documentName;
    std::size_t parentField = 0;
    std::string childReference;
    std::size_t childField = 0;
    /// Of a chart object: a pie of how the rows divide over the values of this field, `height` points high.
    /// Stands in the report's header or footer.
    std::size_t chartField = 0;
    double height = 0;
};

struct Line {
    /// Points of empty space above.
    double spaceBefore = 0;
    /// A grey ground under the whole line, for captions of columns and groups.
    bool isShaded = false;
    std::vector<ObjectDefinition> objects;
};

enum class SectionKind {
    ReportHeader,
    PageHeader,
    GroupHeader,
    Detail,
    GroupFooter,
    ReportFooter,
    PageFooter
};

struct Section {
    SectionKind kind = SectionKind::Detail;
    /// The group's level from 0, for group headers and footers.
    std::size_t group = 0;
    /// "Section1", "Section2" … in the document's order where the file gives none.
    std::string name;
    bool startsNewPage = false;
    std::vector<Line> lines;
};

enum class SortOrder {
    /// As the rows come: a group ends where the value changes.
    AsRead,
    Ascending,
    Descending,
};

struct Group {
    /// A field of the table, from 0.
    std::size_t field = 0;
    SortOrder order = SortOrder::Ascending;
    /// How the group's value reads in the group tree. Rows whose values read alike are one group.
    Format format;
    /// Whether the field is one of flags.
    bool isFlag = false;
    /// Whether its header stands again on each page that the group goes on to.
    bool repeatsHeader = true;
    /// Whether a group that fits on one page is not broken.
    bool keepsTogether = false;
};

struct Document {
    std::string title;
    std::string tableName;
    std::vector<FieldDefinition> fields;
    std::vector<NamedFormula> formulas;
    /// Rows for which this is not true are left out; every row where there is none.
    std::optional<Formula> selection;
    bool isLandscape = false;
    /// In order: report header, page header, group headers from the outermost, detail, group footers from the
    /// innermost, report footer, page footer. Sections that the file leaves out are there, without lines.
    std::vector<Section> sections;
    std::vector<Group> groups;
};

/// Reads a document. Raises error -1 with `name`, the line, and the cause for a malformed one: text that is
/// no TOML, unknown keys, names that stand for nothing, places outside of the width, formulas that do not
/// parse, lists beyond reason (see the limits in the source).
Document ParseDocument(std::string_view text, const std::string& name);

} // namespace report
