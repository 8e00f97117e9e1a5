// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/SectionPlan.h"

#include "platform/report/RowOrder.h"

#include <algorithm>

namespace report {

namespace {

/// Texts keep this distance from the sides of their objects, so that neighbours do not touch.
constexpr double kInset = 2;
/// A rule that stands alone in its line.
constexpr double kRuleRoom = 3;

/// The text of a variable cell, without a copy where the row holds it as it is shown.
std::string_view VariableText(const Report& report, const ObjectDefinition& object, const Row& row,
                              std::string& scratch) {
    if (object.source.kind == Source::Kind::Field && object.format.kind == Format::Kind::General &&
        object.prefix.empty() && object.suffix.empty() && object.source.index < row.size())
        if (const auto* text = std::get_if<std::string>(&row[object.source.index]))
            return *text;
    scratch = report.ObjectText(object, row);
    return scratch;
}

bool IsVariable(const ObjectDefinition& object) {
    return object.kind == Kind::Field && object.overflow == Overflow::Wrap &&
           (object.source.kind == Source::Kind::Field || object.source.kind == Source::Kind::Formula);
}

void AddOnce(std::vector<std::size_t>& fields, std::size_t field) {
    if (std::find(fields.begin(), fields.end(), field) == fields.end())
        fields.push_back(field);
}

} // namespace

void Strip::Hold(const FittedStyle& style) {
    ascent = std::max(ascent, style.Ascent());
    descent = std::max(descent, style.LineHeight() - style.Ascent());
}

void LinePlan::StripsOf(const Report& report, const Row& row, std::vector<Strip>& rowStrips) const {
    rowStrips = strips;
    if (!isVariable)
        return;
    std::string scratch;
    for (const CellPlan& cell : cells) {
        if (!cell.isVariable)
            continue;
        const std::size_t count =
            cell.style->Wrap(VariableText(report, *cell.object, row, scratch), cell.width);
        if (count > rowStrips.size())
            rowStrips.resize(count);
        for (std::size_t i = 1; i < count; ++i)
            rowStrips[i].Hold(*cell.style);
    }
}

ReportPlan::ReportPlan(const Report& source, const TextFitter& usedFitter, double leftEdge, double ownWidth)
    : report(source), fitter(usedFitter), left(leftEdge), width(ownWidth) {
    const Document& document = report.Definition();
    groupHeaders.resize(document.groups.size());
    groupFooters.resize(document.groups.size());
    for (const Section& section : document.sections) {
        const auto place = [&]() -> SectionPlan& {
            switch (section.kind) {
                case SectionKind::ReportHeader:
                    return reportHeader;
                case SectionKind::PageHeader:
                    return pageHeader;
                case SectionKind::GroupHeader:
                    return groupHeaders.at(section.group);
                case SectionKind::Detail:
                    return detail;
                case SectionKind::GroupFooter:
                    return groupFooters.at(section.group);
                case SectionKind::ReportFooter:
                    return reportFooter;
                case SectionKind::PageFooter:
                    break;
            }
            return pageFooter;
        };
        place() = Prepare(section);
    }
}

std::size_t ReportPlan::FirstDifference(const Row& a, const Row& b) const {
    const std::vector<Group>& groups = report.Definition().groups;
    std::size_t level = 0;
    while (level < groups.size() &&
           IsSameGroup(groups[level], a[groups[level].field], b[groups[level].field]))
        ++level;
    return level;
}

SectionPlan ReportPlan::Prepare(const Section& section) {
    SectionPlan plan;
    plan.section = &section;
    plan.event = report.EventOf(section);
    std::size_t formatPlace = 0;
    for (const Line& line : section.lines)
        // An event may make texts bold, which are wider, and their lines must not depend on it.
        plan.lines.push_back(PrepareLine(line, plan.event != nullptr, formatPlace));
    return plan;
}

LinePlan ReportPlan::PrepareLine(const Line& line, bool isBold, std::size_t& formatPlace) {
    LinePlan plan;
    plan.line = &line;
    plan.strips.resize(1);
    for (const ObjectDefinition& object : line.objects) {
        CellPlan cell;
        cell.object = &object;
        cell.left = left + width * object.left / 100;
        cell.width = std::max(width * object.width / 100, 0.0);
        Strip& first = plan.strips.front();
        switch (object.kind) {
            case Kind::Subreport:
                plan.subreport = &object;
                plan.plan =
                    std::make_unique<ReportPlan>(report.Subreport(object), fitter, cell.left, cell.width);
                plan.strips.clear();
                return plan;
            case Kind::Chart:
                AddOnce(chartFields, object.chartField);
                first.descent = std::max(first.descent, object.height);
                break;
            case Kind::Rule:
                first.descent = std::max(first.descent, kRuleRoom);
                break;
            case Kind::Field:
            case Kind::Text:
                if (object.kind == Kind::Field && object.source.kind == Source::Kind::Sum)
                    AddOnce(sumFields, object.source.index);
                const double inset = std::min(kInset, cell.width / 4);
                cell.left += inset;
                cell.width -= 2 * inset;
                TextStyle style = object.style;
                style.isBold |= isBold;
                cell.style = &fitter.Of(style);
                cell.isVariable = IsVariable(object);
                cell.formatPlace = formatPlace++;
                plan.isVariable |= cell.isVariable;
                const bool wraps = object.kind == Kind::Text && object.overflow == Overflow::Wrap;
                const std::size_t count = wraps ? cell.style->Wrap(report.Text(object), cell.width) : 1;
                plan.strips.resize(std::max(plan.strips.size(), count));
                for (std::size_t i = 0; i < count; ++i)
                    plan.strips[i].Hold(*cell.style);
        }
        plan.cells.push_back(cell);
    }
    plan.strips.front().space = line.spaceBefore;
    return plan;
}

} // namespace report
