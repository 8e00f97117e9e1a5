// SPDX-License-Identifier: GPL-3.0-or-later
// What can be commanded when, and by which key: every menu, button and pop-up item in every state.
#include "browser/TreeModel.h"
#include "core/Globals.h"
#include "tests/browser/MainWindowTest.h"
#include "tests/support/Database.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QShortcut>

#include <map>
#include <sstream>

namespace {

using AvailabilityTest = MainWindowTest;

const std::vector<MachineRow> kMachines = {{"PC1", "20240315", "08:00:00"}, {"PC2", "20240101", "09:00:00"}};

/// A state for each digit of a Command's pattern; those with a key are reached by a click on the node.
constexpr const char* kStates[] = {"no database", "just opened", "MAIN",   "ALL",
                                   "ALL?CPU",     "PC1?MAIN",    "PC1?CPU"};
constexpr std::size_t kFirstNode = 2;

struct Command {
    std::string states;
    const char* why;
    /// Separated by blanks.
    std::string names;
};

const std::vector<Command> kCommands = {
    {"1111111", "it needs no machine",
     "mnuFile mnuView mnuHelp mnuPreferences mnuViewOptions mnuUsers mnuMBackup mnuFileClose mnuViewToolbar "
     "mnuViewStatusBar mnuProgress mnuListViewMode(0) mnuListViewMode(1) mnuListViewMode(2) "
     "mnuListViewMode(3) mnuViewLineUpIcons mnuHelpContents mnuHelpSearch mnuHelpAbout ViewLarge ViewSmall "
     "ViewList ViewDetails"},
    {"1111111", "a lost database can be brought back", "mnuRestore"},
    {"1111111", "its menu closes with the database", "mnuCopy"},
    {"1000000", "one database at a time", "mnuSelectDatabase mnuNewDatabase"},
    {"0111111", "it needs a database and no more",
     "mnuCloseDatabase mnuImport mnuQuickImport mnuEdit mnuShow mnuViewRefresh MNUReport mnuBackup mnuTools "
     "Import ConfID0 ConfID1 Copy mnuPopCopy mnuPopShow mnuPopRefresh mnuPopRCopy mnuPopRShow mnuPopRRefresh "
     "mnuPopRExport mnuPopTxtlExport"},
    {"0111010", "the node is a machine, or all of them",
     "mnuExport mnuPopPersonal(0) mnuPopPersonal(1) mnuPopFullExport mnuPopDelete mnuRemove "
     "mnuPopProperties"},
    {"1111010", "the same, though opening and closing do not touch it",
     "mnuFileDelete mnuFileRemoveComp mnuProperties Props"},
    {"0111100", "the rows are machines",
     "mnuPopRPersonal mnuPopRUnPersonal mnuPopRImport mnuPopRDelete mnuPopRRemove"},
    {"0111100", "the rows decide on the toolbar's, whatever the node allows", "Delete"},
};

class WalkTest : public MainWindowTest {
protected:
    void ExpectState(std::size_t state) const {
        for (const Command& command : kCommands) {
            std::istringstream names(command.names);
            for (std::string name; names >> name;)
                EXPECT_EQ(IsEnabled(name.c_str()), command.states.at(state) == '1')
                    << kStates[state] << ", " << name << ": " << command.why;
        }
    }
};

TEST_F(WalkTest, EveryCommandIsThereWhenItCanDoSomething) {
    prompts.Expect(Box("Error #-1",
                       "This is either not a MOVA database or it's an incompatible database.\r\n\r\n"
                       "If you are sure it's a MOVA database try repairing it.\r\n\r\n"
                       "Error Description: unable to open database file"));
    LoadAndShow();
    EXPECT_EQ(Status(), "Incompatible database");
    ExpectState(0);
    // Neither key has anything to act on; a box or a change of the clipboard would be wrong.
    QGuiApplication::clipboard()->setText("before");
    QTest::keyClick(form.get(), Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(form.get(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), "before");

    MakeDatabase(kMachines);
    gDatabasePath = folder.Path("Demodb.mdb");
    gFirstActivation = true;
    form->Activate();
    ExpectState(1);
    // There and back, so that each state follows from more than one other.
    const std::size_t states = std::size(kStates);
    for (std::size_t state = kFirstNode; state < states; ++state) {
        Click(kStates[state]);
        ExpectState(state);
    }
    for (std::size_t state = states; state-- > kFirstNode;) {
        Click(kStates[state]);
        ExpectState(state);
    }
    Action("mnuCloseDatabase").trigger();
    ExpectState(0);
    EXPECT_EQ(Tree().rowCount(), 0);
    EXPECT_TRUE(Rows().empty());
    EXPECT_EQ(Status() + gDatabasePath, "Database closed...");
}

// A machine can bear any name that a collector writes, and with it a node whose category nobody knows.
TEST_F(AvailabilityTest, ANodeOfNoKnownCategorySaysSoAndAllowsWhatAMachineDoes) {
    MakeDatabase({{"A?B", {}, {}}, {"ALL?x", {}, {}}, {"ALL", {}, {}}});
    LoadAndShow();
    RunSQL(*gConnection, "INSERT INTO PC (COMPUTERNAME, ConfID) VALUES ('A?B', 1)");
    for (const char* key : {"A?B?MAIN", "ALL?x?MAIN", "A?B?CPU", "ALL?x?DEVNET"}) {
        Click("ALL");
        prompts.Expect(
            Box("", "You have clicked on a sub-tree that is not supported??", MsgBoxStyle::kOKOnly));
        Click(key);
        EXPECT_TRUE(Rows().empty()) << key;
        EXPECT_TRUE(IsEnabled("mnuPopDelete")) << key;
        EXPECT_FALSE(IsEnabled("mnuPopRDelete")) << key;
        EXPECT_FALSE(IsEnabled("Delete")) << key;
    }
    Click("ALL?MAIN");
    EXPECT_EQ(Rows().size(), 3U) << "a machine that is named as the branch behaves as the branch";
    EXPECT_TRUE(IsEnabled("mnuPopRDelete"));
}

TEST_F(AvailabilityTest, TheToolbarsCopyDoesNothing) {
    MakeDatabase(kMachines);
    LoadAndShow();
    Click("ALL");
    QGuiApplication::clipboard()->setText("before");
    Action("Copy").trigger();
    EXPECT_EQ(Clipboard(), "before");
    QTest::keyClick(form.get(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_NE(Clipboard(), "before");
}

TEST_F(AvailabilityTest, NoKeyBelongsToTwoCommands) {
    MakeDatabase({});
    Load();
    std::map<std::string, std::string> owners;
    const auto claim = [&](const QKeySequence& key, const QString& owner) {
        const auto [other, isFirst] = owners.emplace(key.toString().toStdString(), owner.toStdString());
        EXPECT_TRUE(isFirst) << other->first << " is " << other->second << " and " << owner.toStdString();
    };
    for (const QAction* action : form->findChildren<QAction*>())
        for (const QKeySequence& key : action->shortcuts())
            claim(key, action->objectName());
    for (const QShortcut* shortcut : form->findChildren<QShortcut*>())
        claim(shortcut->key(), "a shortcut of " + shortcut->parent()->objectName());
    EXPECT_EQ(owners.at("Ctrl+X"), "mnuFileClose");
    EXPECT_TRUE(owners.contains("F1"));
}

} // namespace
