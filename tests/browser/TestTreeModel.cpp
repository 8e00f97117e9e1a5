// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/MachineAge.h"
#include "browser/TreeModel.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <chrono>

using namespace std::chrono_literals;

namespace {

TEST(AgeScale, CountsCalendarDaysAndNeverFails) {
    // Half past midnight on the first of March: yesterday and the week before lie in another month.
    const LocalTime now = std::chrono::local_days(2024y / std::chrono::March / 1d) + 30min;
    const AgeScale ages(now);
    struct {
        const char* logonDate;
        int age;
        const char* why;
    } cases[] = {
        {"20240301", 1, "today"},
        {"20240302", 1, "a client's clock may run ahead"},
        {"20240229", 2, "yesterday, on a leap day"},
        {"20240228", 3, "two days back"},
        {"20240223", 3, "exactly seven days back"},
        {"20240222", 4, "eight days back"},
        {"19800101", 4, "what the import writes for a date it can't read"},
        {"", 4, "no date at all reads 0"},
        {"never", 4, "text reads 0"},
        {"20240301x", 1, "the leading number counts"},
        {"9E999", 4, "beyond all numbers"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ages.Age(c.logonDate), c.age) << c.why;
}

std::vector<std::string> KeysInOrder(const TreeModel& tree, const QModelIndex& parent = {}) {
    std::vector<std::string> keys;
    for (int row = 0; row < tree.rowCount(parent); ++row) {
        const QModelIndex node = tree.index(row, 0, parent);
        keys.push_back(tree.Key(node));
        for (std::string& key : KeysInOrder(tree, node))
            keys.push_back(std::move(key));
    }
    return keys;
}

TEST(TreeModel, BuildsTheSameCategoriesBelowAllAndBelowEachMachine) {
    TreeModel tree;
    tree.ShowRoot("24 Nov 2026");
    tree.ShowMachines({{"PC1", 1}, {" pc 2", 4}});
    std::vector<std::string> expected = {"MAIN"};
    for (const std::string branch : {"ALL", "PC1", " pc 2"}) {
        expected.push_back(branch == "ALL" ? branch : branch + "?MAIN");
        for (const char* category : {"CPU", "DEV", "DEVDISP", "DEVMB", "DEVNET", "DRV", "DRVDETAIL", "IO",
                                     "MSO", "ODB", "OS", "PRN", "UNI"})
            expected.push_back(branch + "?" + category);
    }
    EXPECT_EQ(KeysInOrder(tree), expected);
    EXPECT_EQ(tree.Text(tree.Root()), "24 Nov 2026");
    EXPECT_EQ(tree.Text(tree.Find(" pc 2?MAIN")), " pc 2");
    // The second-level categories stand below theirs.
    EXPECT_EQ(tree.Key(tree.Find("PC1?DEVNET").parent()), "PC1?DEV");
    EXPECT_EQ(tree.Key(tree.Find("PC1?DRVDETAIL").parent()), "PC1?DRV");
    EXPECT_EQ(tree.Key(tree.Find("ALL?IO").parent()), "ALL");
}

TEST(TreeModel, FindsWhatAWalkOverAllNodesWouldFindFirst) {
    TreeModel tree;
    tree.ShowRoot("today");
    tree.ShowMachines({{"ALL", 1}, {"MAIN", 2}, {"A?B", 3}, {"PC1", 1}, {"PC1", 4}, {"pc2", 1}, {"PC2", 1}});
    struct {
        const char* key;
        const char* text;
        int branch;
        const char* why;
    } cases[] = {
        {"MAIN", "today", -1, "the root, not the machine of that name"},
        {"ALL", "ALL", 0, "the branch, not the machine of that name"},
        {"ALL?MAIN", "ALL", 1, "which the branch has not"},
        {"MAIN?MAIN", "MAIN", 2, "a machine like any other"},
        {"A?B?MAIN", "A?B", 3, "a question mark in the name"},
        {"PC1?MAIN", "PC1", 4, "the first of two"},
        {"pc1?MAIN", "PC1", 4, "a name that another of its files spells so"},
        {"Pc2?MAIN", "pc2", 6, "the first that differs in case alone"},
        {"PC2?MAIN", "PC2", 7, "but the name itself comes first"},
    };
    for (const auto& c : cases) {
        const QModelIndex node = tree.Find(c.key);
        ASSERT_TRUE(node.isValid()) << c.why;
        EXPECT_EQ(tree.Text(node), c.text) << c.why;
        EXPECT_EQ(c.branch < 0 ? -1 : node.row(), c.branch) << c.why;
    }
    EXPECT_EQ(tree.Find("ALL?CPU").parent().row(), 0)
        << "the branch's category was built before the machine's";
    for (const char* key : {"", "?", "PC3?MAIN", "PC1", "PC1?", "PC1?DEVDRV", "PC1?cpu", "?MAIN"})
        EXPECT_FALSE(tree.Find(key).isValid()) << key;
}

TEST(TreeModel, StaysConsistentFromOpeningToClosing) {
    TreeModel tree;
    const QAbstractItemModelTester tester(&tree, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_FALSE(tree.Root().isValid());
    tree.ShowRoot("today");
    EXPECT_EQ(KeysInOrder(tree), std::vector<std::string>{"MAIN"});
    tree.ShowMachines({{"PC1", 1}, {"PC2", 2}});
    EXPECT_EQ(KeysInOrder(tree).size(), 1U + 3 * 14);
    EXPECT_TRUE(tree.Find("PC2?UNI").isValid());
    tree.ShowRoot("tomorrow");
    EXPECT_FALSE(tree.Find("PC2?UNI").isValid());
    tree.Clear();
    EXPECT_EQ(tree.rowCount(), 0);
    EXPECT_FALSE(tree.Find("MAIN").isValid());
}

} // namespace
