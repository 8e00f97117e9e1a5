// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors.h"
#include "reports/Documents.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using report::Document;

constexpr const char* kNet =
    "COMPUTERNAME text 20, Logon User Name text 20, Logon Date text 8, Logon Time text 8, MAC "
    "Address text 15, ORGFileDate text 8, ORGFileTime text 8, INFFileDate text 8, INFFileTime "
    "text 8, PNFFileDate text 8, PNFFileTime text 8";
constexpr const char* kOS =
    "COMPUTERNAME text 50, ConfID number, OS Version text 10, OS Build text 50, OS Booted "
    "text 50, OS Debug boolean, OS Slow PC boolean, OS Name API text 50, OS Time DaylightName "
    "text 50, OS Time StandardName text 50, OS Name Reg text 50, OS ID text 50, OS Key text "
    "50, OS Registered text 50, OS Owner text 50, OS Organization text 50, OS Plus Version "
    "text 50, OS Service Pack text 50";
constexpr const char* kPrinters =
    "COMPUTERNAME text 50, ConfID number, LocalOrRemote text 1, Printer Name text 50, Printer "
    "Driver text 50, Printer Port text 50";

/// The queries are written against these: fields are found by name, and where a query has another name for
/// it, by position.
constexpr struct {
    const char* name;
    const char* table;
    const char* fields;
} kDefinitions[] = {
    {"CRPBasicUser", "Net", kNet},
    {"CRPDetailUser", "Personal",
     "COMPUTERNAME text 50, Name text 50, Surname text 50, ID text 50, EmployeeNumber text 50, "
     "PhoneH text 50, HomeAddress text 255, Building text 50, Floor text 50, Office text 50, "
     "PhoneW text 50, AssetNumber text 50"},
    {"CRPLogon", "Net", kNet},
    {"CRPRAM", "RAM_Report", "COMPUTERNAME text 50, Logon User Name text 50, RAM number, RAM Free number"},
    {"CRPFixedDrive", "FixedHDD_Report",
     "COMPUTERNAME text 50, Drive Root text 50, Drive Label text 50, Drive Type text 10, Drive "
     "Size number, Drive Free number"},
    {"CRPCPU", "PC",
     "COMPUTERNAME text 50, ConfID number, CPU API Name text 50, CPU API Number number, CPU "
     "API Active number, CPU REG Vendor text 50, CPU REG Identifier text 50, CPU REG MMX "
     "Identifier text 50, CPU REG MHZ text 50, CPU DLL Description text 100, CPU DLL Speed "
     "text 50, CPU DLL FPU boolean, CPU DLL MMX boolean, RAM number, RAM Free number, PAGE "
     "number, PAGE Free number, VIRTUAL number, VIRTUAL Free number, Screen Res text 50, "
     "Screen Mode text 50, Screen Count number, WAV number, MIDI number, JOY number, JOY "
     "Connected number"},
    {"CRPOffice", "MSOffice",
     "COMPUTERNAME text 50, ConfID number, MS Access text 50, MS Excel text 50, MS Outlook "
     "text 50, MS Power Point text 50, MS Word text 50, MS Version text 50"},
    {"CRPOS", "OS", kOS},
    {"CRPUninstall", "Uninstall",
     "COMPUTERNAME text 50, ConfID number, Program Name text 255, Uninstall String text 255"},
    {"CRPODBC", "ODBC",
     "COMPUTERNAME text 50, ConfID number, Driver Name text 50, Driver Path text 255, Driver "
     "Version text 50"},
    {"CRPDeviceConflict", "DevProb_Report",
     "COMPUTERNAME text 50, ConfID number, Device Problem text 50, Device Name text 50, "
     "CountOfDevice Name number"},
    {"CRPChartUserOS", "ChartUserOS", "COMPUTERNAME text 50, OS Name Reg text 50"},
    {"CRPNetPrinter", "PrinterData", kPrinters},
    {"CRPNetDrive", "DrivesData",
     "COMPUTERNAME text 50, ConfID number, Drive Root text 50, Drive Description text 50, "
     "Drive Filesystem text 50, Drive Size number, Drive Free number, Drive Label text 50, "
     "Drive Serial Number text 50, Drive Mapping text 50, Drive User Logon text 50"},
    {"CRPNetProtocol", "Protocol_Report_ttx",
     "Protocol Name text 50, COMPUTERNAME text 50, Device Name text 50, Protocol IP text 20, "
     "Protocol Mask text 20, Protocol Gateway text 20, Protocol Wins1 text 20, Protocol Wins2 "
     "text 20, Protocol Client1 text 50, Protocol Client2 text 50"},
    {"CRPCompare", "Comparison", "COMPUTERNAME text 50, Type text 20, Org text 100, Cur text 100"},
    {"CRPPC", "Net", kNet},
    {"SubPC", "PC",
     "COMPUTERNAME text 50, ConfID number, CPU API Name text 50, CPU API Number number, CPU "
     "API Active number, CPU REG Vendor text 50, CPU REG Identifier text 50, CPU REG MMX "
     "Identifier text 50, CPU REG MHZ text 50, CPU DLL Description text 50, CPU DLL Speed text "
     "50, CPU DLL FPU boolean, CPU DLL MMX boolean, RAM number, RAM Free number, PAGE number, "
     "PAGE Free number, VIRTUAL number, VIRTUAL Free number, Screen Res text 50, Screen Mode "
     "text 50, Screen Count number, WAV number, MIDI number, JOY number, JOY Connected number"},
    {"SubIO", "Input",
     "COMPUTERNAME text 50, ConfID number, Keyboard Name text 50, Keyboard Delay number, "
     "Keyboard Speed number, Function Keys number, Mouse Name text 50, Mouse Buttons number, "
     "Mouse Wheel boolean, Mouse Double-Click Speed number"},
    {"SubOS", "OS", kOS},
    {"SubDrives", "DrivesData",
     "COMPUTERNAME text 50, ConfID number, Drive Root text 50, Drive Description text 50, "
     "Drive Size number, Drive Free number, Drive Label text 50, Drive Serial Number text 50, "
     "Drive Mapping text 50, Drive User Logon text 50"},
    {"SubPrinters", "PrinterData", kPrinters},
};

