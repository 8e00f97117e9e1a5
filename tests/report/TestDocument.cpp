// SPDX-License-Identifier: GPL-3.0-or-later
#include "DocumentSamples.h"
#include "platform/report/Document.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using report::Document;
using report::ParseDocument;

/// Empty where there is none.
std::string Complaint(const std::string& text) {
    const RunTimeError failure = FailureOf([&] { ParseDocument(text, "Drives.rpt"); });
    EXPECT_TRUE(failure.number == 0 || failure.number == -1) << failure.number;
    return failure.description;
}

struct Changed {
    std::string text;
    /// Where the change stands.
    std::ptrdiff_t line = 1;
};

/// The sample with `part` in the place of `old`, which stands in it once.
Changed With(const std::string& old, const std::string& part) {
    std::string text = Samples::kDocument;
    const std::size_t place = text.find(old);
    EXPECT_NE(place, std::string::npos) << old;
    const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(place), '\n') + 1;
    return {text.replace(place, old.size(), part), line};
}

TEST(Document, HoldsWhatItsTextSays) {
    const Document document = ParseDocument(Samples::kDocument, "Drives.rpt");
    EXPECT_EQ(document.title, "Drives");
    EXPECT_TRUE(document.isLandscape);
    ASSERT_EQ(document.groups.size(), 2U);
    EXPECT_EQ(document.groups[0].order, report::SortOrder::AsRead);
    EXPECT_EQ(document.groups[1].field, 3U);

    std::string order;
    for (const report::Section& section : document.sections)
        order += section.name + ":" + std::to_string(static_cast<int>(section.kind)) +
                 std::to_string(section.group) + " ";
    EXPECT_EQ(order,
              "Section1:00 Section2:10 Section4:20 Section5:21 Section3:30 Section6:41 Section7:40 "
              "Section8:50 Section9:60 ")
        << "every section is there, and the name that the detail took is not given to another";

    const std::vector<report::ObjectDefinition>& footer = document.sections[6].lines.at(0).objects;
    EXPECT_EQ(footer[1].source.kind, report::Source::Kind::Share);
    EXPECT_EQ(report::FormatValue(footer[1].format, 0.125, false), "12.5 %");
    EXPECT_EQ(footer[2].source.index, 2U);
    EXPECT_EQ(footer[2].width, 40) << "the rest of the width where none is given";
    EXPECT_EQ(document.sections[2].lines.at(0).objects[0].style.color, 0x0080FFU) << "red is the low byte";
    const report::ObjectDefinition& subreport = document.sections[4].lines.at(1).objects.at(0);
    EXPECT_EQ(subreport.documentName + subreport.childReference, "SubFiles{Files.Root}");

    const ADODB::Value small[] = {std::string("PC1"), std::string("C:"), 5.0, 0.0};
    const ADODB::Value empty[] = {std::string("PC1"), {}, 5.0, 0.0};
    EXPECT_TRUE(document.selection->IsTrue(small));
    EXPECT_FALSE(document.selection->IsTrue(empty));
    EXPECT_EQ(std::get<std::string>(document.formulas[1].formula.Evaluate(small)), "small");
}

