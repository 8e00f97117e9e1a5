// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/Layout.h"

#include "platform/clock.h"
#include "platform/errors.h"
#include "platform/report/LayoutState.h"

#include <algorithm>
#include <limits>

namespace report {

namespace {

using Clock = std::chrono::steady_clock;

/// What no person would ask for: a document whose rows fill pages by the thousand.
constexpr std::size_t kMostPages = 10'000'000;
/// Sums of heights that differ by less are equal.
constexpr double kTolerance = 0.01;
/// The report's header stands on top of the first page where it leaves this much for rows.
constexpr double kLeastRoom = 72;

} // namespace

Layout::Implementation::Implementation(const Report& source, const PageFormat& paper,
                                       const TextMeasure& measure)
    : report(source),
      format(paper),
      fitter(measure),
      plan(source, fitter, paper.leftMargin,
           std::max(paper.width - paper.leftMargin - paper.rightMargin, 0.0)),
      printDate(FormatDate(SystemClock().Now(), "yyyy-mm-dd")),
      mNames(source.Definition()),
      mHeaderHeights(plan.Levels()),
      mGroups(plan.Levels(), plan.sumFields.size()),
      mNumbers(plan.sumFields.size()),
      mSums(plan.sumFields.size()) {
    for (const std::size_t field : plan.chartFields)
        mCharts.emplace_back(report.Definition(), field);
}

double Layout::Implementation::HeightOf(const SectionPlan& section, const Row& row) const {
    double height = 0;
    std::vector<Strip> strips;
    for (const LinePlan& line : section.lines) {
        line.StripsOf(report, row, strips);
        for (const Strip& strip : strips)
            height += strip.Height();
    }
    return height;
}

double Layout::Implementation::BodyHeight(std::size_t page, const Row& row) const {
    double height = format.height - format.topMargin - format.bottomMargin - HeightOf(plan.pageHeader, row) -
                    HeightOf(plan.pageFooter, row);
    if (page == 0 && mHeaderStandsOnTop)
        height -= HeightOf(plan.reportHeader, row);
    return height;
}

/// Of the headers that a page repeats which begins at `strip`: those of groups and that of a subreport.
double Layout::Implementation::RepeatedHeight(const RowStrips& strips, std::size_t strip, double body,
                                              const std::vector<double>& headers) const {
    const RowStrips::SubreportHeader* const subreport = strips.HeaderAt(strip);
    double height = subreport == nullptr ? 0 : subreport->height;
    const std::size_t levels = strips.LevelsAt(strip, plan.Levels());
    for (std::size_t level = 0; level < levels; ++level)
        if (report.Definition().groups[level].repeatsHeader)
            height += headers[level];
    // Headers that would take more than half of the page repeat nowhere.
    return height > body / 2 ? 0 : height;
}

bool Layout::Implementation::Work(std::chrono::milliseconds slice) {
    const auto end = Clock::now() + slice;
    // A document decides how long a row takes, so the clock is looked at behind each.
    do
        if (!PlaceNext())
            return false;
    while (!isComplete && Clock::now() < end);
    return !isComplete;
}

/// Does one step of the work; false where it must wait for the report to read on.
bool Layout::Implementation::PlaceNext() {
    const std::size_t rows = report.RowCount();
    if (mRow == rows && report.IsComplete()) {
        isComplete = true;
        return true;
    }
    if (!LoadRows())
        return false;
    if (!mHasLookedAhead && WantsToLookAhead()) {
        if (!mAhead.isLooking)
            BeginLookingAhead();
        return LookAhead();
    }
    PlaceRow();
    return true;
}

/// Reads the next row and the one behind it, which tells what groups end between them.
bool Layout::Implementation::LoadRows() {
    if (mIsReady)
        return true;
    const std::size_t rows = report.RowCount();
    const bool isLast = mRow + 1 == rows && report.IsComplete();
    if (mRow + 1 >= rows && !isLast)
        return false;
    if (!mHasValues)
        report.ReadRow(mRow, mValues);
    mHasValues = true;
    if (!isLast)
        report.ReadRow(mRow + 1, mNext);
    if (mPages.empty()) {
        mHeaderStandsOnTop = BodyHeight(0, mValues) >= kLeastRoom;
        mPages.push_back({0, 0});
        mRoom = BodyHeight(0, mValues);
    }
    mPlace = {&mValues, mBegins, isLast ? 0 : plan.FirstDifference(mValues, mNext),
              isLast,   nullptr, mRow == 0 && !mHeaderStandsOnTop};
    mIsReady = true;
    return true;
}

bool Layout::Implementation::WantsToLookAhead() const {
    if (!mHasRows)
        return false;
    const std::vector<report::Group>& groups = report.Definition().groups;
    return std::any_of(groups.begin() + static_cast<std::ptrdiff_t>(mPlace.begins), groups.end(),
                       [](const report::Group& group) { return group.keepsTogether; });
}

void Layout::Implementation::BeginLookingAhead() {
    mAhead.isLooking = true;
    mAhead.row = mRow;
    mAhead.begins = mPlace.begins;
    mAhead.height = 0;
    mAhead.current = mValues;
    mAhead.names = mNames;
    mAhead.heights.assign(plan.Levels(), std::numeric_limits<double>::infinity());
}

/// Measures one row further; false where it is not read yet.
bool Layout::Implementation::LookAhead() {
    const std::size_t rows = report.RowCount();
    const bool isLast = mAhead.row + 1 == rows && report.IsComplete();
    if (mAhead.row + 1 >= rows && !isLast)
        return false;
    if (!isLast)
        report.ReadRow(mAhead.row + 1, mAhead.next);
    mAhead.names->Begin(mAhead.begins, mAhead.current);
    const RowPlace place{&mAhead.current,
                         mAhead.begins,
                         isLast ? 0 : plan.FirstDifference(mAhead.current, mAhead.next),
                         false,
                         &mAhead.names->Closing(mAhead.current),
                         false};
    mStrips.Clear();
    FlowRow(plan, place, {}, mStrips);
    mAhead.height += mStrips.Height();
    mAhead.begins = place.ends;
    for (std::size_t level = std::max(place.ends, mPlace.begins); level < plan.Levels(); ++level)
        mAhead.heights[level] = std::min(mAhead.heights[level], mAhead.height);
    std::swap(mAhead.current, mAhead.next);
    ++mAhead.row;
    if (place.ends <= mPlace.begins || mAhead.height > format.height) {
        mAhead.isLooking = false;
        mHasLookedAhead = true;
    }
    return true;
}

/// Whether the outermost group that begins here, and fits on a page at all, has no room on this one.
bool Layout::Implementation::KeepsOnNewPage() const {
    if (!mHasLookedAhead)
        return false;
    const double page = NewPageRoom(0);
    for (std::size_t level = mPlace.begins; level < plan.Levels(); ++level)
        if (report.Definition().groups[level].keepsTogether && mAhead.heights[level] <= page + kTolerance)
            return mAhead.heights[level] > mRoom - mUsed + kTolerance;
    return false;
}

void Layout::Implementation::PlaceRow() {
    for (std::size_t level = mPlace.begins; level < plan.Levels(); ++level)
        mHeaderHeights[level] = HeightOf(plan.groupHeaders[level], mValues);
    std::fill(mNumbers.begin(), mNumbers.end(), Sum());
    AddSums(plan, mValues, mNumbers);
    AddSums(plan, mValues, mSums);
    for (ValueCounts& chart : mCharts)
        chart.Add(mValues);
    mGroups.Begin(mPlace.begins, mRow);
    mGroups.Count(mNumbers);

    mNames.Begin(mPlace.begins, mValues);
    if (mPlace.ends < plan.Levels())
        mPlace.closing = &mNames.Closing(mValues);
    mStrips.Clear();
    FlowRow(plan, mPlace, {}, mStrips);
    bool startsNewPage = plan.detail.section != nullptr && plan.detail.section->startsNewPage;
    for (std::size_t level = mPlace.begins; level < plan.Levels(); ++level)
        startsNewPage |= plan.groupHeaders[level].section->startsNewPage;
    if (mHasRows && (startsNewPage || KeepsOnNewPage()))
        NewPage(0);
    mRowPage = mPages.size() - 1;

    // Footers that begin a page, and a high footer of the report, are placed by themselves.
    std::size_t begin = 0;
    const auto placeUntil = [&](std::size_t end) {
        if (end > begin)
            PlaceStrips(begin, end);
        begin = end;
    };
    for (const RowStrips::Mark& band : mStrips.Bands()) {
        const bool isFooter = !band.isOfSubreport && (band.kind == SectionKind::GroupFooter ||
                                                      band.kind == SectionKind::ReportFooter);
        if (!isFooter)
            continue;
        if (band.startsNewPage) {
            placeUntil(band.firstStrip);
            if (mHasRows)
                NewPage(band.firstStrip);
        } else if (band.kind == SectionKind::ReportFooter && band.height > NewPageRoom(band.firstStrip) / 4) {
            placeUntil(band.firstStrip);
        }
    }
    placeUntil(mStrips.Heights().size());
    mGroups.SetPage(mPlace.begins, mRowPage);

    mBegins = mPlace.ends;
    ++mRow;
    std::swap(mValues, mNext);
    mHasPlacedLast = mPlace.isLast;
    mHasValues = !mPlace.isLast;
    mIsReady = mHasLookedAhead = false;
}

void Layout::Implementation::PlaceStrips(std::size_t begin, std::size_t end) {
    double height = 0;
    for (std::size_t i = begin; i < end; ++i)
        height += mStrips.Heights()[i];
    if (height <= mRoom - mUsed + kTolerance)
        return Take(begin, end);
    const double page = NewPageRoom(begin);
    if (height > page + kTolerance)
        return Divide(begin, end, page);
    NewPage(begin);
    Take(begin, end);
}

/// Places what is too high for any page, from here on.
void Layout::Implementation::Divide(std::size_t begin, std::size_t end, double page) {
    const std::vector<RowStrips::Reluctance> breaks = mStrips.Breaks(page);
    while (begin < end) {
        // The furthest that fits, by how little a break is wanted there.
        std::size_t furthest[RowStrips::kAnywhere + 1] = {begin, begin, begin};
        double height = 0;
        std::size_t at = begin;
        while (at < end && height + mStrips.Heights()[at] <= mRoom - mUsed + kTolerance) {
            height += mStrips.Heights()[at++];
            furthest[at == end ? RowStrips::kFree : breaks[at]] = at;
        }
        std::size_t next = furthest[RowStrips::kFree];
        if (next == begin && !mHasRows)
            // A fresh page must take something, and the last resort is a strip that is higher than the page.
            next = furthest[RowStrips::kBetweenBands] > begin
                       ? furthest[RowStrips::kBetweenBands]
                       : std::max(furthest[RowStrips::kAnywhere], begin + 1);
        if (next > begin)
            Take(begin, next);
        begin = next;
        if (begin < end)
            NewPage(begin);
    }
}

void Layout::Implementation::Take(std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i)
        mUsed += mStrips.Heights()[i];
    if (begin == 0)
        mRowPage = mPages.size() - 1;
    mHasRows = true;
}

