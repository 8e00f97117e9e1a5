// SPDX-License-Identifier: GPL-3.0-or-later
// Sorting and filtering the rows of a list.
#include "browser/CaselessSearch.h"
#include "browser/ListModel.h"
#include "platform/text.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace {

using Strings = std::vector<std::string>;
constexpr auto kUp = Qt::AscendingOrder;
constexpr auto kDown = Qt::DescendingOrder;

/// A list of one column and of a second one that tells in what order the rows were added.
class ListOrderTest : public testing::Test {
protected:
    ListOrderTest() {
        list.AddColumn("Text", 1000);
        list.AddColumn("Number", 1000);
    }

    void Add(const Strings& texts) {
        for (const std::string& text : texts) {
            list.AddCountedRow(text, "?MULTI?UNI?", text, Image::None);
            list.SetSubItem(1, std::to_string(++added));
        }
        list.Publish();
    }

    Strings Column(int column) const {
        Strings texts;
        for (int row = 0; row < list.rowCount(); ++row)
            texts.push_back(list.index(row, column).data().toString().toStdString());
        return texts;
    }

    ListModel list;
    QAbstractItemModelTester tester{&list, QAbstractItemModelTester::FailureReportingMode::Fatal};
    int added = 0;
};

TEST_F(ListOrderTest, SortsAsTextsWithoutRegardToCase) {
    Add({"10Mb", "9Mb", "paint", "Paint", "PAINT", "", "pain", "[x]", "zebra"});
    list.Sort(0, kUp);
    EXPECT_EQ(Column(0), (Strings{"", "10Mb", "9Mb", "[x]", "pain", "paint", "Paint", "PAINT", "zebra"}));
    list.Sort(0, kDown);
    EXPECT_EQ(Column(0), (Strings{"zebra", "paint", "Paint", "PAINT", "pain", "[x]", "9Mb", "10Mb", ""}))
        << "equal texts stay in the order of the query";
    list.Sort(5, kDown);
    EXPECT_EQ(Column(1).front(), "1") << "a column that no row has leaves all equal";
    list.Sort(0, kDown);
    list.Sort(-1, kUp);
    EXPECT_EQ(Column(0).front(), "10Mb");
}

// Few letters and many lengths around the eight bytes that are compared at once.
TEST_F(ListOrderTest, SortsAsAPlainStableSortDoes) {
    std::mt19937 random(1);
    Strings texts(3000);
    for (std::string& text : texts) {
        text.assign(random() % 3 * 8, 'x');
        for (auto length = random() % 5; length > 0; --length)
            text += std::string("aA@[z\0\xC3\xBC", 8)[random() % 8];
    }
    Add(texts);
    for (const Qt::SortOrder order : {kUp, kDown}) {
        std::vector<std::size_t> expected(texts.size());
        std::iota(expected.begin(), expected.end(), 0);
        std::stable_sort(expected.begin(), expected.end(), [&](std::size_t a, std::size_t b) {
            return order == kUp ? LessNoCase(texts[a], texts[b]) : LessNoCase(texts[b], texts[a]);
        });
        list.Sort(0, order);
        for (std::size_t row = 0; row < expected.size(); ++row)
            ASSERT_EQ(list.Text(row, 1), std::to_string(expected[row] + 1)) << row;
    }
}

TEST_F(ListOrderTest, ARowThatIsHeldMovesWithTheSort) {
    Add({"b", "c", "a"});
    const QPersistentModelIndex held = list.index(1, 1);
    list.Sort(0, kUp);
    EXPECT_EQ(held.row(), 2);
    EXPECT_EQ(held.data().toString(), "2");
    EXPECT_EQ(list.Key(2), "c?MULTI?UNI?1") << "its key is its own";
    list.Filter("a");
    EXPECT_FALSE(held.isValid()) << "what is filtered out is not in the list";
}

TEST_F(ListOrderTest, ShowsOnlyWhatTheFilterLeaves) {
    Add({"Paint", "Print Shop", "Editor", "shop"});
    list.Filter("SHOP");
    EXPECT_EQ(Column(0), (Strings{"Print Shop", "shop"}));
    EXPECT_EQ(list.Rows(), 2U);
    EXPECT_EQ(list.Key(1), "shop?MULTI?UNI?3");
    list.Filter("3");
    EXPECT_EQ(Column(0), (Strings{"Editor"})) << "any cell counts, a key is none";
    list.Filter("MULTI");
    EXPECT_EQ(list.rowCount(), 0);
    list.Filter("");
    EXPECT_EQ(list.rowCount(), 4);
}

TEST_F(ListOrderTest, FiltersTheSameHoweverItIsTyped) {
    Strings texts;
    for (int i = 0; i < 500; ++i)
        texts.push_back((i % 2 == 0 ? "Adobe " : "abode ") + std::to_string(i));
    Add(texts);
    list.Sort(0, kDown);
    for (const char* typed : {"a", "ad", "ado", "ad", "AD", "a", "ab", "", "bode", "abode", "e 49", "49"}) {
        list.Filter(typed);
        Strings expected;
        for (std::size_t i = 0; i < texts.size(); ++i)
            if (LowerCase(texts[i] + "\n" + std::to_string(i + 1)).find(LowerCase(typed)) !=
                std::string::npos)
                expected.push_back(texts[i]);
        std::sort(expected.begin(), expected.end(),
                  [](const std::string& a, const std::string& b) { return LessNoCase(b, a); });
        EXPECT_EQ(Column(0), expected) << typed;
    }
}

TEST_F(ListOrderTest, SortAndFilterHoldForRowsThatComeLater) {
    Add({"b1", "c", "a1"});
    list.Sort(0, kUp);
    list.Filter("1");
    EXPECT_EQ(Column(0), (Strings{"a1", "b1"}));
    list.Sort(0, kDown);
    EXPECT_EQ(Column(0), (Strings{"b1", "a1"})) << "sorted while filtered";
    Add({"aa1", "x"});
    EXPECT_EQ(Column(0), (Strings{"b1", "aa1", "a1"}));
    list.Filter("");
    EXPECT_EQ(Column(0), (Strings{"x", "c", "b1", "aa1", "a1"}));
    list.Filter("1");
    list.ClearColumns();
    list.AddColumn("Text", 1000);
    Add({"z1", "y", "a1"});
    EXPECT_EQ(Column(0), (Strings{"z1", "a1"})) << "a new list is in its own order, under the same filter";
}

TEST(CaselessSearch, FindsTextInAnyCase) {
    struct {
        const char* sought;
        const char* text;
        bool isIn;
        const char* why;
    } cases[] = {
        {"", "", true, "nothing is in everything"},
        {"a", "", false, "an empty cell holds nothing"},
        {"PaInT", "repaint", true, "at the end"},
        {"aab", "aaab", true, "begins within a false start"},
        {"@", "`", false, "only letters have a case"},
        {"\xC3\x9C"
         "ber",
         "Drau\xC3\x9F \xC3\xBC"
         "ber",
         true, "letters beyond ASCII have a case too"},
        {"\xC3\xBC", "ue", false, "but are no other letters"},
        {"ber",
         "\xC3\xBC"
         "ber",
         true, "ASCII within other text"},
        {"\xFF", "\xC3\xBC", false, "what is no text is in none"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CaselessSearch(c.sought).IsIn(c.text), c.isIn) << c.why << ": " << c.sought;
}

} // namespace
