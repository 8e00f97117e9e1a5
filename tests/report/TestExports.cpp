// SPDX-License-Identifier: GPL-3.0-or-later
// Exports of reports, worked out by hand: what client PCs may have written comes out whole and harmless.
#include "platform/report/ExportWriters.h"
#include "tests/report/ReportTest.h"
#include "tests/support/SmallFiles.h"

#include <gmock/gmock.h>
#include <zip.h>

#include <array>
#include <cstdlib>

namespace {

using report::ExportFormat;
using report::Report;

constexpr std::array kFormats = {ExportFormat::HTML, ExportFormat::CSV, ExportFormat::Text,
                                 ExportFormat::XLSX};

/// Machines with what is noted of them: grouped, counted, summed, with a computed field and a subreport.
const char* const kMachines = R"(
[[formula]]
name = "Half"
text = '{Programs.Size} / 2'
[[group]]
field = "{Programs.Machine}"
order = "as-read"
[[group.header.line]]
objects = [{text = "Machine"}, {field = "{Programs.Machine}"}]
[[group.footer.line]]
objects = [{count = true, width = 60, suffix = " programs"},
           {sum = "{Programs.Size}", left = 60, width = 20, align = "right", suffix = " in all"}]
[[page-header.line]]
objects = [{text = "Programs"}]
[[page-header.line]]
shaded = true
objects = [{text = "Title", width = 60}, {text = "Size", left = 60, width = 20, align = "right"}]
[detail]
name = "Rows"
[[detail.line]]
objects = [{field = "{Programs.Program}", width = 60},
           {field = "{Programs.Size}", left = 60, width = 20, align = "right", format = "number"},
           {field = "{@Half}", left = 80, width = 20}]
[[report-footer.line]]
objects = [{count = true, suffix = " rows"}]
[[page-footer.line]]
objects = [{text = "Printed by hand", name = "CopLine"}]
)";

const char* const kNotes = R"(title = "Notes: all/none"
[table]
name = "Other"
fields = [
  {name = "Machine", type = "text", width = 50},
  {name = "Note", type = "text", width = 50},
  {name = "Flag", type = "boolean"},
]
[[detail.line]]
objects = [{field = "{Other.Note}", width = 50}, {field = "{Other.Flag}", left = 50, width = 50, format = "yes-no"}]
)";

class ExportsTest : public ReportTest {
protected:
    void Add(const std::string& values) {
        connection->Execute("INSERT INTO Programs (Machine, Program, [Size]) VALUES (" + values + ")");
    }
    /// With texts that no statement can hold.
    void AddText(const std::string& program) {
        ADODB::Recordset rows;
        rows.Open("Programs", connection, ADODB::Cursor::Keyset, ADODB::Lock::Optimistic);
        rows.AddNew();
        rows.Fields().Item("Machine").SetText("PC1");
        rows.Fields().Item("Program").SetText(program);
        rows.Update();
    }
    /// Two programs, one machine; a note for it and for another one.
    std::unique_ptr<Report> WithNotes() {
        Add("'PC1', 'Zip', 12");
        connection->Execute("INSERT INTO Other (Machine, Note, Flag) VALUES ('pc1', 'slow', True)");
        connection->Execute("INSERT INTO Other (Machine, Note, Flag) VALUES ('PC2', 'gone', False)");
        const std::string document = std::string(kProgramsHead) + R"(
[[detail.line]]
objects = [{field = "{Programs.Program}"}]
[[detail.line]]
objects = [{subreport = "Notes", name = "Notes", join = ["{Programs.Machine}", "{Other.Machine}"]}]
)";
        auto made = std::make_unique<Report>(document, "main.rpt", [](const std::string&) { return kNotes; });
        made->DatabaseTable(1).SetDataSource(Query("SELECT * FROM Programs"));
        made->Object(3, 2).OpenSubreport().DatabaseTable(1).SetDataSource(Query("SELECT * FROM Other"));
        return made;
    }
    std::string Exported(Report& report, ExportFormat format) const {
        EXPECT_TRUE(Export(report, format, folder.Path("out"), {}));
        return folder.ReadFile("out");
    }
    /// An entry of the workbook that was exported last.
    std::string Entry(const std::string& name) const {
        zip_t* const book = zip_open(folder.Path("out").c_str(), ZIP_RDONLY, nullptr);
        zip_stat_t status{};
        std::string text;
        if (book != nullptr && zip_stat(book, name.c_str(), 0, &status) == 0) {
            text.resize(status.size);
            zip_file_t* const entry = zip_fopen(book, name.c_str(), 0);
            EXPECT_EQ(zip_fread(entry, text.data(), status.size), static_cast<zip_int64_t>(status.size));
            zip_fclose(entry);
        }
        zip_discard(book);
        return text;
    }
    std::string FirstSheet() const { return Entry("xl/worksheets/sheet1.xml"); }
};

