// SPDX-License-Identifier: GPL-3.0-or-later
// Machines deleted, removed with their files, and marked for personal information: over a main window
// without widgets, and at the end over the real one.
#include "browser/ListView.h"
#include "browser/MachineMaintenance.h"
#include "browser/TreeModel.h"
#include "core/Globals.h"
#include "import/Schema.h"
#include "tests/browser/InventorySample.h"
#include "tests/browser/MainWindowTest.h"
#include "tests/support/FakeForm.h"

#include <sqlite3.h>

#include <filesystem>
#include <functional>
#include <utility>

namespace {

constexpr int kDestroys = 4 + 16 + 256;
constexpr int kAsks = 4 + 32 + 256;
constexpr int kTells = 32;

using Strings = std::vector<std::string>;

Question DeleteOne(const std::string& machine) {
    return Box("Delete Selected Machine?",
               "You are about to DELETE Machine " + machine + " from the database! Continue?", kDestroys);
}
Question RemoveOne(const std::string& machine) {
    return Box(
        "Remove Selected Machine Completely?",
        "You are about to REMOVE Machine " + machine + " Completely! Are you sure you want to continue?",
        kDestroys);
}
const Question kDeleteAll =
    Box("Delete MACHINES!!", "Are you sure you want to DELETE ALL MACHINES from the database?", kDestroys);
const Question kRemoveAll =
    Box("Remove MACHINES Completely!",
        "Are you sure you want to REMOVE ALL MACHINES COMPLETELY? This is not reversible!", kDestroys);
const Question kDeleteSome =
    Box("Delete Selected Machines?", "You are about to DELETE the selected machines! Continue?", kDestroys);
const Question kRemoveSome =
    Box("Remove Selected Machines Completely?",
        "You are about to DELETE all the Selected Machines COMPLETELY ! This is not reversable are you "
        "sure you want to continue?",
        kDestroys);
const Question kMarked = Box("Marked Ok", "Machines marked successfully !", kTells);
const Question kUnmarked = Box("Unmarked Ok", "Machines unmarked successfully !", kTells);

class MaintenanceTest : public testing::Test {
protected:
    MaintenanceTest() {
        const std::string path = folder.Path("Demodb.mdb");
        CreateDatabase(path);
        gConnection = OpenDatabase(path);
        RunSQL(*gConnection, kInventorySample);
        RunSQL(*gConnection, "INSERT INTO Net (COMPUTERNAME) VALUES ('PC3'), ('O''Hara')");
        folder.WriteFile("INF/readme.txt", "");
        gImportDir = folder.Path("INF");
    }
    ~MaintenanceTest() override {
        gRecordset.reset();
        gConnection.reset();
        gImportDir.clear();
    }

    static std::string Machines() {
        return RowsOf(*gConnection, "SELECT COMPUTERNAME FROM Net ORDER BY rowid");
    }
    /// Rows of the tables that hang on machines.
    static int DependentRows() {
        int count = 0;
        for (const TableDefinition& table : InventoryTables())
            if (table.parent != Parent::None)
                count += std::stoi(RowsOf(*gConnection, "SELECT COUNT(*) FROM " + std::string(table.name)));
        return count;
    }
    void WriteFiles(const Strings& names) const {
        for (const std::string& name : names)
            folder.WriteFile("INF/" + name, "content");
    }
    /// The inventory folder's files, in order; empty ones in brackets.
    std::string Files() const {
        std::string text;
        for (const std::string& name : folder.Names("INF"))
            if (name != "readme.txt")
                text += folder.ReadFile("INF/" + name).empty() ? "(" + name + ") " : name + " ";
        return text;
    }
    void Select(const Strings& names) {
        form.rows = names;
        form.selected.resize(names.size());
        for (std::size_t i = 0; i < names.size(); ++i)
            form.selected[i] = i;
    }
    bool WasRefreshed() { return std::exchange(form.told, "").ends_with("refresh\n"); }

