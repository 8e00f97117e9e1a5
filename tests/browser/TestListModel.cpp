// SPDX-License-Identifier: GPL-3.0-or-later
// The list without its window: its rows kept, sorted, filtered and found by typing, and where they lead.
#include "browser/CaselessSearch.h"
#include "browser/DrillDown.h"
#include "browser/ListModel.h"
#include "browser/RowOrder.h"
#include "browser/SortKeys.h"
#include "browser/TypeAhead.h"
#include "platform/text.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Windows.h"

#include <QAbstractItemModelTester>
#include <QGuiApplication>
#include <QStyleHints>
#include <QTest>

#include <algorithm>
#include <numeric>
#include <random>

namespace {

using enum DrillKind;
using Strings = std::vector<std::string>;

std::string Cell(const ListModel& list, int row, int column) {
    return list.index(row, column).data().toString().toStdString();
}

TEST(ListModel, GivesBackWhatWasPutIn) {
    ListModel list;
    const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::Fatal);
    list.AddColumn("Name", 3000);
    list.AddColumn("Value", 3000);
    list.AddColumn("Remark", 1000);
    const std::string longText(100000, 'x');
    list.AddRow("PC1?CPU", "PC1", Image::PC_CPU);
    list.SetSubItem(2, "b");
    list.SetSubItem(1, "a");
    list.AddRow("", "", Image::None);
    list.AddRow("PC2?CPU", longText, Image::PC_4);
    list.SetSubItem(1, "M\xC3\xBCller");
    list.SetSubItem(1, longText + "2");
    list.Publish();
    EXPECT_EQ(Cell(list, 0, 0), "PC1");
    EXPECT_EQ(Cell(list, 0, 1), "a") << "set after a later column";
    EXPECT_EQ(Cell(list, 0, 2), "b");
    EXPECT_EQ(Cell(list, 1, 0), "");
    EXPECT_EQ(Cell(list, 1, 2), "") << "never set";
    EXPECT_EQ(Cell(list, 2, 0), longText);
    EXPECT_EQ(Cell(list, 2, 1), longText + "2") << "set twice";
    EXPECT_EQ(list.Key(0), "PC1?CPU");
    EXPECT_EQ(list.Key(1), "");
    EXPECT_EQ(list.Icon(2), Image::PC_4);
    EXPECT_EQ(list.Columns().at(2).width, 1000);
}

TEST(ListModel, RefusesAKeyThatAnotherRowHas) {
    ListModel list;
    list.AddColumn("Name", 3000);
    for (int i = 0; i < 1000; ++i)
        list.AddRow("PC" + std::to_string(i), "x", Image::None);
    list.AddRow("", "no key", Image::None);
    list.AddRow("", "no key either", Image::None);
    for (const char* key : {"PC0", "PC64", "PC999"})
        EXPECT_EQ(ErrorOf([&] { list.AddRow(key, "again", Image::None); }), Errors::kKeyNotUnique) << key;
    EXPECT_EQ(list.Rows(), 1002U) << "what was refused is not there";
    list.ClearItems();
    list.AddRow("PC0", "a new list", Image::None);
    EXPECT_EQ(list.Key(0), "PC0");
}

TEST(ListModel, ComputesTheKeysThatEndInANumber) {
    ListModel list;
    list.AddColumn("Name", 3000);
    list.AddRow("PC0?DRV", "a row with a key of its own", Image::None);
    list.AddCountedRow("PC1", "?MULTI?DEV?", "PC1", Image::PC_DEVICE);
    list.SetSubItem(1, "a");
    list.SetSubItem(1, "b");
    list.AddCountedRow("PC1", "?MULTI?DEV?", "PC1", Image::PC_DEVICE);
    list.AddCountedRow("", "?MULTI?DEV?", "n/a", Image::PC_DEVICE);
    EXPECT_EQ(list.Key(1), "PC1?MULTI?DEV?1");
    EXPECT_EQ(list.Text(1, 0), "PC1");
    EXPECT_EQ(list.Text(1, 1), "b");
    EXPECT_EQ(list.Key(2), "PC1?MULTI?DEV?2");
    EXPECT_EQ(list.Key(3), "?MULTI?DEV?3") << "the machine's name, not what stands for a missing one";
    EXPECT_EQ(list.Text(3, 0), "n/a");
    for (int kind = 0; kind < 300; ++kind)
        list.AddCountedRow("PC", "?" + std::to_string(kind) + "?", "PC", Image::None);
    EXPECT_EQ(list.Key(303), "PC?299?303") << "more kinds of keys than a row can tell apart";
}