TEST_F(ExportsTest, CSVHoldsEveryTextAndRunsNone) {
    Add("'PC1', 'é ß €', 1.5");
    Add("NULL, 'a \"b\", c', -3");
    Add("'PC2', NULL, NULL");
    for (const char* text : {"two\nlines", "=1+1", "+27 11", "-", "@SUM(A1)", "'quoted'", "\ttab",
                             "\xEF\xBC\x9D"
                             "1",
                             "a=b", "a;b", " =1"})
        AddText(text);
    EXPECT_EQ(Exported(*Programs(kMachines), ExportFormat::CSV),
              "\xEF\xBB\xBF"
              "Machine,Program,Size,Half\r\n"
              "PC1,é ß €,1.5,0.75\r\n"
              ",\"a \"\"b\"\", c\",-3,-1.5\r\n"
              "PC2,,,\r\n"
              "PC1,\"two\nlines\",,\r\n"
              "PC1,'=1+1,,\r\n"
              "PC1,'+27 11,,\r\n"
              "PC1,'-,,\r\n"
              "PC1,'@SUM(A1),,\r\n"
              "PC1,''quoted',,\r\n"
              "PC1,\"'\ttab\",,\r\n"
              "PC1,'\xEF\xBC\x9D"
              "1,,\r\n"
              "PC1,a=b,,\r\n"
              "PC1,\"a;b\",,\r\n"
              "PC1, =1,,\r\n");
}

TEST_F(ExportsTest, SubreportsAreTablesOfTheirOwn) {
    const auto made = WithNotes();
    EXPECT_EQ(Exported(*made, ExportFormat::CSV),
              "\xEF\xBB\xBF"
              "Machine,Program\r\n"
              "PC1,Zip\r\n"
              "\r\n"
              "Notes: all/none\r\n"
              "Machine,Note,Flag\r\n"
              "pc1,slow,True\r\n");
    Exported(*made, ExportFormat::XLSX);
    EXPECT_THAT(Entry("xl/workbook.xml"), testing::AllOf(testing::HasSubstr("name=\"Programs\""),
                                                         testing::HasSubstr("name=\"Notes  all none\"")));
    EXPECT_THAT(Entry("xl/worksheets/sheet2.xml"),
                testing::HasSubstr("<t>slow</t></is></c><c r=\"C2\" t=\"b\"><v>1</v></c></row></sheetData>"));
    EXPECT_THAT(
        Exported(*made, ExportFormat::HTML),
        testing::HasSubstr("<tr><td>Zip</td></tr>\n</tbody>\n</table>\n<h2>Notes: all/none</h2>\n"
                           "<table>\n<thead>\n<tr><th scope=\"col\">Note</th><th scope=\"col\">Flag</th>"
                           "</tr>\n</thead>\n<tbody>\n<tr><td>slow</td><td>Yes</td></tr>\n</tbody>"));
}

