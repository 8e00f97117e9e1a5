// SPDX-License-Identifier: GPL-3.0-or-later
// Documents, papers and rows by chance, the same for each run: what must hold of any layout.
#include "platform/text.h"
#include "tests/report/LayoutTest.h"

#include <algorithm>
#include <random>

namespace {

using namespace std::chrono_literals;
using report::Layout;
using report::Page;
using report::PlacedText;

class Chance {
public:
    explicit Chance(unsigned seed) : mRandom(seed) {}
    int Below(int limit) { return static_cast<int>(mRandom() % static_cast<unsigned>(limit)); }
    bool OneIn(int count) { return Below(count) == 0; }

private:
    std::mt19937 mRandom;
};

std::string RandomText(Chance& chance) {
    static const char* const kPieces[] = {"word", " ",      "   ", "é€",       "C:\\Programs\\Some\\Tool.exe",
                                          "\n",   "\x01\t", "ß",   "\xff\xc3", "averyveryveryverylongword"};
    std::string text;
    for (int i = chance.OneIn(20) ? 300 : chance.Below(12); i > 0; --i)
        text += kPieces[chance.Below(10)];
    return text;
}

/// A document whose every row shows its number, in a style of its own size, behind "#".
std::string RandomDocument(Chance& chance) {
    const auto size = [&] { return std::to_string(6 + chance.Below(8)); };
    const auto flag = [&](int of) { return chance.OneIn(of) ? "true" : "false"; };
    std::string text;
    if (chance.OneIn(2))
        text += kTitle;
    if (chance.OneIn(2))
        text += kCaption;
    const char* const fields[] = {"Machine", "Program"};
    for (int level = 0; level < chance.Below(3); ++level) {
        text += std::string("[[group]]\nfield = \"{Programs.") + fields[level] + "}\"\norder = \"" +
                (chance.OneIn(2) ? "as-read" : "ascending") + "\"\nkeep-together = " + flag(2) +
                "\nrepeat-header = " + flag(2) + "\n";
        if (!chance.OneIn(4))
            text += "[group.header]\nnew-page = " + std::string(flag(6)) +
                    "\n[[group.header.line]]\nobjects = [{field = \"{Programs." + fields[level] +
                    "}\", prefix = \"[\", overflow = \"cut\", size = " + size() + "}]\n";
        if (chance.OneIn(2))
            text +=
                "[[group.footer.line]]\nobjects = [{count = true, suffix = \" in all\", size = " + size() +
                "}]\n";
    }
    text += "[detail]\nnew-page = " + std::string(flag(12)) +
            "\n[[detail.line]]\nobjects = [{field = \"{Programs.Size}\", prefix = \"#\", overflow = \"cut\", "
            "width = "
            "30, size = 6}, {field = \"{Programs.Program}\", left = 30, width = " +
            std::to_string(1 + chance.Below(70)) + ", size = " + size() + "}]\n";
    if (chance.OneIn(3))
        text += "[[detail.line]]\nspace-before = " + size() +
                "\nobjects = [{field = \"{Programs.Program}\", overflow = \"cut\", size = " + size() + "}]\n";
    if (chance.OneIn(2))
        text += "[[report-footer.line]]\nobjects = [{count = true" + kSize + "}]\n";
    return text + kFooter;
}

constexpr std::size_t kRows = 120;
constexpr std::size_t kFewRows = 30;

class RandomLayout : public LayoutTest, public testing::WithParamInterface<unsigned> {
protected:
    void FillByChance(Chance& chance, std::size_t count) {
        ADODB::Recordset rows;
        rows.Open("Programs", connection, ADODB::Cursor::Keyset, ADODB::Lock::Optimistic);
        connection->BeginTrans();
        for (std::size_t i = 0; i < count; ++i) {
            rows.AddNew();
            rows.Fields().Item(0).SetText("PC" +
                                          std::to_string(static_cast<int>(i) / (1 + chance.Below(40))));
            rows.Fields().Item(1).SetText(FirstCharacters(RandomText(chance), 255));
            rows.Fields().Item(2).SetNumber(static_cast<double>(i));
            rows.Update();
        }
        connection->CommitTrans();
    }
};

/// What a page shows of the rows' numbers, in its order.
std::vector<std::string> NumbersOn(const Page& page) {
    std::vector<std::string> numbers;
    for (const PlacedText& text : page.texts)
        if (text.text.starts_with('#') && text.style.size == 6)
            numbers.push_back(text.text);
    return numbers;
}

TEST_P(RandomLayout, ShowsEachRowOnceWithinThePaper) {
    Chance chance(GetParam());
    FillByChance(chance, kRows);
    const auto report = Programs(RandomDocument(chance));
    paper = {300.0 + chance.Below(400), 200.0 + chance.Below(600), 20, 30, 10, 40};

    // In slices, as rows come, and whole.
    const auto sliced = std::make_unique<Layout>(*report, paper, measure);
    while (report->Work(0ms) || !sliced->IsComplete())
        sliced->Work(0ms);
    const auto whole = Lay(*report);
    ASSERT_EQ(sliced->PageCount(), whole->PageCount());

    std::vector<std::string> expected;
    report::Row row;
    for (std::size_t i = 0; i < report->RowCount(); ++i) {
        report->ReadRow(i, row);
        expected.push_back("#" + NumberText(std::get<double>(row[2])));
    }
    ASSERT_EQ(expected.size(), kRows);

    std::vector<std::string> shown;
    for (std::size_t number = 0; number < whole->PageCount(); ++number) {
        const Page page = whole->BuildPage(number);
        ASSERT_EQ(Shown(sliced->BuildPage(number)), Shown(page));
        const std::vector<std::string> numbers = NumbersOn(page);
        shown.insert(shown.end(), numbers.begin(), numbers.end());
        const double footer = page.texts.back().top;
        for (const PlacedText& text : page.texts) {
            EXPECT_GE(text.top, paper.topMargin - 0.01);
            EXPECT_LE(text.top + text.height, paper.height - paper.bottomMargin + 0.02) << text.text;
            EXPECT_GE(text.left, paper.leftMargin);
            EXPECT_LE(text.left + text.width, paper.width - paper.rightMargin);
            EXPECT_LE(measure.Width(text.style, text.text),
                      std::max(text.width, text.style.size * 0.6) + 0.02);
            EXPECT_TRUE(text.top + text.height <= footer + 0.02 || text.top == footer) << "over the footer";
        }
        // The footer's two texts stand last.
        ASSERT_GE(page.texts.size(), 3U) << "a page without a row";
        EXPECT_FALSE(page.texts[page.texts.size() - 3].text.starts_with('['))
            << "a header stands last on page " << number;
    }
    EXPECT_EQ(shown, expected);
}

TEST_P(RandomLayout, EndsOnPaperThatIsTooSmall) {
    Chance chance(GetParam() + 1000);
    FillByChance(chance, kFewRows);
    const auto report = Programs(RandomDocument(chance));
    const double sides[] = {0, -50, 1, 13, 40, 120, 800};
    const auto side = [&] { return sides[chance.Below(7)]; };
    paper = {side(), side(), side(), side(), side(), side()};
    const auto layout = Lay(*report);
    ASSERT_GE(layout->PageCount(), 1U);
    std::size_t rows = 0;
    for (std::size_t number = 0; number < layout->PageCount(); ++number)
        rows += NumbersOn(layout->BuildPage(number)).size();
    // A paper without width shows no texts.
    EXPECT_TRUE(rows == kFewRows || paper.width - paper.leftMargin - paper.rightMargin < 100) << rows;
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomLayout, testing::Range(1U, 31U));

} // namespace
