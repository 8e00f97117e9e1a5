// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/Layout.h"
#include "tests/report/LayoutTest.h"

#include <cmath>

namespace {

using namespace std::chrono_literals;
using report::Layout;
using report::Page;

// A line is 12 points high and a character 6 wide in the tests' style, so a page of the tests holds 10 lines
// of 40 characters.

TEST_F(LayoutTest, EveryPageHasItsHeaderAndFooter) {
    FillPrograms(20);
    const auto report = Programs(kTitle + kCaption + kDetail + kFooter);
    EXPECT_EQ(Laid(*report),
              "All programs\nProgram\n"
              "Program 000001\nProgram 000002\nProgram 000003\nProgram 000004\nProgram 000005\n"
              "Program 000006\nProgram 000007\nPage 1|of 3\n"
              "=\nProgram\n"
              "Program 000008\nProgram 000009\nProgram 000010\nProgram 000011\nProgram 000012\n"
              "Program 000013\nProgram 000014\nProgram 000015\nPage 2|of 3\n"
              "=\nProgram\n"
              "Program 000016\nProgram 000017\nProgram 000018\nProgram 000019\nProgram 000020\n"
              "Page 3|of 3\n");
    EXPECT_DOUBLE_EQ(Build(*report, 2).texts.back().baseline, 117) << "the footer stands at the bottom";
}

TEST_F(LayoutTest, NoRowsMakeOnePageOfHeaders) {
    const auto report = Programs(kTitle + kCaption + Group("Machine", "") + kDetail +
                                 "[[report-footer.line]]\nobjects = [{count = true, suffix = \" programs\"" +
                                 kSize + "}]\n" + kFooter);
    EXPECT_EQ(Laid(*report), "All programs\nProgram\n0 programs\nPage 1|of 1\n");
}

struct Story {
    const char* why;
    std::string document;
    /// Rows: machine and program.
    std::vector<std::pair<std::string, std::string>> rows;
    std::string pages;
};

class Pagination : public LayoutTest, public testing::WithParamInterface<Story> {};

TEST_P(Pagination, Divides) {
    for (const auto& [machine, program] : GetParam().rows)
        Add(machine, program, 1);
    const auto report = Programs(GetParam().document);
    EXPECT_EQ(Laid(*report), GetParam().pages) << GetParam().why;
}

std::vector<std::pair<std::string, std::string>> Machines(
    std::initializer_list<std::pair<const char*, int>> list) {
    std::vector<std::pair<std::string, std::string>> rows;
    for (const auto& [machine, count] : list)
        for (int i = 1; i <= count; ++i)
            rows.emplace_back(machine, machine + std::to_string(i));
    return rows;
}

/// Words from `first` to `last`, each as wide as a line.
std::string Words(int first, int last, char between) {
    std::string text;
    for (int i = first; i <= last; ++i)
        text += "word" + std::to_string(i) + std::string(33, '.') + between;
    return text;
}

/// A text of so many lines, and how lines of it show.
std::string Words(int count) {
    return Words(1, count, ' ');
}
std::string Lines(int first, int last) {
    return Words(first, last, '\n');
}

const Story kStories[] = {
    {"a group that goes on repeats its header", Group("Machine", "") + kDetail, Machines({{"a", 12}}),
     "[a]\na1\na2\na3\na4\na5\na6\na7\na8\na9\n=\n[a]\na10\na11\na12\n"},
    {"unless the document says no", Group("Machine", "repeat-header = false\n") + kDetail,
     Machines({{"a", 12}}), "[a]\na1\na2\na3\na4\na5\na6\na7\na8\na9\n=\na10\na11\na12\n"},
    {"a header does not stand last on a page", Group("Machine", "") + kDetail, Machines({{"a", 8}, {"b", 2}}),
     "[a]\na1\na2\na3\na4\na5\na6\na7\na8\n=\n[b]\nb1\nb2\n"},
    {"a footer takes the last row along", Group("Machine", "", true) + kDetail, Machines({{"a", 9}}),
     "[a]\na1\na2\na3\na4\na5\na6\na7\na8\n=\n[a]\na9\n9 in all\n"},
    {"a group that fits on a page is not broken", Group("Machine", "keep-together = true\n", true) + kDetail,
     Machines({{"a", 4}, {"b", 3}, {"c", 1}}),
     "[a]\na1\na2\na3\na4\n4 in all\n=\n[b]\nb1\nb2\nb3\n3 in all\n[c]\nc1\n1 in all\n"},
    {"one that fits on none begins where it comes", Group("Machine", "keep-together = true\n") + kDetail,
     Machines({{"a", 2}, {"b", 10}}), "[a]\na1\na2\n[b]\nb1\nb2\nb3\nb4\nb5\nb6\n=\n[b]\nb7\nb8\nb9\nb10\n"},
    {"a group that begins a page", Group("Machine", "", false, "new-page = true\n") + kDetail,
     Machines({{"a", 2}, {"b", 1}}), "[a]\na1\na2\n=\n[b]\nb1\n"},
    {"rows that begin a page", "[detail]\nnew-page = true\n" + kDetail, Machines({{"a", 3}}),
     "a1\n=\na2\n=\na3\n"},
    {"a row is kept whole where it fits on a page",
     kDetail,
     {{"a", Words(8)}, {"b", Words(3)}},
     Lines(1, 8) + "=\n" + Lines(1, 3)},
    {"a taller one breaks, with two lines on either side",
     kDetail,
     {{"a", "one"}, {"b", Words(11)}, {"c", "three"}},
     "one\n" + Lines(1, 9) + "=\n" + Lines(10, 11) + "three\n"},
    {"two lines stay on the other side", kDetail, {{"a", Words(11)}}, Lines(1, 9) + "=\n" + Lines(10, 11)},
    {"and on this side: one line left is no room for it",
     kDetail,
     {{"a", Words(9)}, {"b", Words(11)}},
     Lines(1, 9) + "=\n" + Lines(1, 9) + "=\n" + Lines(10, 11)},
    {"a header goes with the first lines of a tall row",
     Group("Machine", "") + kDetail,
     {{"a", Words(7)}, {"b", Words(12)}},
     "[a]\n" + Lines(1, 7) + "=\n[b]\n" + Lines(1, 9) + "=\n[b]\n" + Lines(10, 12)},
    {"a text of many pages",
     kDetail,
     {{"a", Words(25)}},
     Lines(1, 10) + "=\n" + Lines(11, 20) + "=\n" + Lines(21, 25)},
    {"a high footer of the report goes alone",
     kDetail + "[[report-footer.line]]\nobjects = [{count = true, suffix = \" rows\"" + kSize +
         "}]\n[[report-footer.line]]\nspace-before = 36\nobjects = [{text = \"end\"" + kSize + "}]\n",
     Machines({{"a", 7}}), "a1\na2\na3\na4\na5\na6\na7\n=\n7 rows\nend\n"},
    {"a short one takes the last row along",
     kDetail + "[[report-footer.line]]\nobjects = [{count = true, suffix = \" rows\"" + kSize + "}]\n",
     Machines({{"a", 10}}), "a1\na2\na3\na4\na5\na6\na7\na8\na9\n=\na10\n10 rows\n"},
    {"headers and footers alone, with nothing between", Group("Machine", "", true),
     Machines({{"a", 500}, {"b", 7}}), "[a]\n500 in all\n[b]\n7 in all\n"},
    {"groups within groups", Group("Machine", "", true) + Group("Program", ""),
     Machines({{"a", 2}, {"b", 1}}), "[a]\n[a1]\n[a2]\n2 in all\n[b]\n[b1]\n1 in all\n"},
};

INSTANTIATE_TEST_SUITE_P(Stories, Pagination, testing::ValuesIn(kStories),
                         [](const auto& story) { return "Story" + std::to_string(story.index); });

TEST_F(LayoutTest, TheGroupTreeKnowsPagesAndRows) {
    for (const auto& [machine, program] : Machines({{"b", 3}, {"a", 9}}))
        Add(machine, program, 1);
    Add("", "nameless", 1);
    const auto report = Programs(Group("Machine", "order = \"ascending\"\n") + kDetail);
    report->Finish();
    const auto layout = Lay(*report);
    std::string tree;
    for (std::size_t i = 0; i < layout->GroupCount(); ++i) {
        const report::GroupEntry entry = layout->Group(i);
        tree += entry.title + ": " + std::to_string(entry.rowCount) + " from row " +
                std::to_string(entry.firstRow) + " on page " + std::to_string(entry.page) + " at " +
                std::to_string(std::lround(layout->TopOf(entry))) + "\n";
    }
    EXPECT_EQ(tree,
              ": 1 from row 0 on page 0 at 0\na: 9 from row 1 on page 0 at 24\n"
              "b: 3 from row 10 on page 1 at 36\n")
        << "below the header that is repeated and the last two rows of a";
    EXPECT_EQ(ErrorOf([&] { layout->Group(3); }), Errors::kOutOfRange);
    EXPECT_EQ(ErrorOf([&] { layout->BuildPage(layout->PageCount()); }), Errors::kOutOfRange);
}

TEST_F(LayoutTest, RowsThatReadAlikeAreOneGroup) {
    // Kilobytes; 98 MB are 100,352 of them.
    for (const char* row : {"NULL, 101888", "'', 100500", "'  ', 100352", "'a', 99841", "'A', 99839"})
        connection->Execute("INSERT INTO Programs (Machine, Program, [Size]) VALUES (" +
                            std::string(row).insert(std::string(row).find(','), ", 'x'") + ")");
    const struct {
        const char* field;
        const char* options;
        const char* groups;
    } cases[] = {
        {"Size", "format = 'megabytes-kb'\n", "100 MB: 1/98 MB: 3/97 MB: 1/"},
        {"Size", "format = 'megabytes-kb'\norder = 'ascending'\n", "97 MB: 1/98 MB: 3/100 MB: 1/"},
        {"Size", "", "101888: 1/100500: 1/100352: 1/99841: 1/99839: 1/"},
        {"Machine", "", ": 3/a: 2/"},
        {"Machine", "order = 'descending'\n", "a: 2/: 3/"},
    };
    for (const auto& c : cases) {
        const auto report = Programs(Group(c.field, c.options) + kDetail);
        const auto layout = Lay(*report);
        std::string groups;
        for (std::size_t i = 0; i < layout->GroupCount(); ++i)
            groups += layout->Group(i).title + ": " + std::to_string(layout->Group(i).rowCount) + "/";
        EXPECT_EQ(groups, c.groups) << c.field << c.options;
    }
}

TEST_F(LayoutTest, FootersSumAndShareTheirGroups) {
    Add("a", "x", 1.5);
    Add("A", "y", 2);
    Add("b", "x", 96.5);
    Add("b", "z", 0);
    Add("c", "z", 0);
    connection->Execute("UPDATE Programs SET [Size] = Null WHERE Program = 'z'");
    const auto report = Programs(
        "[[group]]\nfield = \"{Programs.Machine}\"\n[[group.footer.line]]\nobjects = ["
        "{field = \"{Programs.Machine}\", width = 20" +
        kSize + "}, {sum = \"{Programs.Size}\", left = 20, width = 40" + kSize +
        ", prefix = \"=\"}, {share = true, left = 60, width = 40" + kSize +
        "}]\n"
        "[[report-footer.line]]\nobjects = [{sum = \"{Programs.Size}\"" +
        kSize + "}]\n");
    EXPECT_EQ(Laid(*report), "a|=3.5|40 %\nb|=96.5|40 %\nc|20 %\n100\n")
        << "called as the group began; a sum of unknown numbers is no 0";
}

TEST_F(LayoutTest, PagesFollowWhileRowsAreStillRead) {
    FillPrograms(1000);
    const auto report = Programs(kCaption + Group("Machine", "", true) + kDetail + kFooter);
    const auto layout = std::make_unique<Layout>(*report, paper, measure);
    std::string first;
    while (report->Work(0ms) || !layout->IsComplete()) {
        layout->Work(0ms);
        if (layout->PageCount() > 1 && first.empty()) {
            EXPECT_FALSE(report->IsComplete()) << "the first page need not wait";
            first = Shown(layout->BuildPage(0));
            EXPECT_TRUE(first.ends_with("Page 1\n")) << "the number of pages is not known yet";
        }
    }
    const auto whole = Lay(*report);
    ASSERT_EQ(layout->PageCount(), whole->PageCount());
    std::vector<std::size_t> order(whole->PageCount());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i * 37 % order.size();
    for (const std::size_t page : order)
        ASSERT_EQ(Shown(layout->BuildPage(page)), Shown(whole->BuildPage(page))) << "page " << page;
    EXPECT_TRUE(Shown(whole->BuildPage(0)).starts_with(first.substr(0, first.size() - 1)));
}

TEST_F(LayoutTest, FormatEventsPaintAndMoveNothing) {
    Add("a", Words(2), 1);
    Add("b", "plain", 2);
    const auto report = Programs("[detail]\nname = \"Section3\"\n" + kDetail);
    const std::string before = Laid(*report);
    std::vector<std::string> seen;
    report->OnFormat("Section3", [&](std::vector<report::ObjectFormat>& objects) {
        seen.push_back(objects.at(0).Name() + "=" + objects[0].Value().substr(0, 5));
        objects[0].TextColor(255);
        objects[0].Bold(true);
    });
    EXPECT_EQ(Laid(*report), before);
    EXPECT_EQ(seen, (std::vector<std::string>{"Field1=word1", "Field1=plain"}));
    for (const report::PlacedText& text : Build(*report, 0).texts) {
        EXPECT_EQ(text.style.color, 255U);
        EXPECT_TRUE(text.style.isBold);
    }
}

TEST_F(LayoutTest, AChartDividesTheRows) {
    for (const auto& [machine, program] : Machines({{"few", 1}, {"Many", 3}}))
        Add(machine, program, 1);
    Add("MANY", "x", 1);
    Add("", "x", 1);
    connection->Execute("INSERT INTO Programs (Program) VALUES ('x')");
    const auto report = Programs(
        "[[report-header.line]]\nobjects = [{chart = \"{Programs.Machine}\", height = 40}]\n" + kDetail);
    const Page page = Build(*report, 0);
    ASSERT_EQ(page.charts.size(), 1U);
    using Slices = std::vector<std::pair<std::string, std::size_t>>;
    EXPECT_EQ(page.charts[0].slices, (Slices{{"Many", 4}, {"(none)", 2}, {"few", 1}}));
    EXPECT_DOUBLE_EQ(page.texts.front().top, 40);
}

TEST_F(LayoutTest, OneBaselineForTextsOfOneLine) {
    Add("a", "x", 1);
    const auto report = Programs(R"([[detail.line]]
shaded = true
space-before = 6
objects = [{field = "{Programs.Machine}", width = 50, size = 20}, {field = "{Programs.Program}", left = 50, size = 10, align = "right"}]
[[detail.line]]
objects = [{rule = true, left = 25, width = 50, color = "#0000ff"}]
)");
    const Page page = Build(*report, 0);
    ASSERT_EQ(page.texts.size(), 2U);
    EXPECT_DOUBLE_EQ(page.texts[0].baseline, 6 + 18);
    EXPECT_DOUBLE_EQ(page.texts[1].baseline, page.texts[0].baseline);
    EXPECT_EQ(page.texts[1].alignment, report::Alignment::Right);
    EXPECT_DOUBLE_EQ(page.texts[1].left + page.texts[1].width, 242);
    ASSERT_EQ(page.fills.size(), 2U);
    EXPECT_DOUBLE_EQ(page.fills[0].top, 6) << "the space above is not shaded";
    EXPECT_DOUBLE_EQ(page.fills[0].height, 24);
    EXPECT_DOUBLE_EQ(page.fills[1].left, 61);
    EXPECT_EQ(page.fills[1].color, 0xFF0000U) << "red is in the low byte";
}

TEST_F(LayoutTest, WrappedLinesSayHowTheyGoOn) {
    Add("a", "one " + std::string(45, 'x'), 1);
    const auto report = Programs(kDetail);
    const Page page = Build(*report, 0);
    ASSERT_EQ(page.texts.size(), 3U);
    EXPECT_EQ(page.texts[1].continuation, report::Continuation::AfterBlank);
    EXPECT_EQ(page.texts[2].continuation, report::Continuation::WithinWord);
}

} // namespace
