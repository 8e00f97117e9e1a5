// SPDX-License-Identifier: GPL-3.0-or-later
// The strips of one row and where pages may break between them. Internal to the layout.
#pragma once

#include "platform/report/BandFlow.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace report {

/// The heights of all that one row brings. Used again for row after row.
class RowStrips final : public BandSink {
public:
    struct Mark {
        std::size_t firstStrip = 0;
        SectionKind kind = SectionKind::Detail;
        std::size_t level = 0;
        bool isOfSubreport = false;
        bool startsNewPage = false;
        double height = 0;
        /// Of a subreport's band that its page header stands above: the place of that, and one more; else 0.
        std::size_t header = 0;
    };
    /// The page header of a subreport, with the row that it shows.
    struct SubreportHeader {
        const ReportPlan* plan = nullptr;
        Row row;
        double height = 0;
    };

    void Clear();
    void Add(const Band& band) override;

    const std::vector<double>& Heights() const { return mHeights; }
    /// The bands that have strips.
    const std::vector<Mark>& Bands() const { return mBands; }
    double Height() const { return mHeight; }
    const Mark& BandOf(std::size_t strip) const;
    std::size_t EndOf(const Mark& band) const;

    /// Group levels, from the outermost, that go on at `strip`, so that a page which begins there repeats
    /// their headers.
    std::size_t LevelsAt(std::size_t strip, std::size_t levels) const;
    /// The page header of the subreport that goes on at `strip`; null where none does.
    const SubreportHeader* HeaderAt(std::size_t strip) const;

    /// How little a break is wanted before each strip: it is taken only where no lower one is to be had.
    enum Reluctance : std::uint8_t { kFree, kBetweenBands, kAnywhere };
    /// For a row that does not fit on a page of the height `page`.
    std::vector<Reluctance> Breaks(double page) const;

private:
    std::vector<double> mHeights;
    std::vector<Mark> mBands;
    std::vector<SubreportHeader> mHeaders;
    /// Strips that begin a line.
    std::vector<std::size_t> mLines;
    double mHeight = 0;
    std::vector<Strip> mStrips;
};

} // namespace report
