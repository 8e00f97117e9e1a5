// SPDX-License-Identifier: GPL-3.0-or-later
// A report's sections prepared for one width of paper: where each object stands, and how high a line is as
// far as that does not depend on the row. Internal to the layout.
//
// A line of a section is made of strips, one per line of text in it: a strip is what a page break can not
// divide. Texts of a strip share a baseline, whatever their sizes.
#pragma once

#include "platform/report/Report.h"
#include "platform/report/TextFitter.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace report {

struct Strip {
    /// Empty space above, then the room above and below the baseline.
    double space = 0;
    double ascent = 0;
    double descent = 0;

    double Height() const { return space + ascent + descent; }
    void Hold(const FittedStyle& style);
};

struct CellPlan {
    const ObjectDefinition* object = nullptr;
    /// Points from the left of the report's own width.
    double left = 0;
    double width = 0;
    /// The style that breaks its text, of field and text objects; null for others.
    const FittedStyle* style = nullptr;
    /// Whether it takes one line or more by the row.
    bool isVariable = false;
    /// Its place among the section's field and text objects, as format events count them.
    std::size_t formatPlace = 0;
};

struct ReportPlan;

struct LinePlan {
    const Line* line = nullptr;
    std::vector<CellPlan> cells;
    /// One at least; a row with longer texts takes more.
    std::vector<Strip> strips;
    bool isVariable = false;
    /// Of a subreport's line, which takes the strips of the subreport's rows and has none of its own.
    const ObjectDefinition* subreport = nullptr;
    std::unique_ptr<ReportPlan> plan;

    /// The strips for `row`.
    void StripsOf(const Report& report, const Row& row, std::vector<Strip>& rowStrips) const;
};

struct SectionPlan {
    const Section* section = nullptr;
    std::vector<LinePlan> lines;
    const FormatEvent* event = nullptr;
};

struct ReportPlan {
    /// `width` is what objects' places are percents of, `left` its distance from the paper's edge.
    ReportPlan(const Report& source, const TextFitter& fitter, double left, double width);

    const Report& report;
    const TextFitter& fitter;
    double left;
    double width;
    SectionPlan reportHeader;
    SectionPlan pageHeader;
    std::vector<SectionPlan> groupHeaders;
    SectionPlan detail;
    std::vector<SectionPlan> groupFooters;
    SectionPlan reportFooter;
    SectionPlan pageFooter;
    /// Fields that some object sums, and fields that some chart divides the rows by, each once.
    std::vector<std::size_t> sumFields;
    std::vector<std::size_t> chartFields;

    std::size_t Levels() const { return groupHeaders.size(); }
    /// The outermost group level in which two rows that follow each other differ; Levels() where none.
    std::size_t FirstDifference(const Row& a, const Row& b) const;

private:
    SectionPlan Prepare(const Section& section);
    LinePlan PrepareLine(const Line& line, bool isBold, std::size_t& formatPlace);
};

} // namespace report