double Layout::Implementation::NewPageRoom(std::size_t strip) const {
    const double body = BodyHeight(mPages.size(), mValues);
    return body - RepeatedHeight(mStrips, strip, body, mHeaderHeights);
}

void Layout::Implementation::NewPage(std::size_t strip) {
    if (mPages.size() >= kMostPages)
        throw RunTimeError(Errors::kOutOfMemory, "The report has too many pages");
    mRoom = NewPageRoom(strip);
    mUsed = 0;
    mHasRows = false;
    mPages.push_back({static_cast<std::uint32_t>(mRow), static_cast<std::uint32_t>(strip)});
}

std::size_t Layout::Implementation::PageCount() const {
    return isComplete ? std::max<std::size_t>(mPages.size(), 1) : mPages.size();
}

Layout::Layout(const Report& report, const PageFormat& format, const TextMeasure& measure)
    : mThis(std::make_unique<Implementation>(report, format, measure)) {}

Layout::~Layout() = default;

bool Layout::Work(std::chrono::milliseconds slice) {
    return mThis->Work(slice);
}

bool Layout::IsComplete() const {
    return mThis->isComplete;
}

std::size_t Layout::PageCount() const {
    return mThis->PageCount();
}

double Layout::TopOf(const GroupEntry& group) const {
    return mThis->TopOf(group);
}

