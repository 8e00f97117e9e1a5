// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/MachineDump.h"

#include "core/Globals.h"
#include "core/LongWork.h"
#include "core/MainForm.h"
#include "core/NodeKeys.h"
#include "platform/accesssql.h"
#include "platform/errors.h"
#include "platform/prompts.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

struct MachineDump::Variant {
    const char* filter;
    /// What the fifteen sections do not share: the heading of the operating systems, and its dashes.
    const char* systemHeading;
    std::size_t systemDashes;
    void (MachineDump::*write)(const std::string& statement, ExportFile& file);
    const char* done;
    bool tellsPath;
};

struct MachineDump::Section {
    /// Null for that of the operating systems.
    const char* heading;
    std::size_t dashes;
    const char* statement;
    bool hasConfigurations;
    /// Where the progress bar stands when it is written.
    double after;
};

namespace {

/// The value as "yyyy-mm-dd" if it is a text that makes a date; a number never does.
std::optional<std::string> DateOf(const ADODB::Field& field, std::string_view text) {
    constexpr std::size_t kShortest = 5; // 1/2/3
    constexpr std::size_t kLongest = 10;
    if (text.size() < kShortest || text.size() > kLongest || field.Type() != ADODB::kTypeText)
        return std::nullopt;
    std::optional<std::chrono::local_days> date = ParseStoredDate(text);
    if (!date)
        date = ParseDate(text);
    if (!date)
        return std::nullopt;
    return FormatDate(*date, "yyyy-mm-dd");
}

ADODB::FieldList& OpenSection(const std::string& statement) {
    gRecordset = std::make_shared<ADODB::Recordset>();
    gRecordset->Open(statement, gConnection, ADODB::Cursor::Keyset, ADODB::Lock::ReadOnly);
    return gRecordset->Fields();
}

void CloseSection(ExportFile& file) {
    gRecordset->Close();
    file.WriteLine("");
}

/// The blanks behind a text of `length` characters in a column of `size`.
std::string_view Padding(std::size_t length, std::size_t size) {
    constexpr std::size_t kGap = 3;
    return spaces((length > size ? length - size : size - length) + kGap);
}

} // namespace

std::string_view spaces(std::size_t count) {
    // A dump asks for them at every value.
    static std::string blanks;
    if (blanks.size() < count)
        blanks.resize(count, ' ');
    return std::string_view(blanks).substr(0, count);
}

void MachineDump::mnuPopFullExport() {
    static constexpr Variant kCommaSeparated = {"Export File (*.csv)|*.csv",  "Operating System INFO", 21,
                                                &MachineDump::DumpSectionCsv, "Export done to ",       true};
    GuardedExport(mContext, [this] { Export(kCommaSeparated); });
}

void MachineDump::mnuPopTxtlExport() {
    static constexpr Variant kPaddedText = {"Export File (*.txt)|*.txt",   "Opperating System INFO", 22,
                                            &MachineDump::DumpSectionText, "Exported Ok!",           false};
    GuardedExport(mContext, [this] { Export(kPaddedText); });
}

void MachineDump::Export(const Variant& variant) {
    static constexpr std::array<Section, 15> kSections = {{
        {"Global Info", 11, "SELECT * FROM Net", false, 6.6},
        {"Personal INFO", 13, "SELECT * FROM Personal", false, 13.2},
        {"CPU INFO", 8, "SELECT * FROM PC", true, 19.8},
        {"Device INFO", 11, "SELECT * FROM DeviceData", true, 26.4},
        {"Display INFO", 12,
         "SELECT DeviceDisplay.* FROM DeviceData INNER JOIN DeviceDisplay ON DeviceData.[Device Auto ID] = "
         "DeviceDisplay.[Device Auto ID]",
         true, 33},
        {"Motherboard INFO", 16,
         "SELECT DeviceMotherBoard.* FROM DeviceData INNER JOIN DeviceMotherBoard ON DeviceData.[Device Auto "
         "ID] = DeviceMotherBoard.[Device Auto ID]",
         true, 39.6},
        {"Network INFO", 12,
         "SELECT DeviceNetwork.* FROM DeviceData INNER JOIN DeviceNetwork ON DeviceData.[Device Auto ID] = "
         "DeviceNetwork.[Device Auto ID]",
         true, 46.2},
        {"Drives INFO", 11, "SELECT * FROM Drives", true, 52.8},
        {"Drives Detailed INFO", 20, "SELECT * FROM DrivesData", true, 59.4},
        {"I/O Devices INFO", 16, "SELECT * FROM Input", true, 66},
        {"MS Office INFO", 14, "SELECT * FROM MSOffice", true, 72.6},
        {"ODBC Drivers INFO", 17, "SELECT * FROM ODBCData", true, 79.2},
        {nullptr, 0, "SELECT * FROM OS", true, 85.8},
        {"Printers INFO", 13, "SELECT * FROM PrinterData", true, 92.4},
        {"Installed Software INFO", 23, "SELECT * FROM UninstallData", true, 100},
    }};
    MainForm& form = mContext.form;
    const std::string machine = NodeKeys::BeforeCategory(NodeKeys::WithoutMain(form.SelectedNodeKey()));
    const std::string path = AskForExportPath(mContext, variant.filter);
    if (path.empty())
        return;
    form.StatusText("Export in progress ...");
    form.ProgressMaximum(100);
    form.ProgressValue(0);
    ExportFile file(path);
    for (const Section& section : kSections) {
        WriteSection(variant, section, machine, file);
        form.ProgressValue(CInt(section.after));
    }
    LongWork::Aside([&] { file.Commit(); });
    form.StatusText("Export completed ...");
    mContext.prompts.MsgBox(variant.done + (variant.tellsPath ? path : ""), MsgBoxStyle::kQuestion, "Export");
    form.ProgressValue(0);
}