TEST(ListModel, ShowsRowsOnlyWhenPublished) {
    ListModel list;
    list.AddColumn("Name", 3000);
    list.AddRow("", "one", Image::None);
    EXPECT_EQ(list.rowCount(), 0);
    list.Publish();
    list.AddRow("", "two", Image::None);
    EXPECT_EQ(list.rowCount(), 1);
    list.Publish();
    EXPECT_EQ(Cell(list, 1, 0), "two");
    list.ClearItems();
    EXPECT_EQ(list.rowCount(), 0);
    EXPECT_EQ(list.columnCount(), 1) << "the columns stay";
    list.ClearColumns();
    EXPECT_EQ(list.columnCount(), 0);
}

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

TEST_F(ListOrderTest, LettersBeyondASCIIStandBesideThoseTheyAreMadeOf) {
    Add({"Zebra", "\u00C4pfel", "pfad", "Stra\u00DFe", "apfel", "\u00E4pfel", "Strasse", "\u00D8rsted",
         "orbit", "Apfela", "\u0439\u043E\u0434", "\u0438\u0441\u043A", "\u0415\u0436",
         "\u0451\u043B\u043A\u0430"});
    list.Sort(0, kUp);
    const Strings cyrillic = {"\u0415\u0436", "\u0451\u043B\u043A\u0430", "\u0438\u0441\u043A",
                              "\u0439\u043E\u0434"};
    Strings expected = {"apfel",       "\u00C4pfel", "\u00E4pfel", "Apfela",      "orbit",
                        "\u00D8rsted", "pfad",       "Strasse",    "Stra\u00DFe", "Zebra"};
    expected.insert(expected.end(), cyrillic.begin(), cyrillic.end());
    EXPECT_EQ(Column(0), expected);
    list.Sort(0, kDown);
    std::reverse(expected.begin(), expected.end());
    std::swap(*std::find(expected.begin(), expected.end(), "\u00E4pfel"),
              *std::find(expected.begin(), expected.end(), "\u00C4pfel"));
    EXPECT_EQ(Column(0), expected) << "texts that differ in case alone stay in the order of the query";
}

TEST(RowsInOrder, SortsAsAPlainStableSortDoes) {
    // Few letters and many lengths around the eight bytes that are compared at once; and so many texts that
    // they are dealt out first.
    std::mt19937 random(1);
    Strings few(3000), many(100000);
    for (std::string& text : few) {
        text.assign(random() % 3 * 8, 'x');
        for (auto length = random() % 5; length > 0; --length)
            text += std::string("aA@[z\0\xC3\xBC", 8)[random() % 8];
    }
    for (std::size_t row = 0; row < many.size(); ++row)
        many[row] = (row % 3 == 0 ? "Same beginning " : "") + std::to_string((row * 7919) % 5000);
    for (const Strings& texts : {few, many}) {
        ListRows rows;
        SortKeys sortKeys;
        std::vector<std::string_view> keys;
        for (const std::string& text : texts) {
            rows.Add("", text, Image::None);
            keys.push_back(sortKeys.KeyOf(text));
        }
        for (const bool isDescending : {false, true}) {
            std::size_t last = 0;
            const auto order = RowsInOrder(rows, 0, isDescending, [&](std::size_t done, std::size_t all) {
                EXPECT_TRUE(done >= last && done <= all) << "a bar never goes back";
                last = done;
            });
            std::vector<std::uint32_t> expected(texts.size());
            std::iota(expected.begin(), expected.end(), 0U);
            std::stable_sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
                return isDescending ? LessNoCase(keys[b], keys[a]) : LessNoCase(keys[a], keys[b]);
            });
            EXPECT_TRUE(order == expected) << texts.size() << (isDescending ? " downwards" : " upwards");
        }
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

