// SPDX-License-Identifier: GPL-3.0-or-later
// The comparison of original and current components, its colours, and Fix Changes.
#include "platform/files.h"
#include "reports/Comparison.h"
#include "reports/frmCRPCompare.h"
#include "tests/reports/ReportsTest.h"

#include <array>
#include <filesystem>

namespace {

class ComparisonTest : public ReportsTest {
protected:
    void Open(int confID) {
        confID == 0 ? commands.mnuCompare() : commands.mnuCompareMis();
        Settle();
    }
    static report::Report& Shown() { return *Find("frmCRPCompare")->Report; }
    void Fix() { Trigger(*Find("frmCRPCompare"), "mnuFixEm"); }
    void FixWithSuccess() {
        prompts.Expect(Box("Fixed successfully",
                           "Original files was reset successfully! You have to re-import from the file menu.",
                           MsgBoxStyle::kQuestion));
        Fix();
        EXPECT_EQ(Find("frmCRPCompare"), nullptr);
    }
};

TEST_F(ComparisonTest, LinesUpWhatWasAndWhatIs) {
    Open(0);
    EXPECT_EQ(Values(Shown(), "COMPUTERNAME"), "PC1/PC1/PC1/PC1/PC1/PC2/PC2/PC3/PC3");
    EXPECT_EQ(Values(Shown(), "Type"),
              "CD Rom/CPU/Hard Disk Size/RAM Size/Removable Drive/CPU/RAM Size/CPU/RAM Size");
    EXPECT_EQ(Values(Shown(), "Org"), "1/Pentium II/100/1000/1/Pentium  II/1000/Pentium/1000");
    EXPECT_EQ(Values(Shown(), "Cur"), "1/Pentium II/107/2000/1/Pentium II/4000/-/-")
        << "the mapped drive counts on this side alone";
    EXPECT_EQ(Unlike(Shown(), *gRecordset), "Org! Cur! ") << "of either kind, as texts";
}

TEST_F(ComparisonTest, MismatchesAreSelectedByTheReportAndNotByTheQuery) {
    Open(1);
    EXPECT_EQ(Values(Shown(), "Type"), "Hard Disk Size/RAM Size/CPU/RAM Size/CPU/RAM Size");
    EXPECT_THAT(FirstPage(Shown()), testing::HasSubstr("\nMismatches only\n")) << "on paper, too";
    EXPECT_EQ(gRecordset->RecordCount(), 9) << "Fix Changes walks them all";
    commands.mnuCompare();
    QTest::qWait(1);
    EXPECT_EQ(Find<frmCRPCompare>("frmCRPCompare")->ConfID, 0);
    EXPECT_EQ(Shown().RowCount(), 6U) << "a window that is open only comes forward";
}

TEST_F(ComparisonTest, NothingChangedIsAnEmptyReportAndNoMessage) {
    Run("DELETE FROM PC; DELETE FROM DrivesData");
    Open(1);
    EXPECT_EQ(Shown().RowCount(), 0U);
}

TEST_F(ComparisonTest, LabelsColourTheLine) {
    constexpr std::uint32_t kOther = 4711;
    const struct {
        const char* label;
        std::uint32_t color;
        bool isBold;
    } cases[] = {{"", 0, false},
                 {"Insignificant", 0, false},
                 {"Changed", 0x0000FF, true},
                 {"Upgraded", 0x008000, true},
                 {"changed", kOther, true}};
    for (const auto& c : cases) {
        std::array<report::TextStyle, 5> styles;
        std::vector<report::ObjectFormat> fields;
        for (std::size_t i = 0; i < styles.size(); ++i) {
            styles.at(i) = {.size = 9, .isBold = i != 3, .isItalic = false, .color = kOther};
            fields.emplace_back("Field", i == 3 ? c.label : "Changed", styles.at(i));
        }
        CRPCompare::Section3_Format(fields);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(styles.at(i).color, c.color) << c.label << i;
            EXPECT_EQ(styles.at(i).isBold, i < 3 && c.isBold) << c.label << i;
        }
        EXPECT_EQ(styles.back().color, kOther) << "the fifth takes no part";
    }
}

TEST_F(ComparisonTest, EachLabelIsOneOfTheFour) {
    Open(0);
    std::string labels;
    for (const report::Section& section : Shown().Definition().sections) {
        if (section.name != "Section3")
            continue;
        report::Row row;
        for (std::size_t i = 0; i < Shown().RowCount(); ++i) {
            Shown().ReadRow(i, row);
            labels += Shown().ObjectText(section.lines.at(0).objects.at(3), row) + "/";
        }
    }
    EXPECT_EQ(labels, "//Upgraded/Upgraded//Insignificant/Upgraded/Changed/Changed/");
}