void MachineDump::WriteSection(const Variant& variant, const Section& section, const std::string& machine,
                               ExportFile& file) {
    const bool isSystem = section.heading == nullptr;
    file.WriteLine(isSystem ? variant.systemHeading : section.heading);
    file.WriteLine(std::string(isSystem ? variant.systemDashes : section.dashes, '-'));
    try {
        std::string statement = std::string(section.statement) + " WHERE COMPUTERNAME ";
        statement += NodeKeys::IsAllMachines(machine) ? "<> ''" : "= " + SQLText(machine);
        if (section.hasConfigurations)
            statement += " AND ConfID=" + NumberText(mContext.form.ShowConf());
        (this->*variant.write)(statement, file);
    } catch (const RunTimeError& failure) {
        // A disk that is full would fail all the sections to come.
        if (file.HasFailed())
            throw;
        gRecordset.reset();
        mContext.prompts.MsgBox(failure.description, MsgBoxStyle::kCritical,
                                "Error#" + NumberText(failure.number));
    }
}

void MachineDump::DumpSectionCsv(const std::string& statement, ExportFile& file) {
    LongWork work(mContext.form);
    const ADODB::FieldList& fields = OpenSection(statement);
    std::string line;
    for (std::size_t i = 0; i < fields.Count(); ++i)
        line += (i == 0 ? "" : ",") + fields.Item(i).Name();
    file.WriteLine(line);
    for (; !gRecordset->EndOfFile(); gRecordset->MoveNext()) {
        line.clear();
        for (std::size_t i = 0; i < fields.Count(); ++i) {
            const ADODB::Field& field = fields.Item(i);
            const std::string_view text = field.Text();
            if (i > 0)
                line += ',';
            if (const std::optional<std::string> date = DateOf(field, text))
                line += *date;
            else
                line += text;
        }
        file.WriteLine(line);
        work.Step();
    }
    CloseSection(file);
}

void MachineDump::DumpSectionText(const std::string& statement, ExportFile& file) {
    LongWork work(mContext.form);
    const ADODB::FieldList& fields = OpenSection(statement);
    struct Width {
        std::size_t name;
        std::size_t size;
    };
    std::vector<Width> widths;
    std::string line;
    for (std::size_t i = 0; i < fields.Count(); ++i) {
        const ADODB::Field& field = fields.Item(i);
        widths.push_back({CharacterCount(field.Name()), static_cast<std::size_t>(field.DefinedSize())});
        line += field.Name();
        line += Padding(widths[i].name, widths[i].size);
    }
    file.WriteLine(line);
    for (; !gRecordset->EndOfFile(); gRecordset->MoveNext()) {
        line.clear();
        for (std::size_t i = 0; i < fields.Count(); ++i) {
            const ADODB::Field& field = fields.Item(i);
            const std::string_view text = field.Text();
            const std::size_t length = CharacterCount(text);
            if (const std::optional<std::string> date = DateOf(field, text)) {
                line += *date;
                line += Padding(length, widths[i].size);
            } else {
                line += text;
                line += Padding(length, std::max(widths[i].name, widths[i].size));
            }
        }
        line.pop_back();
        file.WriteLine(line);
        work.Step();
    }
    CloseSection(file);
}