TEST(Document, NamesLineAndCauseOfWhatIsWrong) {
    const struct {
        const char* why;
        Changed document;
        const char* complaint;
    } cases[] = {
        {"no such format", {"title = "}, "rror"},
        {"a misspelled key", With("orientation", "orientaton"), "\"orientaton\" has no meaning in"},
        {"a misspelled key of an object", With("bold = true", "bald = true"), "\"bald\" has no"},
        {"a key of another kind of object", With("rule = true", "rule = true, bold = true"),
         "\"bold\" has no meaning in an object"},
        {"no title", With("title = \"Drives\"", ""), "a report document has no \"title\""},
        {"a wrong type", With("bold = true", "bold = 1"), "\"bold\" must be true or false"},
        {"a date", With("\"landscape\"", "2001-11-02"), "dates and times have no meaning"},
        {"a value outside of the choices", With("\"landscape\"", "\"square\""),
         "\"orientation\" must be one of \"portrait\", \"landscape\""},
        {"no table", {"title = 'x'"}, "the document has no [table]"},
        {"a table without fields", {"title = 'x'\n[table]\nname = 'T'", 2}, "[table] has no fields"},
        {"a field twice, in another case", With("\"Root\"", "\"computerName\""),
         "the name \"computerName\" stands twice"},
        {"a text without its width", With(", width = 50}", "}"), "the text field \"COMPUTERNAME\""},
        {"an unknown field", With("{Drives.Root}\", name", "{Drives.Rot}\", name"),
         "the table has no field {Drives.Rot}"},
        {"an unknown formula", With("{@Judgement}", "{@Judgment}"),
         "the document has no formula {@Judgment}"},
        {"a formula that uses a later one", With("{Drives.Size}, \"mega", "{@Judgement}, \"mega"),
         "position 6: no formula before this one has the name {@Judgement}"},
        {"a formula that does not parse", With("not IsNull", "nut IsNull"),
         "position 23: \"nut\" has no meaning"},
        {"a place outside of the width", With("left = 20, width = 80", "left = 21, width = 80"),
         "the object does not fit within the width"},
        {"no width", With("width = 50, italic", "width = 0, italic"), "the object does not fit"},
        {"letters of no size", With("size = 10", "size = nan"), "\"size\" must be a number from 4"},
        {"no colour", With("#ff8000", "#ff80001"), "\"color\" must be written"},
        {"two kinds of object in one", With("{count = true,", "{count = true, share = true,"),
         "an object is either \"count\" or \"share\""},
        {"an object of no kind", With("{special = \"print-date\"}", "{}"), "an object says"},
        {"a count before the rows", With("{chart = \"{Drives.Root}\", height = 200}", "{count = true}"),
         "\"count\" is not known in this section"},
        {"a sum of texts", With("{sum = \"{Drives.Size}\"", "{sum = \"{Drives.Root}\""),
         "only numbers have a sum"},
        {"decimals of a text", With("decimals = 1", "format = \"date\", decimals = 1"), "\"decimals\" needs"},
        {"a subreport beside something", With("{subreport =", "{text = ''}, {subreport ="),
         "a subreport stands alone"},
        {"a subreport that joins nothing", With(", \"{Files.Root}\"]", "]"), "\"join\" names"},
        {"a chart on every page", With("{rule = true", "{chart = \"{Drives.Root}\""),
         "charts stand in the report's header or footer"},
        {"an object's name twice", With("name = \"Root\", width = 20", "name = \"CapDrive\", width = 20"),
         "the name \"CapDrive\" stands twice"},
        {"control characters in a name", With("orientation", "\"orien\\u001b[2Jtation\""),
         "\"orien [2Jtation\""},
        {"a text of megabytes", {std::string(1 << 21, ' ')}, "larger than a megabyte"},
        {"more fields than anybody prints",
         With("fields = [", "fields = [" + Repeated("{name = \"F\", type = \"number\"},", 300)),
         "\"fields\" has more than 256 items"},
    };
    for (const auto& c : cases) {
        const std::string complaint = Complaint(c.document.text);
        const std::string place = "Drives.rpt, line " + std::to_string(c.document.line) + ": ";
        EXPECT_TRUE(complaint.starts_with(place)) << c.why << '\n' << complaint;
        EXPECT_NE(complaint.find(c.complaint), std::string::npos) << c.why << '\n' << complaint;
    }
}

/// Every level of tables takes stack when the tables are taken down, so none may get deep.
TEST(Document, RefusesDepthInEveryForm) {
    const struct {
        const char* why;
        std::string text;
    } cases[] = {
        {"lists", "a = " + Repeated("[", 100000)},
        {"tables", "a = " + Repeated("{a=", 100000)},
        {"a header of many parts", "[a" + Repeated(".a", 400000) + "]"},
        {"of many quoted parts", "[a" + Repeated(" . 'a'", 100000) + "]\nb = 1"},
        {"a key of many parts", "a" + Repeated(".a", 400000) + " = 1"},
        {"both by turns", "a = " + Repeated("[{a" + Repeated(".a", 200) + " = ", 200)},
        {"behind a text that looks open",
         "t = '''x''''\na = \"\\\"\" # '''\nb" + Repeated(".a", 400000) + " = 1"},
    };
    for (const auto& c : cases) {
        const std::string complaint = Complaint(c.text);
        EXPECT_TRUE(complaint.find("too deep") != std::string::npos ||
                    complaint.find("too many parts") != std::string::npos)
            << c.why << '\n'
            << complaint;
    }
    EXPECT_EQ(
        Complaint(
            With("title = \"Drives\"", "title = '''....................[[[[[[[[[[[[[[[[[[[[\n'''").text),
        "")
        << "texts may hold what they like";
}

TEST(Document, RefusesRowsThatNobodyCouldWaitFor) {
    const auto complaint = [](int objects) {
        return Complaint(
            "title = 'x'\n[table]\nname = 'T'\nfields = [{name = 'N', type = 'number'}]\n"
            "[[formula]]\nname = 'F'\ntext = '1" +
            Repeated(" + 1", 900) + "'\n[detail]\n[[detail.line]]\nobjects = [" +
            Repeated("{field = '{@F}'},", objects) + "]\n");
    };
    EXPECT_EQ(complaint(10), "");
    EXPECT_NE(complaint(30).find("too many steps"), std::string::npos);
}

TEST(Document, SurvivesWhatIsNoDocument) {
    std::mt19937 random(20020306);
    int valid = 0;
    for (int i = 0; i < 3000; ++i) {
        const std::string complaint = Complaint(Damaged(random, Samples::kDocument, Samples::kDocument));
        valid += complaint.empty() ? 1 : 0;
        ASSERT_TRUE(complaint.empty() || complaint.starts_with("Drives.rpt, line ")) << complaint;
    }
    EXPECT_GT(valid, 20) << "some of them must get through";
}

} // namespace
