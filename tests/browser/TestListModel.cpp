// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListModel.h"
#include "platform/errors.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

namespace {

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
    for (const char* key : {"PC0", "PC64", "PC999"}) {
        try {
            list.AddRow(key, "again", Image::None);
            ADD_FAILURE() << key;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number, Errors::kKeyNotUnique);
        }
    }
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

} // namespace