Page Layout::BuildPage(std::size_t number) const {
    return mThis->BuildPage(number);
}

std::size_t Layout::FirstRowOf(std::size_t number) const {
    if (number >= PageCount())
        Raise(Errors::kOutOfRange, std::to_string(number));
    if (mThis->mPages.empty())
        return 0;
    const Implementation::PageStart start = mThis->mPages[number];
    const bool goesOn = start.strip > 0 && PageOf(std::size_t{start.row} + 1) != number;
    return start.strip == 0 || goesOn ? start.row : std::size_t{start.row} + 1;
}

std::optional<std::size_t> Layout::PageOf(std::size_t row) const {
    if (row >= mThis->mRow)
        return std::nullopt;
    const std::vector<Implementation::PageStart>& pages = mThis->mPages;
    const auto behind = std::upper_bound(
        pages.begin(), pages.end(), row, [](std::size_t sought, const Implementation::PageStart& start) {
            return sought < start.row || (sought == start.row && start.strip > 0);
        });
    return static_cast<std::size_t>(behind - pages.begin()) - 1;
}

std::size_t Layout::GroupCount() const {
    return mThis->mGroups.Size();
}

std::size_t Layout::GroupLevel(std::size_t index) const {
    if (index >= mThis->mGroups.Size())
        Raise(Errors::kOutOfRange, std::to_string(index));
    return mThis->mGroups.At(index).level;
}

std::size_t Layout::GroupFirstRow(std::size_t index) const {
    if (index >= mThis->mGroups.Size())
        Raise(Errors::kOutOfRange, std::to_string(index));
    return mThis->mGroups.Of(mThis->mGroups.At(index)).firstRow;
}

GroupEntry Layout::Group(std::size_t index) const {
    if (index >= GroupCount())
        Raise(Errors::kOutOfRange, std::to_string(index));
    const GroupIndex::Place place = mThis->mGroups.At(index);
    const GroupIndex::Entry& entry = mThis->mGroups.Of(place);
    Row row;
    mThis->report.ReadRow(entry.firstRow, row);
    const Document& document = mThis->report.Definition();
    const report::Group& group = document.groups[place.level];
    return {place.level, FormatValue(group.format, row[group.field], group.isFlag), entry.firstRow,
            entry.rowCount, entry.page};
}

} // namespace report
