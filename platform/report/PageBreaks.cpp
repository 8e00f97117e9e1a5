// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PageBreaks.h"

#include <algorithm>

namespace report {

namespace {

bool IsHeader(SectionKind kind) {
    return kind == SectionKind::GroupHeader || kind == SectionKind::PageHeader ||
           kind == SectionKind::ReportHeader;
}

/// Whether the second of two bands that follow each other should stand with the first.
bool BelongTogether(const RowStrips::Mark& first, const RowStrips::Mark& second) {
    if (second.kind == SectionKind::GroupFooter || second.kind == SectionKind::ReportFooter)
        return true;
    // Lines of the row above a subreport's are its caption.
    const bool isCaption = IsHeader(first.kind) || !first.isOfSubreport;
    return isCaption && (first.isOfSubreport || first.kind != SectionKind::ReportHeader);
}

} // namespace

void RowStrips::Clear() {
    mHeights.clear();
    mBands.clear();
    mHeaders.clear();
    mLines.clear();
    mHeight = 0;
}

void RowStrips::Add(const Band& band) {
    Mark mark{mHeights.size(), band.Kind(), band.section->section->group, band.isOfSubreport, false, 0, 0};
    if (!mHeaders.empty() && mHeaders.back().plan == band.plan)
        mark.header = mHeaders.size();
    // Pages begin anew with rows of the report itself.
    mark.startsNewPage = band.section->section->startsNewPage && !band.isOfSubreport &&
                         band.lines.data() == band.section->lines.data();
    for (const LinePlan& line : band.lines) {
        mLines.push_back(mHeights.size());
        line.StripsOf(band.plan->report, *band.row, mStrips);
        for (const Strip& strip : mStrips) {
            mHeights.push_back(strip.Height());
            mark.height += strip.Height();
        }
    }
    mHeight += mark.height;
    mBands.push_back(mark);
    if (band.isOfSubreport && mark.kind == SectionKind::PageHeader)
        mHeaders.push_back({band.plan, *band.row, mark.height});
}

const RowStrips::Mark& RowStrips::BandOf(std::size_t strip) const {
    const auto behind =
        std::upper_bound(mBands.begin(), mBands.end(), strip,
                         [](std::size_t sought, const Mark& band) { return sought < band.firstStrip; });
    return *std::prev(behind);
}

std::size_t RowStrips::EndOf(const Mark& band) const {
    return &band == &mBands.back() ? mHeights.size() : (&band + 1)->firstStrip;
}

std::size_t RowStrips::LevelsAt(std::size_t strip, std::size_t levels) const {
    if (strip >= mHeights.size())
        return levels;
    const Mark& band = BandOf(strip);
    if (band.isOfSubreport)
        return levels;
    switch (band.kind) {
        case SectionKind::GroupHeader:
            return band.level;
        case SectionKind::GroupFooter:
            return band.level + 1;
        case SectionKind::ReportHeader:
        case SectionKind::ReportFooter:
            return 0;
        default:
            return levels;
    }
}

const RowStrips::SubreportHeader* RowStrips::HeaderAt(std::size_t strip) const {
    if (strip >= mHeights.size())
        return nullptr;
    const std::size_t header = BandOf(strip).header;
    return header == 0 ? nullptr : &mHeaders[header - 1];
}

std::vector<RowStrips::Reluctance> RowStrips::Breaks(double page) const {
    std::vector<Reluctance> breaks(mHeights.size(), kAnywhere);
    auto line = mLines.begin();
    // What stands above a band and goes with it: rather break the band than leave its headers alone.
    double above = 0;
    for (const Mark& band : mBands) {
        const bool isBound = &band != mBands.data() && BelongTogether(*(&band - 1), band);
        breaks[band.firstStrip] = isBound ? kBetweenBands : kFree;
        const bool isFooter = band.kind == SectionKind::GroupFooter || band.kind == SectionKind::ReportFooter;
        above = isBound && !isFooter ? above + (&band - 1)->height : 0;
        for (const std::size_t end = EndOf(band); line != mLines.end() && *line < end; ++line) {
            if (above + band.height <= page)
                continue;
            if (*line != band.firstStrip)
                breaks[*line] = kFree;
            // Two lines of a text at least stay on either side.
            const std::size_t lineEnd = line + 1 == mLines.end() ? mHeights.size() : *(line + 1);
            for (std::size_t strip = *line + 2; strip + 2 <= lineEnd; ++strip)
                breaks[strip] = kFree;
        }
    }
    return breaks;
}

} // namespace report
