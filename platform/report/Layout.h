// SPDX-License-Identifier: GPL-3.0-or-later
// Divides a report into pages. The rows' heights are added up once, as they are read; what stands on a page
// is worked out when that page is asked for, from where it starts. It draws nothing.
//
// A group's header never stands last on a page: it goes with the first row behind it. A row is kept whole
// where it fits on a page; the text of a taller one breaks with two lines at least on either side. A group
// that goes on to the next page repeats its header there where the document says so.
#pragma once

#include "platform/report/Page.h"
#include "platform/report/Report.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace report {

/// A branch of the group tree.
struct GroupEntry {
    std::size_t level = 0;
    std::string title;
    std::size_t firstRow = 0;
    std::size_t rowCount = 0;
    /// The page, from 0, on which the group begins.
    std::size_t page = 0;
};

class Layout {
public:
    /// All three must outlive it. What callers set on the report (texts, selection, events) is taken as it
    /// stands.
    Layout(const Report& report, const PageFormat& format, const TextMeasure& measure);
    ~Layout();
    Layout(const Layout&) = delete;
    Layout& operator=(const Layout&) = delete;

    /// Lays out the rows that the report has read, for at most `slice`; true while it is behind the report.
    /// Raises what reading a row raises, and error 7 for pages without end.
    bool Work(std::chrono::milliseconds slice);
    /// Whether the report is complete and all of it is laid out.
    bool IsComplete() const;

    /// Pages that can be built; the last may still grow while it is not complete. An empty report has one.
    std::size_t PageCount() const;
    /// Page `number` from 0. Raises error 9 where there is none. The page count shows as soon as it is known.
    Page BuildPage(std::size_t number) const;
    /// The first row that begins on page `number`, or the one that fills it. 0 in an empty report; raises
    /// error 9 where there is no such page.
    std::size_t FirstRowOf(std::size_t number) const;
    /// The page on which `row` begins; nothing where it is not laid out.
    std::optional<std::size_t> PageOf(std::size_t row) const;

    /// Groups begun so far, outer ones before what is in them.
    std::size_t GroupCount() const;
    GroupEntry Group(std::size_t index) const;
    /// Where a group begins on its page, in points from the paper's upper edge. A group that begins together
    /// with the one around it has that one's place.
    double TopOf(const GroupEntry& group) const;
    /// The level of a group, or its first row; these read no row.
    std::size_t GroupLevel(std::size_t index) const;
    std::size_t GroupFirstRow(std::size_t index) const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> mThis;
};

} // namespace report
