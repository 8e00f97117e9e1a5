// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/FontMeasure.h"
#include "platform/report/Page.h"
#include "reports/Catalogue.h"
#include "reports/Documents.h"
#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using report::Document;

std::vector<report::ObjectDefinition> Objects(const Document& document) {
    std::vector<report::ObjectDefinition> objects;
    for (const report::Section& section : document.sections)
        for (const report::Line& line : section.lines)
            objects.insert(objects.end(), line.objects.begin(), line.objects.end());
    return objects;
}

TEST(Documents, AreFoundByTheirNamesAlone) {
    EXPECT_EQ(ErrorOf([] { DocumentText("../icons/PC_1"); }), Errors::kFileNotFound);
}

/// Of all documents, those of subreports too.
std::vector<std::string> Names() {
    std::vector<std::string> names = {"CRPCompare", "CRPPC",     "SubPC",      "SubIO",
                                      "SubOS",      "SubDrives", "SubPrinters"};
    for (const CatalogueRow& row : Catalogue())
        names.emplace_back(row.reportClass);
    return names;
}

/// What a formula of a document makes of a row.
std::string Shown(const Document& document, const char* formula, const report::Row& row) {
    const auto found = std::ranges::find(document.formulas, formula, &report::NamedFormula::name);
    return report::FormatValue({}, found->formula.Evaluate(row), false);
}

TEST(Documents, ShowEveryFieldThatDiffersFromRowToRow) {
    // What the query chooses by; and the machine where it is the main report's, or one of a crowd.
    const std::set<std::string> chosen = {"ConfID", "LocalOrRemote", "Drive Description"};
    const std::set<std::string> withoutMachine = {"CRPChartUserOS", "SubPC",     "SubIO",
                                                  "SubOS",          "SubDrives", "SubPrinters"};
    for (const std::string& name : Names()) {
        const std::shared_ptr<report::Report> report = MakeReport(name);
        const std::string text = DocumentText(name);
        for (const char* line : {"CopLine", "RTPLine"})
            EXPECT_EQ(ErrorOf([&] { report->SetText(line, "x"); }) == 0, name.starts_with("CRP"))
                << name << line;
        for (const report::FieldDefinition& field : report->Definition().fields) {
            if (chosen.contains(field.name) ||
                (field.name == "COMPUTERNAME" && withoutMachine.contains(name)))
                continue;
            const std::string reference = "{" + report->Definition().tableName + "." + field.name + "}";
            EXPECT_NE(text.find(reference), std::string::npos) << name << reference;
        }
    }
}

TEST(Documents, HaveRoomForLongNamesAndLargeSizes) {
    const report::FontMeasure measure;
    const report::PageFormat paper;
    constexpr double kInsets = 4;
    for (const std::string& name : Names()) {
        const std::shared_ptr<report::Report> report = MakeReport(name);
        const Document& document = report->Definition();
        const double width =
            (document.isLandscape ? paper.height : paper.width) - paper.leftMargin - paper.rightMargin;
        for (const report::ObjectDefinition& object : Objects(document)) {
            if (object.kind != report::Kind::Field || object.source.kind != report::Source::Kind::Field)
                continue;
            const std::string& field = document.fields[object.source.index].name;
            const char* const text = field == "COMPUTERNAME"         ? "ABCDEFGHIJKLMNOPQRST"
                                     : field == "Drive Description"  ? "Removable drive"
                                     : object.format.suffix == " MB" ? "1,048,576 MB"
                                                                     : "";
            EXPECT_LE(measure.Width(object.style, text), width * object.width / 100 - kInsets)
                << name << " " << field;
        }
    }
}

TEST(Documents, SayInWordsWhatACodeMeans) {
    const struct {
        const char* code;
        const char* meaning;
    } cases[] = {{"0A 00 00 00 ", "Can not start"},
                 {"1c 00 00 00", "No driver installed"},
                 {"0A 01 00 00 ", ""},
                 {"7F 00 00 00 ", ""},
                 {"STARTED", ""},
                 {"", ""}};
    const std::shared_ptr<report::Report> report = MakeReport("CRPDeviceConflict");
    for (const auto& c : cases)
        EXPECT_EQ(Shown(report->Definition(), "Meaning", {{}, 1.0, std::string(c.code), {}, 1.0}), c.meaning)
            << c.code;
}

