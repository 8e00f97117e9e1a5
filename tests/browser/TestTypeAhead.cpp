// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListModel.h"
#include "browser/TypeAhead.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <QTest>

#include <gtest/gtest.h>

namespace {

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
    QTest::qWait(QGuiApplication::styleHints()->keyboardInputInterval() + 50);
    EXPECT_EQ(keys.Find(list, 5, "a"), 1);
    QTest::qWait(QGuiApplication::styleHints()->keyboardInputInterval() + 50);
    EXPECT_EQ(keys.Find(list, -1, QString::fromUtf8("\xC3\xA4")), 4) << "such letters have two cases, too";
    list.ClearItems();
    EXPECT_EQ(keys.Find(list, -1, "l"), -1);
}

} // namespace
