// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/Document.h"

#include "platform/errors.h"
#include "platform/report/DocumentSections.h"
#include "platform/report/DocumentTree.h"
#include "platform/text.h"

#include <algorithm>

namespace report {

namespace {

constexpr std::size_t kMostFields = 256;
constexpr std::size_t kMostFormulas = 64;
constexpr std::size_t kMostGroups = 8;

/// Names that stand in formulas end at the brace.
std::string NameOfReference(TableReader& table) {
    std::string name = table.Required("name");
    if (name.find_first_of("{}") != std::string::npos)
        Complain(table.Line(), "\"" + name + "\" holds a brace, so that no formula could name it");
    return name;
}

FieldDefinition ReadField(const DocumentNode& node) {
    constexpr std::string_view kTypes[] = {"text", "number", "boolean"};
    TableReader table(node, "a field");
    FieldDefinition field;
    field.name = NameOfReference(table);
    const std::optional<std::size_t> type = table.Choice("type", kTypes);
    if (!type)
        Complain(table.Line(), "the field \"" + field.name + "\" has no \"type\"");
    field.type = static_cast<FieldDefinition::Type>(*type);
    if (field.type == FieldDefinition::Type::Text) {
        const std::optional<double> width = table.Number("width", 1, 65535);
        if (!width)
            Complain(table.Line(), "the text field \"" + field.name + "\" has no \"width\"");
        field.width = static_cast<int>(*width);
    }
    table.Finish();
    return field;
}

template <typename Named>
void RefuseDouble(const std::vector<Named>& known, const std::string& name, std::size_t line) {
    if (std::ranges::any_of(known, [&name](const Named& other) { return EqualNoCase(other.name, name); }))
        Complain(line, "the name \"" + name + "\" stands twice");
}

void ReadTable(const DocumentNode& node, Document& document) {
    TableReader table(node, "[table]");
    document.tableName = NameOfReference(table);
    for (const DocumentNode& item : table.List("fields", kMostFields)) {
        FieldDefinition field = ReadField(item);
        RefuseDouble(document.fields, field.name, item.line);
        document.fields.push_back(std::move(field));
    }
    if (document.fields.empty())
        Complain(table.Line(), "[table] has no fields");
    table.Finish();
}

Formula MakeFormula(const std::string& text, std::size_t line, const Document& document) {
    try {
        return {text, document.tableName, document.fields, document.formulas};
    } catch (const RunTimeError& error) {
        Complain(line, error.description);
    }
}

void ReadFormula(const DocumentNode& node, Document& document) {
    TableReader table(node, "[[formula]]");
    const std::string name = NameOfReference(table);
    RefuseDouble(document.formulas, name, node.line);
    const std::string text = table.Required("text");
    const std::size_t line = table.Find("text")->line;
    table.Finish();
    document.formulas.push_back({name, MakeFormula(text, line, document)});
}

/// A group's header and footer wait until all groups are read.
struct GroupSections {
    Section header;
    Section footer;
};

GroupSections ReadGroup(const DocumentNode& node, Document& document, SectionReader& sections) {
    constexpr std::string_view kOrders[] = {"as-read", "ascending", "descending"};
    TableReader table(node, "[[group]]");
    Group group;
    const std::string reference = table.Required("field");
    const std::optional<std::size_t> field = FindField(reference, document.tableName, document.fields);
    if (!field)
        Complain(table.Find("field")->line, "the table has no field " + reference);
    group.field = *field;
    if (const std::optional<std::size_t> order = table.Choice("order", kOrders))
        group.order = static_cast<SortOrder>(*order);
    group.format = ReadFormat(table, Format());
    group.isFlag = document.fields[*field].IsFlag();
    group.repeatsHeader = table.Flag("repeat-header", true);
    group.keepsTogether = table.Flag("keep-together", false);
    const std::size_t level = document.groups.size();
    document.groups.push_back(std::move(group));
    GroupSections made{sections.Read(table.Find("header"), SectionKind::GroupHeader, level),
                       sections.Read(table.Find("footer"), SectionKind::GroupFooter, level)};
    table.Finish();
    return made;
}

Document Parse(std::string_view text) {
    constexpr std::string_view kOrientations[] = {"portrait", "landscape"};
    const DocumentNode tree = ReadDocumentTree(text);
    TableReader top(tree, "a report document");
    Document document;
    document.title = top.Required("title");
    document.isLandscape = top.Choice("orientation", kOrientations) == 1;
    const DocumentNode* table = top.Find("table");
    if (table == nullptr)
        Complain(1, "the document has no [table]");
    ReadTable(*table, document);
    for (const DocumentNode& node : top.List("formula", kMostFormulas))
        ReadFormula(node, document);
    if (const std::optional<std::string> selection = top.Text("selection"))
        document.selection = MakeFormula(*selection, top.Find("selection")->line, document);

    SectionReader sections(document);
    std::vector<GroupSections> groups;
    for (const DocumentNode& node : top.List("group", kMostGroups))
        groups.push_back(ReadGroup(node, document, sections));
    const auto add = [&](const char* key, SectionKind kind) {
        document.sections.push_back(sections.Read(top.Find(key), kind, 0));
    };
    add("report-header", SectionKind::ReportHeader);
    add("page-header", SectionKind::PageHeader);
    for (GroupSections& group : groups)
        document.sections.push_back(std::move(group.header));
    add("detail", SectionKind::Detail);
    for (std::size_t level = groups.size(); level-- > 0;)
        document.sections.push_back(std::move(groups[level].footer));
    add("report-footer", SectionKind::ReportFooter);
    add("page-footer", SectionKind::PageFooter);
    top.Finish();
    GiveNames(document);
    return document;
}

} // namespace

Document ParseDocument(std::string_view text, const std::string& name) {
    try {
        return Parse(text);
    } catch (const RunTimeError& error) {
        throw RunTimeError(error.number, name + ", " + error.description);
    }
}

} // namespace report
