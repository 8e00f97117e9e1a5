// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/GroupModel.h"
#include "platform/report/PageStack.h"
#include "tests/report/ReportTest.h"

#include <QAbstractItemModelTester>

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using report::GroupModel;

/// Machines in the order of their programs' numbers, five programs each.
const char* const kNested = R"(
[[group]]
field = "{Programs.Machine}"
order = "as-read"
[[group]]
field = "{Programs.Size}"
order = "as-read"
[[detail.line]]
objects = [{field = "{Programs.Program}"}]
)";

class GroupModelTest : public ReportTest {
protected:
    /// `machines` groups of `each` within, then what makes no text of a name.
    void Fill(int machines, int each) {
        connection->BeginTrans();
        for (int i = 0; i < machines * each; ++i)
            connection->Execute("INSERT INTO Programs (Machine, Program, [Size]) VALUES ('M" +
                                std::to_string(i / each) + "', 'p', " + std::to_string(i) + ")");
        connection->Execute("INSERT INTO Programs (Machine, Program, [Size]) VALUES (NULL, 'p', -1)");
        connection->CommitTrans();
    }

    report::FixedMeasure measure;
    GroupModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(GroupModelTest, NestsAsTheDocumentDoes) {
    Fill(40, 5);
    const std::unique_ptr<report::Report> programs = Programs(kNested);
    programs->Finish();
    report::Layout layout(*programs, {}, measure);
    while (layout.Work(1s)) {
    }
    model.Show(&layout, 2);
    while (model.TakeUp(1s, true)) {
    }
    ASSERT_EQ(model.rowCount({}), 41);
    const QModelIndex machine = model.index(7, 0, {});
    EXPECT_EQ(machine.data().toString(), "M7");
    ASSERT_EQ(model.rowCount(machine), 5);
    const QModelIndex program = model.index(3, 0, machine);
    EXPECT_EQ(program.data().toString(), "38");
    EXPECT_EQ(program.parent(), machine);
    EXPECT_FALSE(model.hasChildren(program));
    EXPECT_EQ(model.EntryAt(program)->firstRow, 38U);
    EXPECT_THAT(machine.data(Qt::ToolTipRole).toString().toStdString(),
                testing::HasSubstr("5 rows, from page "));
    EXPECT_EQ(model.index(40, 0, {}).data().toString(), "(none)") << "a group of empty values can be seen";
    model.Show(nullptr, 0);
    EXPECT_EQ(model.rowCount({}), 0);
}

TEST_F(GroupModelTest, TheLastGroupWaitsUntilItIsWhole) {
    Fill(300, 5);
    const std::unique_ptr<report::Report> programs = Programs(kNested);
    report::Layout layout(*programs, {}, measure);
    model.Show(&layout, 2);
    bool isBusy = true;
    while (isBusy) {
        isBusy = programs->Work(0ms);
        isBusy = layout.Work(0ms) || isBusy;
        model.TakeUp(1s, false);
        // What is shown does not change any more, whenever it is opened.
        if (const int last = model.rowCount({}) - 1; last >= 0) {
            EXPECT_EQ(model.rowCount(model.index(last, 0, {})), 5);
        }
    }
    model.TakeUp(1s, true);
    EXPECT_EQ(model.rowCount({}), 301);
}

TEST(PageStack, HoldsMorePagesThanAScrollBarCounts) {
    report::PageStack stack{1'000'000, 3175, 4491};
    EXPECT_GT(stack.Height(), std::int64_t{1} << 32);
    for (const std::size_t page : {std::size_t{0}, std::size_t{1}, std::size_t{999'999}}) {
        EXPECT_EQ(stack.PageAt(stack.TopOf(page)), page);
        EXPECT_EQ(stack.PageAt(stack.TopOf(page) + stack.pageHeight - 1), page);
        EXPECT_EQ(stack.PageAt(stack.TopOf(page) - 1), page) << "the gap above is the page's";
    }
    EXPECT_EQ(stack.PageAt(stack.Height() * 2), 999'999U);
    EXPECT_EQ(stack.PageAt(-5), 0U);
}

} // namespace
