// SPDX-License-Identifier: GPL-3.0-or-later
// Puts bands on a page: breaks and cuts their texts, runs format events, and places what falls into the range
// of strips that the page shows. Internal to the layout.
#pragma once

#include "platform/report/BandFlow.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace report {

struct PageFacts {
    std::size_t number = 1;
    std::optional<std::size_t> count;
    std::string printDate;
};

class PageWriter final : public BandSink {
public:
    PageWriter(Page& page, const PageFacts& facts) : mPage(page), mFacts(facts) {}

    /// Goes on at `top`.
    void MoveTo(double top) { mTop = top; }
    double Top() const { return mTop; }
    /// Of the bands that follow, shows the strips from `begin` until before `end`, counted on from 0.
    void Show(std::size_t begin, std::size_t end);
    void Add(const Band& band) override;

private:
    std::string TextOf(const Band& band, const ObjectDefinition& object) const;
    void Prepare(const Band& band);
    void AddLine(const Band& band, const LinePlan& line);
    void PlaceText(const CellPlan& cell, const std::vector<Strip>& strips);
    void PlaceOther(const Band& band, const CellPlan& cell, const Strip& strip);
    bool IsShown(std::size_t strip) const { return mStrip + strip >= mBegin && mStrip + strip < mEnd; }

    Page& mPage;
    const PageFacts& mFacts;
    double mTop = 0;
    std::size_t mStrip = 0;
    std::size_t mBegin = 0;
    std::size_t mEnd = 0;
    bool mIsPrepared = false;
    /// Texts and styles of the section's field and text objects, by their places.
    std::vector<std::string> mTexts;
    std::vector<TextStyle> mStyles;
};

} // namespace report