TEST_F(ExportsTest, GroupsThatStandForRowsAreATableOfTheirOwn) {
    Add("'Many', 'a', 1");
    Add("'few', 'b', 2");
    Add("'MANY', 'c', 4");
    const auto made = Programs(R"(
[[report-header.line]]
objects = [{chart = "{Programs.Machine}", caption = "Name", height = 100}]
[[page-header.line]]
shaded = true
objects = [{text = "Machine", width = 40}, {text = "Rows", left = 40, width = 30}, {text = "Share", left = 70}]
[[group]]
field = "{Programs.Machine}"
[[group.footer.line]]
objects = [{field = "{Programs.Machine}", width = 40}, {count = true, left = 40, width = 30}, {share = true, left = 70}]
)");
    EXPECT_THAT(Exported(*made, ExportFormat::CSV),
                testing::EndsWith("Machine,Program,Size\r\nfew,b,2\r\nMany,a,1\r\nMANY,c,4\r\n\r\n"
                                  "\"Programs, summary\"\r\nMachine,Rows,Share\r\n"
                                  "few,1,0.333333333333333\r\nMany,2,0.666666666666667\r\n"));
    Exported(*made, ExportFormat::XLSX);
    EXPECT_THAT(Entry("xl/worksheets/sheet2.xml"), testing::HasSubstr("<c r=\"B3\"><v>2</v></c>"));
    EXPECT_THAT(Exported(*made, ExportFormat::HTML),
                testing::AllOf(testing::HasSubstr("<th scope=\"col\">Name</th>"),
                               testing::HasSubstr("<tr><td>Many</td><td>2</td><td>67 %</td></tr>")))
        << "called as in the chart";
}

TEST_F(ExportsTest, HTMLFollowsTheDocument) {
    Add("'PC1', 'Zip <b>&\"', 1200");
    Add("'PC1', 'é ß €', NULL");
    Add("'PC2', 'Paint', 5");
    const auto made = Programs(kMachines);
    made->OnFormat("Rows", [](std::vector<report::ObjectFormat>& objects) {
        objects[0].Bold(objects[0].Value() == "Paint");
        objects[1].TextColor(objects[0].Value() == "Paint" ? 32768 : 0);
    });
    const std::string html = Exported(*made, ExportFormat::HTML);
    const std::string head =
        "<thead>\n<tr><th scope=\"col\">Title</th><th scope=\"col\" class=\"r\">Size</th>"
        "<th scope=\"col\">Half</th></tr>\n</thead>\n<tbody>\n";
    EXPECT_EQ(html.substr(html.find("<h1>")),
              "<h1>Programs</h1>\n<table>\n<caption>Machine PC1</caption>\n" + head +
                  "<tr><td>Zip &lt;b&gt;&amp;&quot;</td><td class=\"r\">1,200</td><td>600</td></tr>\n"
                  "<tr><td>é ß €</td><td class=\"r\"></td><td></td></tr>\n"
                  "</tbody>\n<tfoot>\n<tr><td>2 programs</td><td class=\"r\">1200 in all</td><td></td></tr>\n"
                  "</tfoot>\n</table>\n<table>\n<caption>Machine PC2</caption>\n" +
                  head +
                  "<tr><td style=\"font-weight:bold\">Paint</td>"
                  "<td class=\"r\" style=\"color:#008000\">5</td><td>2.5</td></tr>\n"
                  "</tbody>\n<tfoot>\n<tr><td>1 programs</td><td class=\"r\">5 in all</td><td></td></tr>\n"
                  "</tfoot>\n</table>\n<p>3 rows</p>\n<p>Printed by hand</p>\n</body>\n</html>\n");
}

TEST_F(ExportsTest, TextIsPaddedIntoColumns) {
    Add("'PC1', 'é ß €', 1200");
    Add("'PC2', '" + std::string(70, 'c') + "', -1");
    const auto blanks = [](std::size_t count) { return std::string(count, ' '); };
    // Of 110 columns 60 % are 66 and 80 % are 88; each of the two edges puts one more between what it parts.
    EXPECT_EQ(Exported(*Programs(kMachines), ExportFormat::Text),
              "Programs\nTitle" + blanks(80) + "Size\n" + std::string(112, '-') + "\nMachine PC1\né ß €" +
                  blanks(79) + "1,200 600\n1 programs" + blanks(68) + "1200 in all\nMachine PC2\n" +
                  std::string(66, 'c') + blanks(21) + "-1 -0.5\ncccc\n1 programs" + blanks(70) +
                  "-1 in all\n2 rows\n\nPrinted by hand\n");
}

