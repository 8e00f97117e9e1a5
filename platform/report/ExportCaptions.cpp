// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/ExportCaptions.h"

#include "platform/errors.h"

#include <algorithm>
#include <cmath>

namespace report {

namespace {

/// How near two edges are that were meant to be one, in percent of the width.
constexpr double kEdge = 1;

double Right(const ObjectDefinition& object) {
    return object.left + object.width;
}

double Overlap(const ObjectDefinition& a, const ObjectDefinition& b) {
    return std::min(Right(a), Right(b)) - std::max(a.left, b.left);
}

/// How well `caption` stands over `value`: 0 not at all.
double Match(const ObjectDefinition& caption, const ObjectDefinition& value) {
    const bool isLeftEdge = std::abs(caption.left - value.left) < kEdge;
    const bool isRightEdge = std::abs(Right(caption) - Right(value)) < kEdge;
    if (isLeftEdge || isRightEdge)
        return isLeftEdge && isRightEdge ? 3 : 2;
    return Overlap(caption, value) > value.width / 2 ? 1 : 0;
}

const ObjectDefinition* BestCaption(const Line& line, const ObjectDefinition& value) {
    const ObjectDefinition* best = nullptr;
    for (const ObjectDefinition& object : line.objects)
        if (object.kind == Kind::Text && Match(object, value) > (best == nullptr ? 0 : Match(*best, value)))
            best = &object;
    return best;
}

/// Whether a line of a header can be one of captions: texts alone, and either on a grey ground or several.
bool MayHoldCaptions(const Line& line) {
    const auto isText = [](const ObjectDefinition& object) { return object.kind == Kind::Text; };
    const auto isPlain = [](const ObjectDefinition& object) {
        return object.kind == Kind::Text || object.kind == Kind::Rule;
    };
    const auto texts = std::count_if(line.objects.begin(), line.objects.end(), isText);
    return std::all_of(line.objects.begin(), line.objects.end(), isPlain) && texts >= (line.isShaded ? 1 : 2);
}

/// The lines of captions: of the innermost group's header that has some, else of the page's or the report's.
std::vector<const Line*> CaptionLines(const Document& document) {
    std::vector<const Section*> headers;
    for (const Section& section : document.sections)
        if (section.kind == SectionKind::ReportHeader || section.kind == SectionKind::PageHeader ||
            section.kind == SectionKind::GroupHeader)
            headers.insert(headers.begin(), &section);
    for (const Section* const section : headers) {
        std::vector<const Line*> lines;
        for (const Line& line : section->lines)
            if (MayHoldCaptions(line))
                lines.push_back(&line);
        if (!lines.empty())
            return lines;
    }
    return {};
}

/// The section that makes the rows of a table.
const Section& RowSection(const Document& document) {
    const Section& detail = SectionOf(document, SectionKind::Detail);
    const bool isEmpty = std::all_of(detail.lines.begin(), detail.lines.end(),
                                     [](const Line& line) { return line.objects.empty(); });
    if (!isEmpty || document.groups.empty())
        return detail;
    return SectionOf(document, SectionKind::GroupFooter, document.groups.size() - 1);
}

std::string SourceName(const Document& document, const ObjectDefinition& object) {
    if (object.source.kind == Source::Kind::Field)
        return document.fields[object.source.index].name;
    if (object.source.kind == Source::Kind::Formula)
        return document.formulas[object.source.index].name;
    return {};
}

} // namespace

const Section& SectionOf(const Document& document, SectionKind kind, std::size_t group) {
    for (const Section& section : document.sections)
        if (section.kind == kind && section.group == group)
            return section;
    Raise(Errors::kOutOfRange);
}

ShownColumns::ShownColumns(const Report& report) : mRows(&RowSection(report.Definition())) {
    const Document& document = report.Definition();
    const std::vector<Line>& lines = mRows->lines;
    const std::vector<const Line*> captions = CaptionLines(document);
    std::size_t place = 0;
    std::size_t labelled = 0;
    for (std::size_t number = 0; number < lines.size(); ++number) {
        const Line& line = lines[number];
        // With as many lines of captions as a row has, each has its own; the last captions serve the rest.
        const Line* caption = captions.empty() ? nullptr : captions.back();
        if (captions.size() >= lines.size())
            caption = captions[captions.size() - lines.size() + number];
        for (std::size_t i = 0; i < line.objects.size(); ++i) {
            const ObjectDefinition& object = line.objects[i];
            if (object.kind != Kind::Field && object.kind != Kind::Text)
                continue;
            const std::size_t own = place++;
            const bool isLabel = object.kind == Kind::Text && i + 1 < line.objects.size() &&
                                 line.objects[i + 1].kind == Kind::Field;
            if (isLabel)
                continue;
            const bool hasLabel =
                i > 0 && object.kind == Kind::Field && line.objects[i - 1].kind == Kind::Text;
            const ObjectDefinition* const above =
                caption != nullptr && object.kind == Kind::Field ? BestCaption(*caption, object) : nullptr;
            ShownColumn column{&object, SourceName(document, object), own};
            if (hasLabel)
                column.caption = report.Text(line.objects[i - 1]);
            else if (above != nullptr)
                column.caption = report.Text(*above);
            labelled += hasLabel ? 1U : 0U;
            if (above != nullptr)
                mCaptionLines.insert(caption);
            mColumns.push_back(std::move(column));
        }
    }
    mIsLabelled = labelled > 0 && labelled == mColumns.size();
}

std::size_t ShownColumns::ColumnAt(const ObjectDefinition& object) const {
    std::size_t best = 0;
    double match = 0;
    for (std::size_t i = 0; i < mColumns.size(); ++i) {
        const double own = Match(object, *mColumns[i].object);
        if (own > match) {
            match = own;
            best = i;
        }
    }
    return best;
}

} // namespace report
