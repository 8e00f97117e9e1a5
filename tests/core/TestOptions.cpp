// SPDX-License-Identifier: GPL-3.0-or-later
// The Options dialog: what it shows, what it stores where, and what the collectors make of it.
#include "collector/Startup.h"
#include "core/Globals.h"
#include "core/HelpKey.h"
#include "core/frmOptions.h"
#include "tests/core/DialogTest.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeForm.h"

#include <QComboBox>
#include <QPushButton>
#include <QTabWidget>

#include <memory>

namespace {

class OptionsTest : public DialogTest {
protected:
    OptionsTest() { SetGlobals(folder.Path("Inf")); }
    ~OptionsTest() override { SetGlobals(""); }

    static void SetGlobals(const std::string& importFolder) {
        gImportDir = importFolder;
        gDatabasePath.clear();
        gBackupDir.clear();
        gCurrentUser.clear();
        gImportTime = 0;
        gImportTimeNum = 0;
    }
    frmOptions& Open() {
        options = std::make_unique<frmOptions>(form, settings, prompts, desktop);
        return *options;
    }
    QComboBox& Combo(const char* name) const { return Find<QComboBox>(*options, name); }
    std::string Rows() const {
        return Combo("CMBSeconds").currentText().toStdString() + "|" +
               Combo("CMBInfo").currentText().toStdString() + "|" +
               Combo("CMBSound").currentText().toStdString() + "|" + Text(*options, "txtAGREEPATH");
    }
    bool IsGeneralEnabled() const { return Find<QTabWidget>(*options, "SSTab1").isTabEnabled(1); }
    void OK() {
        Press(*options, "cmdOK");
        EXPECT_EQ(options->result(), QDialog::Accepted);
    }

