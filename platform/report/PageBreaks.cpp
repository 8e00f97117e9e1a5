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
    mLines.clear();
    mHeight = 0;
}

void RowStrips::Add(const Band& band) {
    Mark mark{mHeights.size(), band.Kind(), band.section->section->group, band.isOfSubreport, false, 0};
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

std::vector<RowStrips::Reluctance> RowStrips::Breaks(double page) const {
    std::vector<Reluctance> breaks(mHeights.size(), kAnywhere);
    for (const Mark& band : mBands) {
        if (&band != mBands.data() && !BelongTogether(*(&band - 1), band))
            breaks[band.firstStrip] = kFree;
        else
            breaks[band.firstStrip] = kBetweenBands;
    }
    for (std::size_t line = 0; line < mLines.size(); ++line) {
        const std::size_t begin = mLines[line];
        const std::size_t end = line + 1 == mLines.size() ? mHeights.size() : mLines[line + 1];
        const Mark& band = BandOf(begin);
        if (band.height <= page)
            continue;
        if (begin != band.firstStrip)
            breaks[begin] = kFree;
        // Two lines of a text at least stay on either side.
        for (std::size_t strip = begin + 2; strip + 2 <= end; ++strip)
            breaks[strip] = kFree;
    }
    return breaks;
}

} // namespace report