    TemporaryFolder folder;
    QueuedPrompts prompts;
    FakeForm form;
    MachineMaintenance maintenance{form, prompts};
};

TEST_F(MaintenanceTest, EachCommandReadsTheNodeItsOwnWay) {
    using Command = void (*)(MachineMaintenance&);
    const Command erase = [](MachineMaintenance& on) { on.mnuFileDelete(); };
    const Command remove = [](MachineMaintenance& on) { on.mnuFileRemoveComp(); };
    const struct {
        Command command;
        const char* node;
        bool isSelected;
        Question question;
    } cases[] = {
        {erase, "PC1?MAIN", false, DeleteOne("PC1")},
        {erase, "PC1?DEVNET", true, DeleteOne("PC1")},
        {erase, "ALL", false, kDeleteAll},
        {erase, "MAIN", true, kDeleteSome},
        {erase, "ALL?CPU", true, kDeleteSome},
        {erase, "ALL?MAIN", false, kDeleteAll},
        {remove, "PC1?MAIN", true, RemoveOne("PC1")},
        {remove, "PC1?CPU", false, RemoveOne("PC1?CPU")},
        {remove, "ALL?CPU", true, RemoveOne("ALL?CPU")},
        {remove, "ALL", true, kRemoveSome},
        {remove, "MAIN", false, kRemoveAll},
    };
    WriteFiles({"PC1.ORG"});
    for (const auto& c : cases) {
        form.node = c.node;
        Select(c.isSelected ? Strings{"PC1"} : Strings{});
        prompts.Expect(c.question, MsgBoxAnswer::No);
        c.command(maintenance);
    }
    EXPECT_EQ(form.told, "") << "nothing happens on No, nor where the box is closed";
    EXPECT_EQ(Machines(), "PC1\nPC2\nPC3\nO'Hara");
    EXPECT_EQ(Files(), "PC1.ORG ");
}

TEST_F(MaintenanceTest, AllMachinesAreMoreThanAFilterShows) {
    const auto hides = [](const char* machines) {
        return Box("Machines Out of Sight",
                   std::string("The list is filtered: ") + machines +
                       " machines are out of sight. Do you want to go on with all?",
                   kDestroys);
    };
    const auto mark = [this] { maintenance.mnuPopPersonal(0); };
    const auto erase = [this] { maintenance.mnuFileDelete(); };
    const auto remove = [this] { maintenance.mnuFileRemoveComp(); };
    const Question markAll = Box(
        "Mark All?", "Are you sure your want to mark all machines to retrieve personal information?", kAsks);
    form.node = "ALL";
    form.hidden = 7;
    const std::vector<std::pair<std::function<void()>, Question>> commands = {
        {mark, markAll}, {erase, kDeleteAll}, {remove, kRemoveAll}};
    for (const auto& [command, question] : commands) {
        form.rows = {"PC1", "PC1", "pc1", "PC3"};
        prompts.Expect(hides("2 of 4"), MsgBoxAnswer::No);
        command();
        prompts.Expect(hides("2 of 4"), MsgBoxAnswer::Yes);
        prompts.Expect(question, MsgBoxAnswer::No);
        command();
        form.rows = {"PC1", "PC2", "PC3", "O'Hara", "PC1"};
        prompts.Expect(question, MsgBoxAnswer::No);
        command(); // of every machine a row is in sight
    }
    EXPECT_EQ(Machines(), "PC1\nPC2\nPC3\nO'Hara");
    EXPECT_FALSE(WasRefreshed());
}

TEST_F(MaintenanceTest, DeletesOneMachineWithItsRowsAndKeepsItsFiles) {
    WriteFiles({"PC1.ORG"});
    RunSQL(*gConnection, "INSERT INTO Personal (COMPUTERNAME) VALUES ('PC1')");
    form.node = "PC1?CPU";
    prompts.Expect(DeleteOne("PC1"), MsgBoxAnswer::Yes);
    maintenance.mnuFileDelete();
    EXPECT_EQ(Machines(), "PC2\nPC3\nO'Hara");
    for (const TableDefinition& table : InventoryTables()) {
        const std::string from = " FROM " + std::string(table.name);
        if (table.parent == Parent::Machine) {
            EXPECT_EQ(RowsOf(*gConnection, "SELECT DISTINCT COMPUTERNAME" + from), "PC2") << from;
        } else if (table.parent == Parent::Device) {
            EXPECT_EQ(RowsOf(*gConnection, "SELECT *" + from + " WHERE [Device Auto ID] <> 'id2'"), "")
                << from;
        }
    }
    EXPECT_EQ(RowsOf(*gConnection, "SELECT COUNT(*) FROM DeviceNetwork"), "1") << "the other machine's";
    EXPECT_EQ(Files(), "PC1.ORG ");
    EXPECT_TRUE(WasRefreshed());
}

TEST_F(MaintenanceTest, AFailureKeepsWhatIsDeletedByThen) {
    form.node = "ALL";
    Select({"PC1", "PC1", "PC2", "PC1", "O'Hara", "PC3"});
    prompts.Expect(kDeleteSome, MsgBoxAnswer::Yes);
    prompts.Expect(
        Box("Error #-1", "Syntax error in query: an apostrophe or a NUL in the name \"O'Hara\"", 16));
    maintenance.mnuFileDelete();
    EXPECT_EQ(Machines(), "PC3\nO'Hara");
    EXPECT_EQ(form.told, "hourglass\narrow\n") << "without a refresh";
}

TEST_F(MaintenanceTest, AllMachinesGoTogetherOrStay) {
    const int before = DependentRows();
    sqlite3_db_config(gConnection->Handle(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 1, nullptr);
    RunSQL(*gConnection,
           "CREATE TRIGGER Locked BEFORE DELETE ON Net WHEN old.COMPUTERNAME = 'PC3' "
           "BEGIN SELECT RAISE(ABORT, 'locked'); END");
    form.node = "MAIN";
    prompts.Expect(kDeleteAll, MsgBoxAnswer::Yes);
    prompts.Expect(Box("Error #-1", "locked", 16));
    maintenance.mnuFileDelete();
    EXPECT_EQ(DependentRows(), before);
    EXPECT_FALSE(WasRefreshed());

    RunSQL(*gConnection, "DROP TRIGGER Locked");
    prompts.Expect(kDeleteAll, MsgBoxAnswer::Yes);
    maintenance.mnuFileDelete();
    EXPECT_EQ(Machines(), "");
    EXPECT_EQ(DependentRows(), 0);
    EXPECT_EQ(RowsOf(*gConnection, "SELECT COUNT(*) FROM Version"), "1");
    EXPECT_TRUE(WasRefreshed());
}

TEST_F(MaintenanceTest, RemovesAMachinesFilesHoweverTheyAreWritten) {
    WriteFiles({"PC1.ORG", "pc1.org", "Pc1.inf", "PC10.ORG", "PC1.TXT", "PC2.ORG"});
    form.node = "PC1?MAIN";
    const auto remove = [this](const std::string& name) {
        prompts.Expect(RemoveOne(name), MsgBoxAnswer::Yes);
        maintenance.mnuFileRemoveComp();
        EXPECT_TRUE(WasRefreshed());
    };
    remove("PC1");
    EXPECT_EQ(Machines(), "PC2\nPC3\nO'Hara");
    EXPECT_EQ(Files(), "PC1.TXT PC10.ORG PC2.ORG ");
    form.node = "PC2?CPU";
    remove("PC2?CPU");
    EXPECT_EQ(Machines(), "PC2\nPC3\nO'Hara") << "a category's node is no machine";
    EXPECT_EQ(Files(), "PC1.TXT PC10.ORG PC2.ORG ");
    gImportDir.clear();
    form.node = "PC2?MAIN";
    remove("PC2");
    EXPECT_EQ(Machines(), "PC3\nO'Hara");
    EXPECT_EQ(Files(), "PC1.TXT PC10.ORG PC2.ORG ") << "without a folder there are no files";
}

TEST_F(MaintenanceTest, ANameNeverLeadsOutOfTheFolder) {
    folder.WriteFile("PC1.ORG", "content");
    folder.WriteFile("INF/sub/PC1.ORG", "content");
    WriteFiles({".ORG", "..ORG", "...ORG"});
    form.node = "ALL";
    Select({"../PC1", "sub/PC1", "sub\\PC1", ".", "..", ".PC1", ""});
    prompts.Expect(kRemoveSome, MsgBoxAnswer::Yes);
    maintenance.mnuFileRemoveComp();
    prompts.Expect(kMarked);
    maintenance.mnuPopPersonal(0);
    EXPECT_TRUE(folder.Exists("PC1.ORG"));
    EXPECT_FALSE(folder.Exists("PC1.pnf"));
    EXPECT_TRUE(folder.Exists("INF/sub/PC1.ORG"));
    EXPECT_FALSE(folder.Exists("INF/sub/PC1.pnf"));
    std::filesystem::remove_all(folder.Path("INF/sub"));
    EXPECT_EQ(Files(), "...ORG ..ORG .ORG ");
}

TEST_F(MaintenanceTest, RemovingAllTakesEveryInventoryFile) {
    WriteFiles({"PC1.ORG", "pc1.org", "gone.INF", "x.Pnf", "PC1.TXT", "ORG"});
    folder.WriteFile("INF/full.org/file", "a folder is no inventory file");
    form.node = "ALL";
    prompts.Expect(kRemoveAll, MsgBoxAnswer::Yes);
    maintenance.mnuFileRemoveComp();
    EXPECT_EQ(Machines(), "");
    EXPECT_TRUE(folder.Exists("INF/full.org/file"));
    std::filesystem::remove_all(folder.Path("INF/full.org"));
    EXPECT_EQ(Files(), "ORG PC1.TXT ");
    EXPECT_TRUE(WasRefreshed());
}

TEST_F(MaintenanceTest, MarksWithAnEmptyFileAndUnmarksByTakingItAway) {
    WriteFiles({"PC1.PNF", "pc1.Pnf", "PC2.PNF"});
    form.node = "PC1?CPU";
    for (int time = 0; time < 2; ++time) {
        prompts.Expect(Box("Machine Marked",
                           "Next time machine 'PC1' starts up, it will be asked to enter personal detail.",
                           kTells));
        maintenance.mnuPopPersonal(0);
        EXPECT_EQ(Files(), "(PC1.pnf) PC2.PNF ") << "one empty file, however often";
        EXPECT_TRUE(WasRefreshed());
    }
    for (int time = 0; time < 2; ++time) {
        prompts.Expect(Box("Machine Unmarked",
                           "Machine 'PC1' was successfully Unmarked for personal information retrieval.",
                           kTells));
        maintenance.mnuPopPersonal(1);
        EXPECT_EQ(Files(), "PC2.PNF ");
    }
    form.node = "ALL?CPU";
    Select({"PC3", "PC3", "O'Hara"});
    prompts.Expect(kMarked);
    maintenance.mnuPopPersonal(0);
    EXPECT_EQ(Files(), "(O'Hara.pnf) PC2.PNF (PC3.pnf) ");
    prompts.Expect(kUnmarked);
    maintenance.mnuPopPersonal(1);
    EXPECT_EQ(Files(), "PC2.PNF ");
}

TEST_F(MaintenanceTest, MarksAllMachinesOfTheDatabase) {
    RunSQL(*gConnection, "INSERT INTO Net (COMPUTERNAME) VALUES ('a/b')");
    WriteFiles({"other.PNF"});
    form.node = "MAIN";
    const Question mark = Box(
        "Mark All?", "Are you sure your want to mark all machines to retrieve personal information?", kAsks);
    const Question unmark =
        Box("Unmark All?",
            "Are you sure your want to unmark all machines for personal information retrieval?", kAsks);
    prompts.Expect(mark, MsgBoxAnswer::No);
    maintenance.mnuPopPersonal(0);
    prompts.Expect(unmark, MsgBoxAnswer::No);
    maintenance.mnuPopPersonal(1);
    EXPECT_EQ(form.told, "");
    prompts.Expect(mark, MsgBoxAnswer::Yes);
    prompts.Expect(Box("All Marked", "All machines are marked for personal information retrieval!", kTells));
    maintenance.mnuPopPersonal(0);
    EXPECT_EQ(Files(), "(O'Hara.pnf) (PC1.pnf) (PC2.pnf) (PC3.pnf) other.PNF ");
    prompts.Expect(unmark, MsgBoxAnswer::Yes);
    prompts.Expect(
        Box("All Unmarked", "All machines are unmarked for personal information retrieval!", kTells));
    maintenance.mnuPopPersonal(1);
    EXPECT_EQ(Files(), "other.PNF ");
    EXPECT_TRUE(WasRefreshed());
}

TEST_F(MaintenanceTest, MarkingWithoutAFolderOffersTheOptions) {
    gImportDir.clear();
    form.node = "PC1?MAIN";
    const Question question = Box(
        "Start Options", "You haven't specified the INF directory path. Start the Options Dialog?", 4 + 32);
    prompts.Expect(question, MsgBoxAnswer::No);
    maintenance.mnuPopPersonal(0);
    EXPECT_EQ(form.told, "");
    prompts.Expect(question, MsgBoxAnswer::Yes);
    maintenance.mnuPopPersonal(1);
    EXPECT_EQ(form.told, "options\n");
}

TEST_F(MaintenanceTest, WithoutANodeNothingIsTouched) {
    for (int command = 0; command < 3; ++command)
        prompts.Expect(Box("Error #91", "There is no object here", 16));
    maintenance.mnuFileDelete();
    maintenance.mnuFileRemoveComp();
    maintenance.mnuPopPersonal(0);
    EXPECT_EQ(Machines(), "PC1\nPC2\nPC3\nO'Hara");
}

class MachineCommandsTest : public MainWindowTest {
protected:
    void Open() {
        MakeDatabase({{"PC1", "20240315", "08:00:00"}, {"PC2", "20240101", "09:00:00"}});
        LoadAndShow();
        gImportDir = folder.Path("INF");
        folder.WriteFile("INF/PC1.ORG", "");
    }
};

TEST_F(MachineCommandsTest, ReachTheirHandlersFromEveryMenu) {
    Open();
    Click("PC1?MAIN");
    for (const std::string item :
         {"mnuFileDelete", "mnuPopDelete", "Delete", "mnuFileRemoveComp", "mnuRemove"}) {
        prompts.Expect(item.find("Remove") == std::string::npos ? DeleteOne("PC1") : RemoveOne("PC1"),
                       MsgBoxAnswer::No);
        // A key or a menu runs an item only while it is enabled; the toolbar's is the list's.
        Action(item.c_str()).setEnabled(true);
        Action(item.c_str()).trigger();
    }
    prompts.Expect(SaveFile("Please enter export filename"));
    Action("mnuPopFullExport").trigger();
    EXPECT_EQ(prompts.FileDialogs().back().folder, folder.Path());
    prompts.Expect(SaveFile("Please enter export filename"));
    Action("mnuPopTxtlExport").trigger();
    EXPECT_EQ(prompts.FileDialogs().back().filter, "Export File (*.txt)|*.txt");
}

TEST_F(MachineCommandsTest, TheListsMenuActsOnItsSelectedMachines) {
    Open();
    Click("ALL");
    ClickRow(1);
    prompts.Expect(kMarked);
    Action("mnuPopRPersonal").trigger();
    EXPECT_TRUE(folder.Exists("INF/PC2.pnf"));
    Click("ALL");
    EXPECT_EQ(Rows(), (std::vector<std::string>{"PC1|20240315|08:00:00|", "PC2|20240101|09:00:00|Marked"}));
    ClickRow(1);
    prompts.Expect(SaveFile("Please enter export filename"), folder.Path("list.csv"));
    prompts.Expect(Box("Export", "Exported Ok!"));
    Action("mnuPopRExport").trigger();
    EXPECT_EQ(folder.ReadFile("list.csv"),
              "\"User Name\",\"Logon Date\",\"Logon Time\",\"Retrieve Personal Info\"\r\n"
              "\"PC2\",\"20240101\",\"09:00:00\",\"Marked\"\r\n");
    prompts.Expect(kUnmarked);
    Action("mnuPopRUnPersonal").trigger();
    EXPECT_FALSE(folder.Exists("INF/PC2.pnf"));
    Click("ALL");
    ClickRow(0);
    Press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), "PC2");
    prompts.Expect(
        Box("Machines Out of Sight",
            "The list is filtered: 1 of 2 machines are out of sight. Do you want to go on with all?",
            kDestroys),
        MsgBoxAnswer::No);
    Action("mnuPopRRemove").trigger();
    Press(Qt::Key_Escape);
    prompts.Expect(kRemoveSome, MsgBoxAnswer::Yes);
    Action("mnuPopRRemove").trigger();
    EXPECT_FALSE(folder.Exists("INF/PC1.ORG"));
    EXPECT_FALSE(Tree().Find("PC1?MAIN").isValid());
    EXPECT_TRUE(Tree().Find("PC2?MAIN").isValid());
    EXPECT_EQ(List().Items().Rows(), 0U) << "a refresh empties the list";
}

} // namespace
