// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PageWriter.h"

#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace report {

namespace {

constexpr std::uint32_t kShade = 0xE8E8E8;
constexpr double kRuleThickness = 0.75;

} // namespace

void PageWriter::Show(std::size_t begin, std::size_t end) {
    mStrip = 0;
    mBegin = begin;
    mEnd = end;
}

std::string PageWriter::TextOf(const Band& band, const ObjectDefinition& object) const {
    if (object.kind != Kind::Field)
        return band.plan->report.ObjectText(object, *band.row);
    ADODB::Value value;
    const Totals* const totals = band.totals;
    switch (object.source.kind) {
        case Source::Kind::Field:
        case Source::Kind::Formula:
            return band.plan->report.ObjectText(object, *band.row);
        case Source::Kind::PageNumber:
            value = static_cast<double>(mFacts.number);
            break;
        case Source::Kind::PageCount:
            if (mFacts.count)
                value = static_cast<double>(*mFacts.count);
            break;
        case Source::Kind::PrintDate:
            value = mFacts.printDate;
            break;
        case Source::Kind::Count:
            if (totals != nullptr)
                value = static_cast<double>(totals->count);
            break;
        case Source::Kind::Sum: {
            const std::vector<std::size_t>& fields = band.plan->sumFields;
            const auto found = std::find(fields.begin(), fields.end(), object.source.index);
            if (totals != nullptr && found != fields.end())
                value = totals->sums[static_cast<std::size_t>(found - fields.begin())].Value();
            break;
        }
        case Source::Kind::Share:
            if (totals != nullptr && totals->share)
                value = *totals->share;
            break;
    }
    const std::string text = FormatValue(object.format, value, false);
    return text.empty() ? text : object.prefix + text + object.suffix;
}

void PageWriter::Prepare(const Band& band) {
    if (std::exchange(mIsPrepared, true))
        return;
    mTexts.clear();
    mStyles.clear();
    std::vector<const ObjectDefinition*> objects;
    for (const LinePlan& line : band.section->lines)
        for (const CellPlan& cell : line.cells)
            if (cell.style != nullptr) {
                mTexts.push_back(TextOf(band, *cell.object));
                mStyles.push_back(cell.object->style);
                objects.push_back(cell.object);
            }
    if (band.section->event == nullptr)
        return;
    std::vector<ObjectFormat> formats;
    for (std::size_t i = 0; i < objects.size(); ++i)
        formats.emplace_back(objects[i]->name, mTexts[i], mStyles[i]);
    (*band.section->event)(formats);
}

void PageWriter::Add(const Band& band) {
    if (mStrip >= mEnd)
        return;
    mIsPrepared = false;
    for (const LinePlan& line : band.lines)
        AddLine(band, line);
}

void PageWriter::AddLine(const Band& band, const LinePlan& line) {
    std::vector<Strip> strips;
    line.StripsOf(band.plan->report, *band.row, strips);
    if (mStrip + strips.size() <= mBegin || mStrip >= mEnd) {
        mStrip += strips.size();
        return;
    }
    Prepare(band);
    double height = 0;
    double space = 0;
    for (std::size_t i = 0; i < strips.size(); ++i)
        if (IsShown(i)) {
            space += strips[i].space;
            height += strips[i].Height();
        }
    if (line.line->isShaded && height > space)
        mPage.fills.push_back({band.plan->left, mTop + space, band.plan->width, height - space, kShade});
    for (const CellPlan& cell : line.cells) {
        if (cell.style != nullptr)
            PlaceText(cell, strips);
        else if (IsShown(0))
            PlaceOther(band, cell, strips.front());
    }
    mTop += height;
    mStrip += strips.size();
}

void PageWriter::PlaceText(const CellPlan& cell, const std::vector<Strip>& strips) {
    const ObjectDefinition& object = *cell.object;
    const std::string& text = mTexts[cell.formatPlace];
    const TextStyle& style = mStyles[cell.formatPlace];
    std::vector<TextLine> lines;
    if (cell.isVariable || (object.kind == Kind::Text && object.overflow == Overflow::Wrap))
        cell.style->Wrap(text, cell.width, &lines);
    else
        lines.push_back({cell.style->Cut(text, cell.width), Continuation::None});
    double top = mTop;
    bool isFirst = true;
    for (std::size_t i = 0; i < lines.size() && i < strips.size(); ++i) {
        if (!IsShown(i))
            continue;
        if (!lines[i].text.empty()) {
            PlacedText placed;
            placed.left = cell.left;
            placed.width = cell.width;
            placed.baseline = top + strips[i].space + strips[i].ascent;
            placed.top = placed.baseline - cell.style->Ascent();
            placed.height = cell.style->LineHeight();
            placed.alignment = object.alignment;
            placed.style = style;
            placed.text = std::move(lines[i].text);
            placed.continuation = isFirst ? Continuation::None : lines[i].continuation;
            mPage.texts.push_back(std::move(placed));
            isFirst = false;
        }
        top += strips[i].Height();
    }
}

void PageWriter::PlaceOther(const Band& band, const CellPlan& cell, const Strip& strip) {
    const double bottom = mTop + strip.Height();
    if (cell.object->kind == Kind::Rule) {
        // Under the texts of its line, or in the middle of its own.
        const bool isAlone = strip.ascent == 0;
        const double top =
            isAlone ? mTop + strip.space + (strip.descent - kRuleThickness) / 2 : bottom - kRuleThickness;
        mPage.fills.push_back({cell.left, top, cell.width, kRuleThickness, cell.object->style.color});
    } else if (cell.object->kind == Kind::Chart) {
        PlacedChart chart{cell.left, mTop + strip.space, cell.width, cell.object->height, {}};
        const std::vector<std::size_t>& fields = band.plan->chartFields;
        const auto place = static_cast<std::size_t>(
            std::find(fields.begin(), fields.end(), cell.object->chartField) - fields.begin());
        if (band.totals != nullptr && place < band.totals->charts.size())
            chart.slices = band.totals->charts[place];
        std::stable_sort(chart.slices.begin(), chart.slices.end(),
                         [](const auto& a, const auto& b) { return a.second > b.second; });
        mPage.charts.push_back(std::move(chart));
    }
}

} // namespace report