TEST_F(ExportsTest, EveryPageIsValidHTML) {
    if (std::system("tidy -version >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "no tidy here: scripts/setup.sh installs it";
    AddText("<script>alert('x')</script> ]]> -->");
    AddText(std::string("\0\x01\x1F\x7F", 4) + "\xC2\x85 \xFF \xED\xA0\x80 \xEF\xBF\xBE \xF4\x90\x80\x80");
    AddText("");
    const std::string labelled = R"(
[[report-header.line]]
objects = [{chart = "{Programs.Machine}", height = 100}]
[[detail.line]]
objects = [{text = "Program:", width = 20}, {field = "{Programs.Program}", left = 20, width = 80}]
[[detail.line]]
objects = [{text = "Size:", width = 20}, {field = "{Programs.Size}", left = 20, width = 80}]
)";
    const std::string counted = R"(
[[group]]
field = "{Programs.Machine}"
[[group.footer.line]]
objects = [{field = "{Programs.Machine}", width = 50}, {count = true, left = 50, width = 20},
           {share = true, left = 70, width = 30}]
)";
    struct {
        const char* why;
        std::unique_ptr<Report> report;
        const char* holds;
    } cases[] = {
        {"groups and totals", Programs(kMachines), "&lt;script&gt;"},
        {"labels and values", Programs(labelled), "<tr><th scope=\"row\">Program:</th><td>&lt;script"},
        {"groups that are counted alone", Programs(counted), "<tr><td>PC1</td><td>3</td>"},
        {"subreports", WithNotes(), "<h2>Notes: all/none</h2>"},
        {"nothing at all", std::make_unique<Report>(kProgramsHead, "x.rpt"), "<h1>Programs</h1>"},
    };
    for (const auto& c : cases) {
        EXPECT_THAT(Exported(*c.report, ExportFormat::HTML), testing::HasSubstr(c.holds)) << c.why;
        const std::string check =
            "tidy -q -e -utf8 -f " + folder.Path("complaints") + " " + folder.Path("out");
        EXPECT_EQ(std::system(check.c_str()), 0) << c.why << "\n" << folder.ReadFile("complaints");
    }
}

TEST_F(ExportsTest, HTMLCountsAndSumsAsThePagesDo) {
    Add("'Many', 'a', 1");
    Add("'MANY', 'b', 2");
    Add("'few', 'c', 4");
    Report report(std::string(kProgramsHead) + R"(
[[report-header.line]]
objects = [{chart = "{Programs.Machine}", height = 100}]
[[report-footer.line]]
objects = [{sum = "{Programs.Size}", suffix = " in all"}]
)",
                  "x.rpt");
    report.DatabaseTable(1).SetDataSource(
        Query("SELECT Machine, Program, CStr([Size]) AS [Size] FROM Programs"));
    EXPECT_THAT(Exported(report, ExportFormat::HTML),
                testing::AllOf(testing::HasSubstr("<tr><td>Many</td><td class=\"r\">2</td></tr>"),
                               testing::HasSubstr("7 in all")));
}

