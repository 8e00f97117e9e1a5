// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/report/LayoutTest.h"

namespace {

using report::Report;

const std::string kWithNotes =
    "[[detail.line]]\nobjects = [{field = \"{Programs.Machine}\"" + kSize +
    "}]\n[[detail.line]]\nobjects = [{subreport = \"notes\", name = \"Notes\", join = "
    "[\"{Programs.Machine}\", \"{Notes.PC}\"]}]\n";

const std::string kNotesCaptions = "[[report-header.line]]\nobjects = [{text = \"Notes of it\"" + kSize +
                                   "}]\n[[page-header.line]]\nobjects = [{text = \"Note\"" + kSize + "}]\n";
const std::string kNotesDetail = "[[detail.line]]\nobjects = [{field = \"{Notes.Note}\"" + kSize + "}]\n";
const std::string kNotesFooter =
    "[[report-footer.line]]\nobjects = [{count = true, suffix = \" notes\"" + kSize + "}]\n";

class SubreportTest : public LayoutTest {
protected:
    void AddNotes(const std::string& machine, int count, const std::string& text = "note ") {
        for (int i = 1; i <= count; ++i)
            connection->Execute("INSERT INTO Other (Machine, Note) VALUES ('" + machine + "', '" + text +
                                std::to_string(i) + "')");
    }

    std::unique_ptr<Report> Made(const std::string& main, const std::string& notes) {
        auto made = std::make_unique<Report>(kProgramsHead + main, "programs.rpt",
                                             [&](const std::string&) { return kNotesHead + notes; });
        made->DatabaseTable(1).SetDataSource(Query("SELECT * FROM Programs"));
        for (int section = 1; section <= made->SectionCount(); ++section)
            for (int object = 1; object <= made->ObjectCount(section); ++object)
                if (made->Object(section, object).Kind() == report::Kind::Subreport)
                    made->Object(section, object)
                        .OpenSubreport()
                        .DatabaseTable(1)
                        .SetDataSource(Query("SELECT Machine AS PC, Note FROM Other"));
        return made;
    }
};

TEST_F(SubreportTest, RowsFlowInTheirPlaceAndOverPages) {
    Add("a", "x", 1);
    Add("b", "x", 1);
    Add("c", "x", 1);
    AddNotes("A", 12);
    AddNotes("b", 2);
    AddNotes("nobody", 3);
    const auto report = Made(kWithNotes + kDetail, kNotesCaptions + kNotesDetail + kNotesFooter);
    EXPECT_EQ(Laid(*report),
              "a\nNotes of it\nNote\nnote 1\nnote 2\nnote 3\nnote 4\nnote 5\nnote 6\nnote 7\n"
              "=\nNote\nnote 8\nnote 9\nnote 10\nnote 11\nnote 12\n12 notes\nx\n"
              "=\nb\nNotes of it\nNote\nnote 1\nnote 2\n2 notes\nx\n"
              "=\nc\nNotes of it\nNote\n0 notes\nx\n");
}

TEST_F(SubreportTest, AGroupedSubreportCountsItsOwnRows) {
    Add("a", "x", 1);
    AddNotes("a", 2, "even");
    connection->Execute("INSERT INTO Other (Machine, Note) VALUES ('a', 'EVEN1')");
    AddNotes("b", 1, "even");
    const std::string groups =
        "[[group]]\nfield = \"{Notes.Note}\"\n[[group.header.line]]\nobjects = [{field = \"{Notes.Note}\", "
        "prefix = \"[\", suffix = \"]\"" +
        kSize + "}]\n[[group.footer.line]]\nobjects = [{count = true, width = 50" + kSize +
        "}, {share = true, left = 50, decimals = 1" + kSize + "}]\n";
    const auto report = Made(kWithNotes, groups + kNotesFooter);
    EXPECT_EQ(Laid(*report), "a\n[even1]\n2|66.7 %\n[even2]\n1|33.3 %\n3 notes\n");
}

TEST_F(SubreportTest, ATextTallerThanAPageBreaksWithin) {
    Add("a", "x", 1);
    std::string text;
    for (int i = 1; i <= 14; ++i)
        text += "line" + std::to_string(i) + "\n";
    AddNotes("a", 1, text);
    const auto report = Made(Group("Machine", "") + kWithNotes, kNotesDetail);
    EXPECT_EQ(Laid(*report),
              "[a]\na\nline1\nline2\nline3\nline4\nline5\nline6\nline7\nline8\n"
              "=\n[a]\nline9\nline10\nline11\nline12\nline13\nline14\n1\n");
}

TEST_F(SubreportTest, ItsFormatEventSeesItsRows) {
    Add("a", "x", 1);
    AddNotes("a", 2);
    const auto report = Made(kWithNotes, kNotesDetail);
    Report& notes = report->Object(2 + 1, 2).OpenSubreport();
    std::string seen;
    notes.OnFormat(notes.Definition().sections[2].name,
                   [&](std::vector<report::ObjectFormat>& objects) { seen += objects[0].Value() + ";"; });
    Build(*report, 0);
    EXPECT_EQ(seen, "note 1;note 2;");
}

} // namespace
