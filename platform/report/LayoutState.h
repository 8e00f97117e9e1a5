// SPDX-License-Identifier: GPL-3.0-or-later
// How far a layout has come: the pages begun, the rows placed, the groups met. Internal to the layout.
//
// A page is kept as the place where it begins: a row, and a strip of what that row brings. All else about it
// follows from there.
#pragma once

#include "platform/report/GroupIndex.h"
#include "platform/report/GroupNames.h"
#include "platform/report/Layout.h"
#include "platform/report/PageBreaks.h"
#include "platform/report/PageWriter.h"
#include "platform/report/ValueCounts.h"

#include <optional>

namespace report {

struct Layout::Implementation {
    struct PageStart {
        std::uint32_t row = 0;
        std::uint32_t strip = 0;
    };

    Implementation(const Report& source, const PageFormat& paper, const TextMeasure& measure);

    bool Work(std::chrono::milliseconds slice);
    Page BuildPage(std::size_t number) const;
    double TopOf(const GroupEntry& group) const;
    std::size_t PageCount() const;

    const Report& report;
    PageFormat format;
    TextFitter fitter;
    ReportPlan plan;
    std::string printDate;
    bool isComplete = false;

private:
    /// Looks ahead over the rows of groups that are to stay on one page.
    struct Ahead {
        bool isLooking = false;
        std::size_t row = 0;
        std::size_t begins = 0;
        double height = 0;
        Row current;
        Row next;
        std::optional<GroupNames> names;
        /// By level from the outermost that begins: the group's height, once its end is met.
        std::vector<double> heights;
    };

    // Heights of what stands on each page.
    double HeightOf(const SectionPlan& section, const Row& row) const;
    double BodyHeight(std::size_t page, const Row& row) const;
    double RepeatedHeight(const RowStrips& strips, std::size_t strip, double body,
                          const std::vector<double>& headers) const;

    // Placing rows, in the order of the calls.
    bool PlaceNext();
    bool LoadRows();
    bool WantsToLookAhead() const;
    void BeginLookingAhead();
    bool LookAhead();
    bool KeepsOnNewPage() const;
    void PlaceRow();
    void PlaceStrips(std::size_t begin, std::size_t end);
    void Divide(std::size_t begin, std::size_t end, double page);
    void Take(std::size_t begin, std::size_t end);
    void NewPage(std::size_t strip);
    double NewPageRoom(std::size_t strip) const;

    // Building pages.
    PageFacts FactsOf(std::size_t number) const;
    Row FirstRowOf(std::size_t number) const;
    void WriteHead(PageWriter& writer, std::size_t number, const Row& first) const;
    void WriteRepeatedHeaders(PageWriter& writer, std::size_t page, const Row& first) const;
    void WriteRows(PageWriter& writer, PageStart from, PageStart until) const;
    std::size_t NextWithBands(std::size_t row) const;
    RowPlace PlaceOf(std::size_t row, const Row& values, GroupNames& names) const;
    Totals TotalsOf(GroupIndex::Place place) const;
    Totals TotalsOfReport() const;

    /// Whether the report's header stands above the first page's own, or goes before the first row.
    bool mHeaderStandsOnTop = true;
    std::vector<PageStart> mPages;
    /// Heights of the page under work: what is left for rows, and what they have taken.
    double mRoom = 0;
    double mUsed = 0;
    bool mHasRows = false;

    /// The next row to place, its values and those of the row behind it.
    std::size_t mRow = 0;
    std::size_t mBegins = 0;
    Row mValues;
    Row mNext;
    bool mHasValues = false;
    bool mIsReady = false;
    bool mHasPlacedLast = false;
    RowPlace mPlace;
    GroupNames mNames;
    RowStrips mStrips;
    /// The page on which the present row begins.
    std::size_t mRowPage = 0;
    std::vector<double> mHeaderHeights;
    Ahead mAhead;
    bool mHasLookedAhead = false;

    GroupIndex mGroups;
    std::vector<Sum> mNumbers;
    std::vector<Sum> mSums;
    std::vector<ValueCounts> mCharts;

    friend class Layout;
};

} // namespace report