TEST_F(ExportsTest, WorkbooksKeepNumbersAsNumbersAndTextsAsTexts) {
    Add("'PC1', '=1+1', 1.5");
    Add("'PC1', '0012', -3");
    AddText("bell\x07 é \xF0\x9F\x98\x80 _x0041_");
    AddText(std::string("nul\0nul", 7));
    Exported(*Programs(kMachines), ExportFormat::XLSX);
    const std::string sheet = FirstSheet();
    for (const char* part : {
             "<c r=\"B2\" t=\"inlineStr\"><is><t>=1+1</t></is></c><c r=\"C2\"><v>1.5</v></c><c "
             "r=\"D2\"><v>0.75</v></c>",
             "<c r=\"B3\" t=\"inlineStr\"><is><t>0012</t></is></c><c r=\"C3\"><v>-3</v></c>",
             "<t>bell_x0007_ é \xF0\x9F\x98\x80 _x005F_x0041_</t>",
             "<t>nul_x0000_nul</t>",
             "<pane ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" state=\"frozen\"/>",
             "<autoFilter ref=\"A1:D5\"/>",
         })
        EXPECT_THAT(sheet, testing::HasSubstr(part));
}

TEST_F(ExportsTest, AnExportThatIsStoppedLeavesTheFolderAsItWas) {
    FillPrograms(2000);
    const std::string old = folder.WriteFile("out", "old");
    const std::vector<std::string> files = folder.Names();
    for (const ExportFormat format : kFormats)
        for (const int calls : {0, 1, 4}) {
            int left = calls;
            const auto made = Programs(kMachines);
            EXPECT_FALSE(Export(*made, format, old, [&](double share) {
                EXPECT_TRUE(share >= 0 && share <= 1);
                return left-- > 0;
            }));
            EXPECT_EQ(folder.ReadFile("out"), "old");
            EXPECT_EQ(folder.Names(), files);
        }
}

TEST_F(ExportsTest, AFullDiskLeavesNothingHalfWritten) {
    FillPrograms(3000);
    const std::string old = folder.WriteFile("out", "old");
    const std::vector<std::string> files = folder.Names();
    for (const ExportFormat format : kFormats)
        // A workbook's sheets fill up before it is packed, and it is packed into far less.
        for (const rlim_t limit : {rlim_t{5000}, rlim_t{60000}}) {
            const auto made = Programs(kMachines);
            made->Finish();
            const SmallFiles small(limit);
            EXPECT_NE(ErrorOf([&] { Export(*made, format, old, {}); }), 0) << static_cast<int>(format);
            EXPECT_EQ(folder.ReadFile("out"), "old");
            EXPECT_EQ(folder.Names(), files);
        }
    const auto made = Programs(kMachines);
    EXPECT_EQ(ErrorOf([&] { Export(*made, ExportFormat::CSV, folder.Path("none/out"), {}); }),
              Errors::kPathNotFound);
}

TEST_F(ExportsTest, ASheetThatLacksItsEndIsSeen) {
    FillPrograms(3000);
    const auto made = Programs(kMachines);
    Exported(*made, ExportFormat::XLSX);
    // The rows alone find room, but not what stands around them when the sheet is put together.
    const SmallFiles small(FirstSheet().size() - 50);
    EXPECT_EQ(ErrorOf([&] { Export(*made, ExportFormat::XLSX, folder.Path("out"), {}); }), Errors::kDiskFull);
}

TEST_F(ExportsTest, RowsBeyondASheetGoToTheNext) {
    FillPrograms(25);
    const auto made = Programs(kMachines);
    made->Finish();
    ReplacedFile file(folder.Path("out"));
    ASSERT_TRUE(WriteXLSX(*made, file, {}, 10));
    file.Commit();
    EXPECT_THAT(FirstSheet(), testing::HasSubstr("<autoFilter ref=\"A1:D11\"/>"));
    const std::string last = Entry("xl/worksheets/sheet3.xml");
    EXPECT_THAT(last, testing::HasSubstr("<c r=\"B1\" s=\"1\" t=\"inlineStr\"><is><t>Program</t></is></c>"));
    EXPECT_THAT(last, testing::HasSubstr("<t>Program 000025</t></is></c><c r=\"C6\"><v>24</v></c>"));
    EXPECT_THAT(last, testing::HasSubstr("<autoFilter ref=\"A1:D6\"/>"));
    EXPECT_THAT(Entry("xl/workbook.xml"), testing::HasSubstr("name=\"Programs (3)\""));
}

} // namespace
