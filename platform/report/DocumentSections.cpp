// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/DocumentSections.h"

#include "platform/text.h"

#include <array>
#include <charconv>

namespace report {

namespace {

constexpr std::size_t kMostLines = 64;
constexpr std::size_t kMostObjects = 64;
constexpr std::size_t kMostObjectsOfAll = 1000;
/// A row is worked out in one go, in which nothing can be stopped.
constexpr int kMostStepsOfAll = 20000;
constexpr double kHighestChart = 720;
/// Places are sums of decimal fractions.
constexpr double kTolerance = 1e-6;

/// The key that says what an object is.
constexpr std::string_view kKindKeys[] = {"text", "field", "special", "count",    "share",
                                          "sum",  "rule",  "chart",   "subreport"};

std::string_view KindKey(TableReader& table) {
    std::string_view kind;
    for (const std::string_view key : kKindKeys) {
        const DocumentNode* node = table.Find(key);
        if (node == nullptr)
            continue;
        if (!kind.empty())
            Complain(node->line,
                     "an object is either \"" + std::string(kind) + "\" or \"" + std::string(key) + "\"");
        kind = key;
    }
    if (kind.empty())
        Complain(table.Line(), "an object says by one of its keys what it is, such as \"text\" or \"field\"");
    return kind;
}

/// A key that can only be true.
void RequireTrue(TableReader& table, std::string_view key) {
    if (!table.Flag(key, true))
        Complain(table.Find(key)->line, "\"" + std::string(key) + "\" can only be true");
}

std::size_t FieldAt(TableReader& table, std::string_view key, const Document& document) {
    const std::string reference = table.Required(key);
    const std::optional<std::size_t> field = FindField(reference, document.tableName, document.fields);
    if (!field)
        Complain(table.Find(key)->line, "the table has no field " + reference);
    return *field;
}

Source FieldOrFormula(TableReader& table, const Document& document) {
    const std::string reference = table.Required("field");
    if (!reference.starts_with("{@"))
        return {Source::Kind::Field, FieldAt(table, "field", document)};
    for (std::size_t i = 0; i < document.formulas.size(); ++i)
        if (EqualNoCase(reference, "{@" + document.formulas[i].name + "}"))
            return {Source::Kind::Formula, i};
    Complain(table.Find("field")->line, "the document has no formula " + reference);
}

Source Special(TableReader& table) {
    constexpr std::string_view kSpecials[] = {"page-number", "page-count", "print-date"};
    constexpr Source::Kind kKinds[] = {Source::Kind::PageNumber, Source::Kind::PageCount,
                                       Source::Kind::PrintDate};
    return {kKinds[*table.Choice("special", kSpecials)], 0};
}

Source Summary(TableReader& table, std::string_view key, SectionKind section, const Document& document) {
    const bool isKnown =
        section == SectionKind::GroupFooter || (section == SectionKind::ReportFooter && key != "share");
    if (!isKnown)
        Complain(table.Line(), "\"" + std::string(key) + "\" is not known in this section, only in " +
                                   (key == "share" ? "group footers" : "group and report footers"));
    if (key == "sum") {
        const std::size_t field = FieldAt(table, key, document);
        if (document.fields[field].type != FieldDefinition::Type::Number)
            Complain(table.Find(key)->line, "only numbers have a sum");
        return {Source::Kind::Sum, field};
    }
    RequireTrue(table, key);
    return {key == "count" ? Source::Kind::Count : Source::Kind::Share, 0};
}

void ReadPlace(TableReader& table, ObjectDefinition& object) {
    object.left = table.Number("left", 0, 100).value_or(0);
    object.width = table.Number("width", 0, 100).value_or(100 - object.left);
    if (object.width <= 0 || object.left + object.width > 100 + kTolerance)
        Complain(table.Line(), "the object does not fit within the width");
}

std::uint32_t ReadColor(TableReader& table) {
    const std::optional<std::string> text = table.Text("color");
    if (!text)
        return kTextColor;
    std::uint32_t color = 0;
    const char* begin = text->data() + 1;
    const char* end = text->data() + text->size();
    if (text->size() != 7 || text->front() != '#' || std::from_chars(begin, end, color, 16).ptr != end)
        Complain(table.Find("color")->line, "\"color\" must be written as \"#rrggbb\"");
    return (color & 0xFFU) << 16U | (color & 0xFF00U) | color >> 16U;
}

void ReadStyle(TableReader& table, ObjectDefinition& object) {
    constexpr std::string_view kAlignments[] = {"left", "center", "right"};
    constexpr std::string_view kOverflows[] = {"wrap", "cut"};
    object.alignment = static_cast<Alignment>(table.Choice("align", kAlignments).value_or(0));
    object.overflow = static_cast<Overflow>(table.Choice("overflow", kOverflows).value_or(0));
    object.style.size = table.Number("size", 4, 72).value_or(object.style.size);
    object.style.isBold = table.Flag("bold", false);
    object.style.isItalic = table.Flag("italic", false);
    object.style.color = ReadColor(table);
}

void ReadValueObject(TableReader& table, std::string_view key, SectionKind section, const Document& document,
                     ObjectDefinition& object) {
    object.kind = Kind::Field;
    if (key == "field")
        object.source = FieldOrFormula(table, document);
    else if (key == "special")
        object.source = Special(table);
    else
        object.source = Summary(table, key, section, document);
    const char* const usual = object.source.kind == Source::Kind::Share   ? "percent"
                              : object.source.kind == Source::Kind::Count ? "number"
                                                                          : "general";
    object.format = ReadFormat(table, *FindFormat(usual));
    object.prefix = table.Text("prefix").value_or("");
    object.suffix = table.Text("suffix").value_or("");
}

void ReadSubreport(TableReader& table, SectionKind section, const Document& document,
                   ObjectDefinition& object) {
    if (section != SectionKind::Detail)
        Complain(table.Line(), "subreports stand in the detail section");
    object.kind = Kind::Subreport;
    object.documentName = table.Required("subreport");
    const std::span<const DocumentNode> join = table.List("join", 2);
    if (join.size() != 2 || join[0].kind != DocumentNode::Kind::Text ||
        join[1].kind != DocumentNode::Kind::Text)
        Complain(table.Line(), "\"join\" names a field of the table and one of the subreport's");
    const std::optional<std::size_t> parent = FindField(join[0].text, document.tableName, document.fields);
    if (!parent)
        Complain(join[0].line, "the table has no field " + join[0].text);
    object.parentField = *parent;
    object.childReference = join[1].text;
}

void ReadChart(TableReader& table, SectionKind section, const Document& document, ObjectDefinition& object) {
    if (section != SectionKind::ReportHeader && section != SectionKind::ReportFooter)
        Complain(table.Line(), "charts stand in the report's header or footer");
    object.kind = Kind::Chart;
    object.chartField = FieldAt(table, "chart", document);
    object.text = table.Text("caption").value_or(document.fields[object.chartField].name);
    object.height = table.Number("height", 36, kHighestChart).value_or(300);
    ReadPlace(table, object);
}

std::string_view KindName(Kind kind) {
    switch (kind) {
        case Kind::Field:
            return "Field";
        case Kind::Text:
            return "Text";
        case Kind::Rule:
            return "Rule";
        case Kind::Chart:
            return "Chart";
        case Kind::Subreport:
            return "Subreport";
    }
    return {};
}

} // namespace

Format ReadFormat(TableReader& table, const Format& fallback) {
    const std::vector<std::string_view> names = FormatNames();
    const std::optional<std::size_t> name = table.Choice("format", names);
    Format format = name ? FindFormat(names[*name]).value() : fallback;
    if (const std::optional<double> decimals = table.Number("decimals", 0, 6)) {
        if (format.kind != Format::Kind::Number)
            Complain(table.Find("decimals")->line, "\"decimals\" needs a \"format\" of numbers");
        format.decimals = static_cast<int>(*decimals);
    }
    return format;
}

Section SectionReader::Read(const DocumentNode* node, SectionKind kind, std::size_t group) {
    Section section;
    section.kind = kind;
    section.group = group;
    if (node == nullptr)
        return section;
    TableReader table(*node, "a section");
    Claim(mSectionNames, table, section.name);
    section.startsNewPage = table.Flag("new-page", false);
    for (const DocumentNode& line : table.List("line", kMostLines))
        section.lines.push_back(ReadLine(line, kind));
    table.Finish();
    return section;
}

Line SectionReader::ReadLine(const DocumentNode& node, SectionKind kind) {
    TableReader table(node, "a line");
    Line line;
    line.spaceBefore = table.Number("space-before", 0, 300).value_or(0);
    line.isShaded = table.Flag("shaded", false);
    for (const DocumentNode& item : table.List("objects", kMostObjects)) {
        line.objects.push_back(ReadObject(item, kind));
        if (line.objects.back().kind == Kind::Subreport && table.Find("objects")->items.size() > 1)
            Complain(item.line, "a subreport stands alone in its line");
    }
    table.Finish();
    return line;
}

ObjectDefinition SectionReader::ReadObject(const DocumentNode& node, SectionKind kind) {
    if (++mObjects > kMostObjectsOfAll)
        Complain(node.line, "the document has too many objects");
    TableReader table(node, "an object");
    ObjectDefinition object;
    const std::string_view key = KindKey(table);
    Claim(mObjectNames, table, object.name);
    if (key == "subreport") {
        ReadSubreport(table, kind, mDocument, object);
    } else if (key == "chart") {
        ReadChart(table, kind, mDocument, object);
    } else if (key == "rule") {
        object.kind = Kind::Rule;
        RequireTrue(table, key);
        ReadPlace(table, object);
        object.style.color = ReadColor(table);
    } else {
        if (key == "text")
            object.text = *table.Text(key);
        else
            ReadValueObject(table, key, kind, mDocument, object);
        if (object.source.kind == Source::Kind::Formula)
            mSteps += mDocument.formulas[object.source.index].formula.Cost();
        if (mSteps > kMostStepsOfAll)
            Complain(node.line, "the formulas of all objects take too many steps");
        ReadPlace(table, object);
        ReadStyle(table, object);
    }
    table.Finish();
    return object;
}

void SectionReader::Claim(std::set<std::string>& names, TableReader& table, std::string& name) {
    name = table.Text("name").value_or("");
    if (!name.empty() && !names.insert(name).second)
        Complain(table.Find("name")->line, "the name \"" + name + "\" stands twice");
}

void GiveNames(Document& document) {
    std::set<std::string> taken;
    const auto madeUp = [&taken](std::string_view stem, std::size_t& number) {
        std::string name;
        do
            name = std::string(stem) + std::to_string(++number);
        while (!taken.insert(name).second);
        return name;
    };

    for (const Section& section : document.sections)
        taken.insert(section.name);
    for (std::size_t i = 0; i < document.sections.size(); ++i) {
        std::size_t number = i;
        if (document.sections[i].name.empty())
            document.sections[i].name = madeUp("Section", number);
    }

    taken.clear();
    std::vector<ObjectDefinition*> objects;
    for (Section& section : document.sections)
        for (Line& line : section.lines)
            for (ObjectDefinition& object : line.objects)
                objects.push_back(&object);
    for (const ObjectDefinition* object : objects)
        taken.insert(object->name);
    std::array<std::size_t, 6> counts{};
    for (ObjectDefinition* object : objects)
        if (object->name.empty())
            object->name = madeUp(KindName(object->kind), counts[static_cast<std::size_t>(object->kind)]);
}

} // namespace report