class TypeAheadTest : public testing::Test {
protected:
    TypeAheadTest() {
        list.AddColumn("Name", 3000);
        for (const char* name : {"Ledger", "alpha", "Lens", "lens cap", "\xC3\x84rger", "Quill"})
            list.AddRow("", name, Image::None);
        list.Publish();
    }

    ListModel list;
    TypeAhead keys;
    const TypingPause pause{TypingPause::Endless};
};

TEST_F(TypeAheadTest, LettersThatFollowEachOtherNarrowTheSearch) {
    EXPECT_EQ(keys.Find(list, -1, "l"), 0);
    EXPECT_EQ(keys.Find(list, 0, "e"), 0) << "it still fits";
    EXPECT_EQ(keys.Find(list, 0, "N"), 2) << "whatever the case";
    EXPECT_EQ(keys.Find(list, 2, "s"), 2);
    EXPECT_EQ(keys.Find(list, 2, " "), 3) << "a blank is part of the text";
    EXPECT_EQ(keys.Find(list, 3, "x"), -1);
}

TEST_F(TypeAheadTest, TheSameLetterAgainWalksTheRows) {
    int row = -1;
    for (const int expected : {0, 2, 3, 0}) {
        row = keys.Find(list, row, "L");
        EXPECT_EQ(row, expected);
    }
}

TEST_F(TypeAheadTest, APauseBeginsANewText) {
    EXPECT_EQ(keys.Find(list, -1, "q"), 5);
    const TypingPause over(TypingPause::None);
    EXPECT_EQ(keys.Find(list, 5, "a"), 1);
    EXPECT_EQ(keys.Find(list, -1, QString::fromUtf8("\xC3\xA4")), 4) << "such letters have two cases, too";
    list.ClearItems();
    EXPECT_EQ(keys.Find(list, -1, "l"), -1);
}

TEST(DrillDown, LeadsFromARowToItsNode) {
    const struct {
        const char* rowKey;
        DrillKind kind;
        const char* target;
        const char* why;
    } cases[] = {
        {"", Nothing, "", "a row without a key"},
        {"DEV_5_PC1", Nothing, "", "a machine's own list has no node below it"},
        {"PC1?MAIN", Node, "PC1?MAIN", "the overview of all machines"},
        {"PC1?CPU", Node, "PC1?CPU", "one row a machine: the row's key is the node's"},
        {"PC1?DEV", UnknownKey, "PC1?DEV", "devices have many rows a machine"},
        {"PC1?MULTI?UNI?7", Node, "PC1?UNI", "many rows a machine"},
        {"PC1?MULTI?DRVDETAIL?12", Node, "PC1?DRVDETAIL", "a category of the second level"},
        {"PC1?MULTI?DEVDRV?1", Node, "PC1?DEVDRV", "known, though no node bears it"},
        {"PC1?MULTI?CPU?1", UnknownKey, "PC1?MULTI?CPU?1", "no category of many rows"},
        {"PC1?MULTI??1", UnknownKey, "PC1?MULTI??1", "an empty category"},
        {"PC1?MULTI?DEV", Nothing, "", "nothing closes the category"},
        {"?MULTI?DEV?1", Node, "?DEV", "a machine without a name: no node will be found"},
        {"A?B?CPU", UnknownKey, "A?B?CPU", "the machine's own \"?\" hides the category"},
        {"A?B?MULTI?PRN?3", Node, "A?PRN", "and cuts the name short"},
    };
    for (const auto& c : cases) {
        const DrillDown target = DrillDownFrom(c.rowKey);
        EXPECT_EQ(target.kind, c.kind) << c.rowKey << ": " << c.why;
        EXPECT_EQ(target.key, c.target) << c.rowKey << ": " << c.why;
    }
}

} // namespace