    FakeForm form;
    FakeDesktop desktop;
    std::unique_ptr<frmOptions> options;
};

TEST_F(OptionsTest, AMissingFileShowsTheDefaultsAndIsMadeOfFourKeys) {
    Open();
    EXPECT_TRUE(IsGeneralEnabled());
    EXPECT_EQ(Rows(), "30 Sec|No|No|");
    Press(*options, "cmdCancel");
    EXPECT_FALSE(folder.Exists("MOVANTA.INI"));
    Open();
    OK();
    EXPECT_EQ(folder.ReadFile("MOVANTA.INI"),
              "[STARTUP]\r\nDELAYTIMER=30\r\nASKNEWUSERINFO=0\r\nPINGSOUND=0\r\nAGREEPATH=\r\n");
}

TEST_F(OptionsTest, OnlyWhatCanBeChosenIsChanged) {
    folder.WriteFile("Movanta.Ini", "; ours\n[Startup]\nDelayTimer=45\nAskNewUserInfo=1\nOther=x\n");
    Open();
    EXPECT_EQ(Rows(), "|Yes|No|") << "no row stands for 45 seconds";
    Type(*options, "txtAGREEPATH", "  /srv/agree.txt ");
    Combo("CMBInfo").setCurrentIndex(0);
    OK();
    EXPECT_EQ(folder.ReadFile("Movanta.Ini"),
              "; ours\n[Startup]\nDelayTimer=45\nAskNewUserInfo=0\nOther=x\n"
              "PINGSOUND=0\nAGREEPATH=/srv/agree.txt\n");
    EXPECT_FALSE(folder.Exists("MOVANTA.INI")) << "no second file beside it";
}

TEST_F(OptionsTest, CollectorsDoWhatTheDialogSaysHoweverTheFileWas) {
    const struct {
        const char* why;
        std::string before;
    } cases[] = {
        {"no file", ""},
        {"two sections", "[STARTUP]\nPINGSOUND=0\n[X]\nA=1\n[STARTUP]\nDELAYTIMER=60\nPINGSOUND=1\n"},
        {"an open header, a key twice", "[startup\nDELAYTIMER=5\nDELAYTIMER=60"},
        {"a number that is none of 16 bits", "[STARTUP]\r\nDELAYTIMER=99999999999\r\n"},
        {"no text at all", std::string("\0\xFF\xFE[\n=", 6)},
    };
    for (const auto& c : cases) {
        if (!c.before.empty())
            folder.WriteFile("MOVANTA.INI", c.before);
        Open();
        Combo("CMBSeconds").setCurrentText("15 Sec");
        Combo("CMBSound").setCurrentText("Yes");
        OK();
        const collector::StartupOptions obeyed = collector::ReadStartupOptions(folder.Path());
        EXPECT_EQ(obeyed.delay, std::chrono::seconds(15)) << c.why;
        EXPECT_TRUE(obeyed.isAudible) << c.why;
        Open();
        EXPECT_EQ(Rows(), "15 Sec|No|Yes|") << c.why;
    }
}

TEST_F(OptionsTest, AFileThatCannotBeWrittenDoesNotKeepTheSettingsFromBeingSaved) {
    folder.WriteFile("MOVANTA.INI/file", "");
    Open();
    EXPECT_EQ(Rows(), "30 Sec|No|No|");
    Type(*options, "txtPath(2)", "/backups");
    OK();
    EXPECT_EQ(Stored("BackupDir"), "/backups");
}

TEST_F(OptionsTest, TheCollectorsValuesNeedAFolderAboveTheInventory) {
    gImportDir = "";
    Open();
    EXPECT_FALSE(IsGeneralEnabled());
    OK();
    EXPECT_FALSE(folder.Exists("MOVANTA.INI"));
    gImportDir = "Inf";
    EXPECT_EQ(ErrorOf([&] { Open(); }), Errors::kInvalidCall) << "a folder without any separator";
}

TEST_F(OptionsTest, AChosenFolderShowsItsFileAtOnceAndIsTakenOnlyByOK) {
    folder.WriteFile("new/MOVANTA.INI", "[STARTUP]\nDELAYTIMER=60\nASKNEWUSERINFO=1\nAGREEPATH=/a\n");
    const std::string old = gImportDir;
    const std::string chosen = folder.Path("new/Inf");
    Open();
    prompts.Expect(Folder("Please select INF Directory", old));
    Press(*options, "BTNInfo(0)");
    EXPECT_EQ(Rows(), "30 Sec|No|No|") << "cancelled";

    prompts.Expect(Folder("Please select INF Directory", old), "D:");
    prompts.Expect(::Box("", "This is an invalid path!", 0));
    Press(*options, "BTNInfo(0)");
    EXPECT_FALSE(IsGeneralEnabled());
    EXPECT_EQ(Text(*options, "txtPath(0)"), old);

    prompts.Expect(Folder("Please select INF Directory", old), chosen);
    Press(*options, "BTNInfo(0)");
    EXPECT_TRUE(IsGeneralEnabled());
    EXPECT_EQ(Rows(), "60 Sec|Yes|No|/a");
    EXPECT_EQ(gImportDir, old);
    folder.WriteFile("third/MOVANTA.INI", "[STARTUP]\nDELAYTIMER=45\nASKNEWUSERINFO=2\n");
    prompts.Expect(Folder("Please select INF Directory", chosen), folder.Path("third/Inf"));
    Press(*options, "BTNInfo(0)");
    EXPECT_EQ(Rows(), "||No|") << "nothing of the folder before is left";
    Press(*options, "cmdCancel");
    EXPECT_EQ(gImportDir, old);
    EXPECT_EQ(Stored("ImportDir"), "<none>");
}

TEST_F(OptionsTest, ATypedFolderThatEndsInSeparatorsIsTheFolderAllTheSame) {
    const std::string inventory = folder.Path("new/Inf");
    folder.WriteFile("new/Inf/PC1.ORG", "");
    ShowActive(Open());
    Type(*options, "txtPath(0)", "/");
    QTest::keyClick(&Box(*options, "txtPath(0)"), Qt::Key_Tab);
    EXPECT_EQ(Text(*options, "txtPath(0)"), "/");
    Box(*options, "txtPath(0)").setFocus();
    Type(*options, "txtPath(0)", inventory + "//");
    QTest::keyClick(&Box(*options, "txtPath(0)"), Qt::Key_Tab);
    EXPECT_EQ(Text(*options, "txtPath(0)"), inventory);
    Box(*options, "txtPath(0)").setFocus();
    Type(*options, "txtPath(0)", inventory + "/");
    QTest::keyClick(&Box(*options, "txtPath(0)"), Qt::Key_Return);
    EXPECT_EQ(gImportDir, inventory);
    EXPECT_TRUE(folder.Exists("new/MOVANTA.INI"));
    EXPECT_EQ(folder.Names("new/Inf").size(), 1U);
}

TEST_F(OptionsTest, AnAgreementWhoseNameCannotBeWrittenIsRefusedBeforeAnythingIs) {
    const std::string document = "/srv/\xD0\xBF.txt";
    Open();
    Type(*options, "txtPath(2)", "/backups");
    Type(*options, "txtAGREEPATH", document);
    prompts.Expect(::Box("Error#5", "Invalid procedure call or argument: " + document, 16));
    Press(*options, "cmdOK");
    EXPECT_EQ(Stored("BackupDir"), "<none>");
    EXPECT_FALSE(folder.Exists("MOVANTA.INI"));
    Type(*options, "txtPath(0)", "");
    OK();
    EXPECT_EQ(Stored("BackupDir"), "/backups")
        << "without a folder of the collectors nothing is written to them";
}

TEST_F(OptionsTest, ConsoleAndCollectorsReadTheSameNumbers) {
    const struct {
        const char *text, *row;
        int seconds;
    } cases[] = {{"+5", "5 Sec", 5}, {"1e1", "10 Sec", 10}, {"1 0", "10 Sec", 10}, {"4.6", "5 Sec", 5},
                 {"0x5", "None", 0}, {"-5", "", 0},         {"45", "", 45},        {"&", "None", 0}};
    for (const auto& c : cases) {
        folder.WriteFile("MOVANTA.INI", std::string("[STARTUP]\nDELAYTIMER=") + c.text + "\n");
        Open();
        EXPECT_EQ(Combo("CMBSeconds").currentText().toStdString(), c.row) << c.text;
        EXPECT_EQ(collector::ReadStartupOptions(folder.Path()).delay, std::chrono::seconds(c.seconds))
            << c.text;
    }
}

TEST_F(OptionsTest, OKStoresTheSettingsAndRelinksAChangedDatabase) {
    gDatabasePath = "/old.mdb";
    gImportTime = 2;
    gImportTimeNum = 7;
    Open();
    EXPECT_EQ(Text(*options, "txtOld") + Combo("cmbOld").currentText().toStdString(), "7Hour");
    OK();
    EXPECT_EQ(form.told, "") << "the load is no change";

    Open();
    prompts.Expect(OpenFile("Please select a database..."), "/new.mdb");
    Press(*options, "BTNInfo(1)");
    prompts.Expect(Folder("Please select Default Backup Directory", ""), "/backups");
    Press(*options, "BTNInfo(2)");
    Combo("cmbOld").setCurrentText("Day");
    Type(*options, "txtOld", "90");
    OK();
    EXPECT_EQ(form.told, "relink\n");
    EXPECT_EQ(gDatabasePath, "/new.mdb");
    EXPECT_EQ(gBackupDir, "/backups");
    EXPECT_EQ(gImportTime, 3);
    EXPECT_EQ(gImportTimeNum, 90);
    EXPECT_EQ(Stored("Database") + " " + Stored("ImportDir") + " " + Stored("BackupDir") + " " +
                  Stored("ImportTime") + " " + Stored("ImportTimeNum"),
              "/new.mdb " + folder.Path("Inf") + " /backups 3 90");
    EXPECT_EQ(prompts.FileDialogs().at(0).filter, "MOVA Database (*.mdb)|*.MDB");
}

TEST_F(OptionsTest, SettingsThatCannotBeWrittenLeaveEverythingAsItWas) {
    Open();
    Type(*options, "txtPath(1)", "/other.mdb");
    Combo("CMBSound").setCurrentText("Yes");
    folder.WriteFile("settings.ini/in its place", "");
    prompts.Expect(Question{Question::Kind::Box, "Error#75", {}, 16});
    Press(*options, "cmdOK");
    EXPECT_EQ(gDatabasePath + form.told, "") << "the open database is the one that is named";
    EXPECT_FALSE(folder.Exists("MOVANTA.INI"));
    EXPECT_EQ(options->result(), QDialog::Rejected);
}

TEST_F(OptionsTest, TheTimeFrameIsATimeOfDayInAllUnitsButDays) {
    const struct {
        const char* why;
        const char *unit, *typed, *stored;
    } cases[] = {
        {"", "Second", "60", "59"},
        {"", "Minute", "90", "59"},
        {"the limit itself", "Minute", "59", "59"},
        {"below it, a negative one too", "Minute", "-5", "-5"},
        {"", "Hour", "24", "23"},
        {"beyond 16 bits, but limited before it is read", "Hour", "99999", "23"},
        {"no limit", "Day", "90", "90"},
        {"the number that a text begins with, since the next start stops at a text", "Day", "5 days", "5"},
        {"", "Day", "", "0"},
    };
    for (const auto& c : cases) {
        Open();
        Combo("cmbOld").setCurrentText(c.unit);
        Type(*options, "txtOld", c.typed);
        OK();
        EXPECT_EQ(Stored("ImportTimeNum"), c.stored) << c.unit << " " << c.typed << " " << c.why;
        EXPECT_EQ(std::to_string(gImportTimeNum), c.stored) << c.unit << " " << c.typed;
    }
    const std::string profile = folder.ReadFile("MOVANTA.INI");
    Open();
    Type(*options, "txtPath(2)", "/elsewhere");
    Combo("CMBSound").setCurrentText("Yes");
    Type(*options, "txtOld", "99999");
    prompts.Expect(::Box("Error#6", "Overflow", 16));
    Press(*options, "cmdOK");
    EXPECT_EQ(options->result(), QDialog::Rejected) << "so many days are told of, and can be corrected";
    EXPECT_EQ(folder.ReadFile("MOVANTA.INI") + gBackupDir + Stored("BackupDir"), profile)
        << "till then everything is as it was";
}

TEST_F(OptionsTest, ADoubleClickViewsTheAgreementOrAsksForIt) {
    const std::string document = folder.WriteFile("agree ment.txt", "text");
    Open();
    const auto doubleClick = [&] { QTest::mouseDClick(&Box(*options, "txtAGREEPATH"), Qt::LeftButton); };
    prompts.Expect(OpenFile("Please select the Agreement file "), "/missing");
    doubleClick();
    EXPECT_EQ(Text(*options, "txtAGREEPATH"), "/missing");
    prompts.Expect(::Box("File not Found!", "That file was not found! Please select a file!", 16));
    prompts.Expect(OpenFile("Please select the Agreement file "), document);
    doubleClick();
    EXPECT_TRUE(desktop.opened.empty());
    doubleClick();
    EXPECT_EQ(desktop.opened, std::vector{document});

    const std::string deep = folder.WriteFile(std::string(100, 'a') + "/" + std::string(100, 'b'), "");
    Type(*options, "txtAGREEPATH", deep);
    prompts.Expect(
        ::Box("Error#76", "MOVA Error loading file.\r\n\r\nThe path is longer than 164 characters", 16));
    prompts.Expect(OpenFile("Please select the Agreement file "), document);
    doubleClick();

    desktop.hasPrograms = false;
    prompts.Expect(
        ::Box("Error#53", "MOVA Error loading file.\r\n\r\nNo program was found that opens " + document, 16));
    prompts.Expect(OpenFile("Please select the Agreement file "));
    doubleClick();
    EXPECT_EQ(Text(*options, "txtAGREEPATH"), document);
}

TEST_F(OptionsTest, APasswordIsChangedByTheRulesOfTheList) {
    LogonUsers::Write(settings, "root:first;guest:second;");
    gCurrentUser = "guest";
    Open();
    Type(*options, "txtPassword(1)", "new");
    EXPECT_FALSE(IsEnabled(*options, "btnChange")) << "the old password alone counts";
    const auto type = [&](const char* old, const char* fresh, const char* again) {
        Type(*options, "txtPassword(0)", old);
        Type(*options, "txtPassword(1)", fresh);
        Type(*options, "txtPassword(2)", again);
    };
    const Question blank = ::Box("", "The new password can not be blank. Please enter a new password!", 0);
    type("second", "new", "");
    prompts.Expect(blank);
    Press(*options, "btnChange");
    type("second", "", "new");
    prompts.Expect(blank);
    Press(*options, "btnChange");
    EXPECT_EQ(Text(*options, "txtPassword(2)"), "new") << "nothing is cleared";
    type("second", "new", "New");
    prompts.Expect(
        ::Box("Mismatch!",
              "The Verify Password doesn't match the New Password. Please re-enter the New password.", 16));
    Press(*options, "btnChange");
    EXPECT_EQ(Text(*options, "txtPassword(0)") + Text(*options, "txtPassword(1)"), "second");
    type("first", "new", "new");
    prompts.Expect(
        ::Box("Incorrect Password", "Your old password is incorrect. Please retype old password.", 16));
    Press(*options, "btnChange");
    EXPECT_EQ(Users(), "root:first;guest:second;");

    type("second", "new", "new");
    prompts.Expect(::Box("Changed Password", "Password changed!", 32));
    Press(*options, "btnChange");
    EXPECT_EQ(Users(), "root:first;guest:new;");
    EXPECT_EQ(Text(*options, "txtPassword(0)"), "");
    EXPECT_FALSE(IsEnabled(*options, "btnChange"));
    EXPECT_FALSE(IsEnabled(*options, "btnCancelChange"));
    type("x", "y", "z");
    Press(*options, "btnCancelChange");
    EXPECT_EQ(Text(*options, "txtPassword(0)") + Text(*options, "txtPassword(2)"), "");
    EXPECT_FALSE(IsEnabled(*options, "btnChange"));
}

TEST_F(OptionsTest, KeysTurnTheTabsFromAnyBox) {
    gImportDir.clear();
    ShowActive(Open());
    auto& tabs = Find<QTabWidget>(*options, "SSTab1");
    std::string turned;
    const auto turn = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        turned += std::to_string(tabs.currentIndex());
    };
    EXPECT_EQ(QApplication::focusWidget(), &Box(*options, "txtPath(0)"));
    turn(Qt::Key_Tab, Qt::ControlModifier);
    Combo("cmbOld").setFocus();
    turn(Qt::Key_Tab, Qt::ControlModifier);
    turn(Qt::Key_Tab, Qt::ControlModifier);
    turn(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(turned, "2303") << "General can not be chosen, nor stop them";
}

TEST_F(OptionsTest, EnterChangesAPasswordThatIsBeingTypedAndElseMeansOK) {
    ShowActive(Open());
    auto& tabs = Find<QTabWidget>(*options, "SSTab1");
    tabs.setCurrentIndex(3);
    EXPECT_EQ(HelpTopicOf(*options), "options.html#password");
    Type(*options, "txtPassword(0)", "first");
    prompts.Expect(::Box("", "The new password can not be blank. Please enter a new password!", 0));
    QTest::keyClick(&Box(*options, "txtPassword(0)"), Qt::Key_Return);
    EXPECT_TRUE(options->isVisible());
    tabs.setCurrentIndex(0);
    EXPECT_EQ(HelpTopicOf(*options), "options.html#paths");
    QTest::keyClick(&Box(*options, "txtPath(2)"), Qt::Key_Return);
    EXPECT_FALSE(options->isVisible());
}

} // namespace