TEST(Documents, ShowByHowMuchSizesDiffer) {
    const struct {
        const char* type;
        double original;
        ADODB::Value current;
        const char* shown;
    } cases[] = {{"RAM Size", 100352, 100400.0, "100,352 KB/100,400 KB"},
                 {"RAM Size", 100352, 100352.0, "98 MB/98 MB"},
                 {"RAM Size", 100352, {}, "98 MB/"},
                 {"RAM Size", 100352, 200704.0, "98 MB/196 MB"},
                 {"Hard Disk Size", 2147483648, 2147483136.0, "2,147,483,648 bytes/2,147,483,136 bytes"},
                 {"CD Rom", 1, 2.0, "1/2"}};
    const std::shared_ptr<report::Report> report = MakeReport("CRPCompare");
    for (const auto& c : cases) {
        const report::Row row{std::string("PC1"), std::string(c.type), c.original, c.current};
        EXPECT_EQ(
            Shown(report->Definition(), "Original", row) + "/" + Shown(report->Definition(), "Current", row),
            c.shown);
    }
}

TEST(Documents, LabelWhatChanged) {
    using ADODB::Value;
    const auto text = [](const char* value) { return Value(std::string(value)); };
    const struct {
        const char* why;
        const char* type;
        Value original;
        Value current;
        const char* label;
        bool isMismatch;
    } cases[] = {
        {"nothing changed", "RAM Size", 65536.0, 65536.0, "", false},
        {"twice the memory", "RAM Size", 65536.0, 131072.0, "Upgraded", true},
        {"half of it", "RAM Size", 131072.0, 65536.0, "Changed", true},
        {"what the firmware takes", "RAM Size", 65536.0, 65000.0, "Insignificant", true},
        {"just one in a hundred", "RAM Size", 10000.0, 10100.0, "Upgraded", true},
        {"a statement may give sizes as text", "Hard Disk Size", text("2000000000"), 4e9, "Upgraded", true},
        {"the same size in other letters", "Hard Disk Size", text("2000000000"), 2e9, "", false},
        {"a second drive", "CD Rom", 1.0, 2.0, "Upgraded", true},
        {"the first drive", "CD Rom", 0.0, 1.0, "Upgraded", true},
        {"none is left", "Removable Drive", 1.0, 0.0, "Changed", true},
        {"no current configuration", "Removable Drive", 1.0, {}, "Changed", true},
        {"nor an original value", "Removable Drive", {}, {}, "", false},
        {"a size where none was known", "RAM Size", {}, 65536.0, "Upgraded", true},
        {"the same processor", "CPU", text("Quill 450"), text("Quill 450"), "", false},
        {"another", "CPU", text("Quill 450"), text("Quill 600"), "Changed", true},
        {"spelled in another case", "CPU", text("Quill"), text("QUILL"), "Insignificant", true},
        {"or with other blanks", "CPU", text("Quill 450 "), text("quill  450"), "Insignificant", true},
        {"a processor that is no longer known", "CPU", text("Quill 450"), {}, "Changed", true},
    };
    const std::shared_ptr<report::Report> report = MakeReport("CRPCompare");
    const Document& document = report->Definition();
    const report::Formula mismatch("{Comparison.Org} <> {Comparison.Cur}", document.tableName,
                                   document.fields, document.formulas, report::TextComparison::Exact);
    std::vector<report::ObjectDefinition> objects = Objects(document);
    const auto label = std::ranges::find(objects, "Label", &report::ObjectDefinition::name);
    for (const auto& c : cases) {
        const report::Row row{text("PC0001"), text(c.type), c.original, c.current};
        EXPECT_EQ(report->ObjectText(*label, row), c.label) << c.why;
        EXPECT_EQ(mismatch.IsTrue(row), c.isMismatch) << c.why;
    }
}

} // namespace