std::string Fields(const Document& document) {
    constexpr const char* kTypes[] = {"text", "number", "boolean"};
    std::string text;
    for (const report::FieldDefinition& field : document.fields) {
        text += (text.empty() ? "" : ", ") + field.name + " " + kTypes[static_cast<int>(field.type)];
        if (field.type == report::FieldDefinition::Type::Text)
            text += " " + std::to_string(field.width);
    }
    return text;
}

std::vector<report::ObjectDefinition> Objects(const Document& document) {
    std::vector<report::ObjectDefinition> objects;
    for (const report::Section& section : document.sections)
        for (const report::Line& line : section.lines)
            objects.insert(objects.end(), line.objects.begin(), line.objects.end());
    return objects;
}

TEST(Documents, HaveTheFieldsThatTheirQueriesDeliver) {
    for (const auto& definition : kDefinitions) {
        const std::shared_ptr<report::Report> report = MakeReport(definition.name);
        const Document& document = report->Definition();
        EXPECT_EQ(document.tableName, definition.table) << definition.name;
        EXPECT_EQ(Fields(document), definition.fields) << definition.name;
    }
    EXPECT_THROW(DocumentText("../icons/PC_1"), RunTimeError);
}

TEST(Documents, ShowEveryFieldThatDiffersFromRowToRow) {
    // What the query chooses by; and the machine where it is the main report's, or one of a crowd.
    const std::set<std::string> chosen = {"ConfID", "LocalOrRemote", "Drive Description"};
    const std::set<std::string> withoutMachine = {"CRPChartUserOS", "SubPC",     "SubIO",
                                                  "SubOS",          "SubDrives", "SubPrinters"};
    for (const auto& definition : kDefinitions) {
        const std::shared_ptr<report::Report> report = MakeReport(definition.name);
        const std::string text = DocumentText(definition.name);
        for (const report::FieldDefinition& field : report->Definition().fields) {
            if (chosen.contains(field.name) ||
                (field.name == "COMPUTERNAME" && withoutMachine.contains(definition.name)))
                continue;
            const std::string reference = "{" + report->Definition().tableName + "." + field.name + "}";
            EXPECT_NE(text.find(reference), std::string::npos) << definition.name << reference;
        }
    }
}

TEST(Documents, HaveTheLinesThatTheirWindowsSet) {
    for (const auto& definition : kDefinitions) {
        if (!std::string(definition.name).starts_with("CRP"))
            continue;
        const std::shared_ptr<report::Report> report = MakeReport(definition.name);
        for (const char* line : {"CopLine", "RTPLine"})
            EXPECT_NO_THROW(report->SetText(line, "Harbour Ltd")) << definition.name;
    }

    std::string order;
    const std::shared_ptr<report::Report> machines = MakeReport("CRPPC");
    for (int section = 1; section <= machines->SectionCount(); ++section)
        for (int i = 1; i <= machines->ObjectCount(section); ++i)
            if (machines->Object(section, i).Kind() == report::Kind::Subreport)
                order += machines->Object(section, i).Name() + " ";
    EXPECT_EQ(order, "SubPC SubIO SubOS SubDrives SubPrinters ");

    const std::shared_ptr<report::Report> report = MakeReport("CRPCompare");
    const Document& comparison = report->Definition();
    const auto detail = std::ranges::find(comparison.sections, "Section3", &report::Section::name);
    ASSERT_NE(detail, comparison.sections.end());
    ASSERT_EQ(detail->lines.size(), 1U);
    EXPECT_EQ(detail->kind, report::SectionKind::Detail);
    std::string fields;
    for (const report::ObjectDefinition& object : detail->lines.front().objects)
        fields += object.name + " ";
    EXPECT_EQ(fields, "Type Org Cur Label ") << "the fourth field is the one that the colours go by";
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
        {"spelled in another case, which no comparison sees", "CPU", text("Quill"), text("QUILL"),
         "Insignificant", false},
        {"or with other blanks", "CPU", text("Quill 450 "), text("quill  450"), "Insignificant", true},
        {"a processor that is no longer known", "CPU", text("Quill 450"), {}, "Changed", true},
    };
    const std::shared_ptr<report::Report> report = MakeReport("CRPCompare");
    const Document& document = report->Definition();
    const report::Formula mismatch("{Comparison.Org} <> {Comparison.Cur}", document.tableName,
                                   document.fields, document.formulas);
    std::vector<report::ObjectDefinition> objects = Objects(document);
    const auto label = std::ranges::find(objects, "Label", &report::ObjectDefinition::name);
    for (const auto& c : cases) {
        const report::Row row{text("PC0001"), text(c.type), c.original, c.current};
        EXPECT_EQ(report->ObjectText(*label, row), c.label) << c.why;
        EXPECT_EQ(mismatch.IsTrue(row), c.isMismatch) << c.why;
    }
}

} // namespace