TEST_F(ComparisonTest, FixChangesCopiesTheFilesOfTheMachinesThatDiffer) {
    folder.WriteFile("PC1.inf", "new1");
    folder.WriteFile("PC1.org", "old1");
    folder.WriteFile("pc2.INF", "new2");
    folder.WriteFile("Pc2.ORG", "old2");
    folder.WriteFile("pc2.Org", "old2");
    folder.WriteFile("PC3.inf", "new3");
    folder.WriteFile("PC3.org", "old3");
    Open(1);
    FixWithSuccess();
    EXPECT_EQ(folder.ReadFile("PC1.org"), "new1");
    EXPECT_EQ(folder.ReadFile("Pc2.ORG"), "new2") << "two blanks are a difference, if an insignificant one";
    EXPECT_EQ(folder.ReadFile("pc2.Org"), "new2") << "one name in two spellings";
    EXPECT_FALSE(folder.Exists("PC2.org"));
    EXPECT_EQ(folder.ReadFile("PC3.org"), "old3") << "a missing value is no difference";
    EXPECT_EQ(folder.ReadFile("PC1.inf"), "new1");
    EXPECT_EQ(RowsOf(*gConnection, "SELECT RAM FROM PC WHERE ConfID = 0"), "1000\n1000\n1000")
        << "the next import's business";
}

TEST_F(ComparisonTest, MismatchesShowEveryRowThatFixChangesActsOn) {
    Run("DELETE FROM DrivesData; DELETE FROM PC WHERE COMPUTERNAME = 'PC3'; UPDATE PC SET RAM = 1000;"
        "UPDATE PC SET [CPU DLL Description] = 'PENTIUM  II' WHERE COMPUTERNAME = 'PC2' AND ConfID = 1");
    for (const char* machine : {"PC1", "PC2"}) {
        folder.WriteFile(std::string(machine) + ".inf", "new");
        folder.WriteFile(std::string(machine) + ".org", "old");
    }
    Open(1);
    EXPECT_EQ(Values(Shown(), "COMPUTERNAME"), "PC2") << "other letters alone";
    FixWithSuccess();
    EXPECT_EQ(folder.ReadFile("PC1.org"), "old");
    EXPECT_EQ(folder.ReadFile("PC2.org"), "new");
}

TEST_F(ComparisonTest, NoNameAndNoLinkLeadsOutOfTheFolder) {
    const std::string outside = folder.WriteFile("secret", "secret");
    gImportDir = folder.Path("inf");
    folder.WriteFile("inf/PC1.inf", "new1");
    folder.WriteFile("up.inf", "planted");
    folder.WriteFile("up.org", "kept");
    folder.WriteFile("inf/PC2.org", "kept");
    std::filesystem::create_symlink(outside, folder.Path("inf/PC1.org"));
    std::filesystem::create_symlink(outside, folder.Path("inf/PC2.inf"));
    for (const char* name : {"../up", "..", "sub/../../up"}) {
        const std::string net = "INSERT INTO Net (COMPUTERNAME) VALUES ('" + std::string(name) + "');";
        Run(net + "INSERT INTO PC (COMPUTERNAME, ConfID, RAM) VALUES ('" + name + "',0,1), ('" + name +
            "',1,2)");
    }
    Open(0);
    FixWithSuccess();
    EXPECT_EQ(folder.ReadFile("secret"), "secret");
    EXPECT_EQ(folder.ReadFile("inf/PC1.org"), "new1");
    EXPECT_EQ(folder.ReadFile("inf/PC2.org"), "kept");
    EXPECT_EQ(folder.ReadFile("up.org"), "kept");
}

TEST_F(ComparisonTest, WithoutAFolderThereIsNothingToFix) {
    gImportDir.clear();
    Open(0);
    EXPECT_FALSE(ControlOf<QAction>(*Find("frmCRPCompare"), "mnuFixEm").isEnabled());
}

TEST_F(ComparisonTest, FixChangesWalksWhateverTheSharedRecordsetHolds) {
    Open(0);
    gRecordset = std::make_shared<ADODB::Recordset>();
    gRecordset->Open("SELECT * FROM Net", gConnection);
    prompts.Expect(
        Box("Error #3265", "There is no field of this name or position: Org", MsgBoxStyle::kCritical));
    Fix();
    gRecordset->Close();
    prompts.Expect(Box("Error #3704", "The recordset is closed", MsgBoxStyle::kCritical));
    Fix();
    gRecordset.reset();
    prompts.Expect(Box("Error #91", "There is no object here", MsgBoxStyle::kCritical));
    Fix();
    EXPECT_TRUE(Find("frmCRPCompare")->isVisible());
}

TEST_F(ComparisonTest, AFailedLoadLeavesBothWindowsUntilTheUserClosesThem) {
    Run("DROP TABLE Drives");
    prompts.Expect(Box("Error #-1", "no such table: Drives", MsgBoxStyle::kCritical));
    commands.mnuCompare();
    QTest::qWait(1);
    ASSERT_NE(Find("frmCRPCompare"), nullptr);
    EXPECT_TRUE(Find<QWidget>("frmCompiling")->isVisible());
    Trigger(*Find("frmCRPCompare"), "mnuPrint");
    Find("frmCRPCompare")->close();
    EXPECT_EQ(Find<QWidget>("frmCompiling"), nullptr);
}

} // namespace
