// SPDX-License-Identifier: GPL-3.0-or-later
// The customers' own reports: their settings files, the list, and running them.
#include "reports/CustomReports.h"
#include "reports/frmCustomReports.h"
#include "tests/reports/ReportsTest.h"
#include "tests/support/Texts.h"
#include "tests/support/Windows.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include <filesystem>
#include <random>

namespace {

constexpr const char* kSettings = "|Name=Staff list|GroupTree=1|SQL=SELECT * FROM Net|";

TEST(GetReportSet, TakesThreeFieldsInTheirOrder) {
    const struct {
        const char *why, *text;
        bool isGood;
        const char* name = "";
        int group = 0;
        const char* sql = "";
    } cases[] = {
        {"bars are shared", kSettings, true, "Staff list", 1, "SELECT * FROM Net"},
        {"or not; the rest is ignored", "x|y\r\n|Name=A|\r\n|z|GroupTree=0||SQL=B|C", true, "A", 0, "B"},
        {"line ends belong to the value", "|Name=A\nB|GroupTree=1|SQL=C\r\nD|", true, "A\nB", 1, "C\r\nD"},
        {"values may be empty", "|Name=|GroupTree=|SQL=|", true, "", 0, ""},
        {"a text is 0", "|Name=A|GroupTree=abc|SQL=B|", true, "A", 0, "B"},
        {"any number shows the tree", "|Name=A|GroupTree=-1|SQL=B|", true, "A", -1, "B"},
        {"a number of 16 bits", "|Name=A|GroupTree=70000|SQL=B|", false},
        {"the 8-bit page", "|Name=Caf\xE9|GroupTree=1|SQL=B|", true, "Caf\xC3\xA9", 1, "B"},
        {"UTF-8 behind its mark", "\xEF\xBB\xBF|Name=Caf\xC3\xA9|GroupTree=1|SQL=B|", true, "Caf\xC3\xA9", 1,
         "B"},
        {"the name is not closed", "|Name=A", false},
        {"no group tree", "|Name=A|SQL=B|", false},
        {"the statement is not closed", "|Name=A|GroupTree=1|SQL=B", false},
        {"keys have one spelling", "|NAME=A|GroupTree=1|SQL=B|", false},
        {"and one order", "|GroupTree=1|Name=A|SQL=B|", false},
        {"nothing", "", false},
    };
    const TemporaryFolder folder;
    for (const auto& c : cases) {
        std::string name;
        std::string sql;
        std::int16_t group = 0;
        ASSERT_EQ(CustomReports::GetReportSet(folder.WriteFile("a.rni", c.text), name, sql, group), c.isGood)
            << c.why;
        if (c.isGood) {
            EXPECT_EQ(name, c.name) << c.why;
            EXPECT_EQ(group, c.group) << c.why;
            EXPECT_EQ(sql, c.sql) << c.why;
        }
    }
    std::string text;
    std::int16_t group = 0;
    EXPECT_FALSE(CustomReports::GetReportSet(folder.Path("missing.rni"), text, text, group));
    EXPECT_FALSE(CustomReports::GetReportSet(folder.Path(), text, text, group)) << "a folder";
}

TEST(GetReportSet, TakesWhateverStandsInTheFile) {
    const TemporaryFolder folder;
    std::mt19937 random(4711);
    int good = 0;
    for (int round = 0; round < 500; ++round) {
        const std::string text = Damaged(random, kSettings, kSettings) + "|";
        std::string name;
        std::string sql;
        std::int16_t group = 0;
        const bool isGood = CustomReports::GetReportSet(folder.WriteFile("a.rni", text), name, sql, group);
        good += isGood ? 1 : 0;
        EXPECT_TRUE(!isGood || (name + sql).find('|') == std::string::npos) << text;
    }
    EXPECT_GT(good, 20) << "some of them must be read";
}

TEST(ChangeFileExtension, ReplacesBehindTheLastPoint) {
    EXPECT_EQ(CustomReports::ChangeFileExtension("a.b.RPT", ".RNI"), "a.b.RNI");
    EXPECT_EQ(CustomReports::ChangeFileExtension("a", ".RNI"), "a.RNI");
}

class CustomReportsTest : public ReportsTest {
protected:
    /// Opens the list, acts on it, and leaves it by Cancel.
    void WithList(const std::function<void(frmCustomReports& window, QListWidget& list)>& act) {
        const NextDialog answer([&](QDialog& dialog) {
            auto& window = static_cast<frmCustomReports&>(dialog);
            act(window, ControlOf<QListWidget>(window, "lstReports"));
            EXPECT_TRUE(window.isVisible());
            Press(window, "btnCommand(1)");
        });
        commands.mnuCustomReport();
        EXPECT_FALSE(FormRegistry::Instance().IsLoaded("frmCustomReports"));
    }
    static void Press(QWidget& window, const char* button) {
        QTest::mouseClick(&ControlOf<QPushButton>(window, button), Qt::LeftButton);
    }
    static void DoubleClick(QListWidget& list, int line) {
        const QPoint place = list.visualItemRect(list.item(line)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    }
};

TEST_F(CustomReportsTest, ListsDocumentsThatHaveSettings) {
    for (const char* name :
         {"b.RPT", "A.rpt", "a.RNI", "b.rni", "lonely.rpt", "other.rni", "c.rptx", "c.rni"})
        folder.WriteFile(name, "");
    WithList([](frmCustomReports& window, QListWidget& list) {
        ASSERT_EQ(list.count(), 2);
        EXPECT_EQ(list.item(0)->text(), "A.rpt");
        EXPECT_EQ(list.item(1)->text(), "b.RPT");
        EXPECT_FALSE(ControlOf<QLabel>(window, "lblHint").isVisible());
        Press(window, "btnCommand(0)"); // nothing is selected
    });
}

TEST_F(CustomReportsTest, TheFirstArrowKeyChoosesTheFirstReport) {
    for (const char* const name : {"A.RPT", "A.RNI", "B.RPT", "B.RNI"})
        folder.WriteFile(name, "");
    WithList([](frmCustomReports&, QListWidget& list) {
        EXPECT_TRUE(list.selectedItems().isEmpty());
        QTest::keyClick(&list, Qt::Key_Down);
        ASSERT_EQ(list.selectedItems().size(), 1);
        EXPECT_EQ(list.selectedItems().first()->text(), "A.RPT");
    });
}

TEST_F(CustomReportsTest, AnEmptyListTellsWhatToPutWhere) {
    WithList([&](frmCustomReports& window, QListWidget& /*list*/) {
        const QString hint = ControlOf<QLabel>(window, "lblHint").text();
        EXPECT_TRUE(hint.contains(QString::fromStdString(folder.Path()))) << hint.toStdString();
    });
}

TEST_F(CustomReportsTest, AReportStandsOnTopOfTheListAndReturnsToIt) {
    folder.WriteFile("Staff.RPT", kNames);
    folder.WriteFile("staff.rni", kSettings);
    const auto look = [](ReportWindow& report) {
        EXPECT_TRUE(report.isModal());
        EXPECT_EQ(report.windowTitle(), "Staff list");
        EXPECT_EQ(Values(*report.Report, "COMPUTERNAME"), "PC2/PC1/PC3");
        EXPECT_FALSE(FormRegistry::Instance().IsLoaded("frmCompiling"));
        Trigger(report, "mnuClose");
    };
    WithList([&](frmCustomReports& window, QListWidget& list) {
        {
            const NextReport next(look);
            DoubleClick(list, 0);
        }
        const NextReport next(look);
        QTest::keyClick(&window, Qt::Key_Return);
    });
}

TEST_F(CustomReportsTest, AQueryMayBeginWithARemark) {
    folder.WriteFile("a.rpt", kNames);
    WithList([&](frmCustomReports& window, QListWidget& /*list*/) {
        const NextReport next([](ReportWindow& report) {
            EXPECT_EQ(Values(*report.Report, "COMPUTERNAME"), "PC2/PC1/PC3");
            Trigger(report, "mnuClose");
        });
        window.RunCustomReport(folder.Path("a.rpt"), "A", "-- all\n/* machines */ SELECT * FROM Net", 0);
    });
}

TEST_F(CustomReportsTest, WhatIsWrongWithAPairIsTold) {
    folder.WriteFile("a.rpt", kNames);
    folder.WriteFile("a.rni", "|Name=A|GroupTree=1|");
    WithList([&](frmCustomReports& /*window*/, QListWidget& list) {
        const auto expect = [&](const char* title, const char* text) {
            prompts.Expect(Box(title, text, MsgBoxStyle::kQuestion));
            DoubleClick(list, 0);
        };
        expect("Error in Setting file", "An error occured opening and reading the report setting file!");
        folder.WriteFile("a.rni", "|Name=A|GroupTree=0|SQL=SELECT * FROM Net WHERE ConfID = 7 AND 1 = 0|");
        folder.WriteFile("a.rpt", "title = ");
        prompts.Expect(Question{Question::Kind::Box, "Error#-1", {}, MsgBoxStyle::kCritical});
        DoubleClick(list, 0);
        std::filesystem::remove(folder.Path("a.rni"));
        expect("No Settings!", "The report's setting file was not found!");
        std::filesystem::remove(folder.Path("a.rpt"));
        expect("Report Not Found", "The report was not found! Please select another.");
    });
}

TEST_F(CustomReportsTest, NoStatementChangesTheDatabase) {
    folder.WriteFile("a.rpt", kNames);
    folder.WriteFile("a.rni", kSettings);
    WithList([&](frmCustomReports& window, QListWidget& /*list*/) {
        for (const char* statement :
             {"DELETE * FROM Net", "UPDATE Net SET COMPUTERNAME = 'X'",
              "SELECT * FROM Net; DELETE * FROM Net", "DROP TABLE OS", "PRAGMA writable_schema = 1", "",
              "/* SELECT */ DELETE * FROM Net", "WITH X AS (SELECT 1) DELETE FROM Net",
              "SELECT * INTO Copy FROM Net", "SELECT load_extension('x') FROM Net",
              "SELECT * FROM (DELETE FROM Net RETURNING *)", "SELECT * FROM pragma_journal_mode('delete')"}) {
            prompts.Expect(Box("", "There was an ERROR while loading the Report"));
            window.RunCustomReport(folder.Path("a.rpt"), "A", statement, 0);
        }
    });
    EXPECT_EQ(RowsOf(*gConnection, "SELECT COMPUTERNAME FROM Net ORDER BY 1"), "PC1\nPC2\nPC3");
    EXPECT_EQ(RowsOf(*gConnection, "SELECT COUNT(*) FROM OS"), "3");
}

} // namespace
