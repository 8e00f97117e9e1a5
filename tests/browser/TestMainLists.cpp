// SPDX-License-Identifier: GPL-3.0-or-later
// Which list a click on a category's node brings, and how one that fails looks.
#include "browser/ListView.h"
#include "browser/TreeModel.h"
#include "core/Globals.h"
#include "platform/errors.h"
#include "tests/browser/MainWindowTest.h"
#include "tests/support/Database.h"

#include <QProgressBar>

namespace {

using MainListsTest = MainWindowTest;

TEST_F(MainListsTest, EveryNodeBringsItsList) {
    OpenSample();
    struct {
        const char* key;
        const char* lastCaption;
        std::size_t rows;
        const char* firstRow;
    } cases[] = {
        {"PC1?MAIN", "Value", 11, "Computer Name|PC1"},
        {"ALL?CPU", "Joysticks Connected", 2, nullptr},
        {"PC1?CPU", "Value", 24, "CPU Name from Windows API|pc2"},
        {"ALL?DEV", "Extra Info", 3, nullptr},
        {"PC2?DEV", "Extra Info", 1, "Net|Yes|Card|n/a|n/a|n/a|n/a|n/a|n/a"},
        {"ALL?DEVDISP", "DAC Type", 2, "PC1|Serial|8 MB|n/a"},
        {"PC1?DEVDISP", "DAC Type", 2, "Serial|8 MB|n/a"},
        {"ALL?DEVMB", "Model Number", 3, nullptr},
        {"PC1?DEVMB", "Value", 7, "BIOS Name|b1"},
        {"ALL?DEVNET", "Client 2", 2, nullptr},
        {"PC2?DEVNET", "Client 2", 1, "Card|n2|n3|n4|n5|n6|n7|n8|n9"},
        {"ALL?DRV", "Drive letters", 2, "PC1|2|3|4|5|6|ACD"},
        {"PC1?DRV", "Value", 6, "Number of Removable Drives|2"},
        {"ALL?DRVDETAIL", "Connected As", 3, nullptr},
        {"PC1?DRVDETAIL", "Connected As", 2, "C:|Fixed|FAT|1536Mb|0Mb|lab|ser|map|user"},
        {"ALL?IO", "Double-Click", 2, nullptr},
        {"PC1?IO", "Value", 8, "Keyboard Description|in2"},
        {"ALL?MSO", "Microsoft Word", 2, nullptr},
        {"PC2?MSO", "Value", 6, "Microsoft Office Version|"},
        {"ALL?ODB", "Driver Version", 3, "PC1|od2|od3|od4"},
        {"PC1?ODB", "Driver Version", 2, "od2|od3|od4"},
        {"ALL?OS", "Service Pack", 2, nullptr},
        {"PC1?OS", "Value", 16, "Operating System Version|os2"},
        {"ALL?PRN", "Printer Port", 3, "PC1|Local|near|drv|lpt"},
        {"PC1?PRN", "Printer Port", 2, "Local|near|drv|lpt"},
        {"ALL?UNI", "Uninstall String", 3, "PC1|Paint|paint.exe"},
        {"PC2?UNI", "Uninstall String", 1, "n/a|n/a"},
    };
    for (const auto& c : cases) {
        form->NodeClick(Tree().Find(c.key));
        EXPECT_EQ(List().Items().Columns().back().caption, c.lastCaption) << c.key;
        EXPECT_EQ(Rows().size(), c.rows) << c.key;
        if (c.firstRow != nullptr) {
            EXPECT_EQ(Rows().front(), c.firstRow) << c.key;
        }
    }
    EXPECT_EQ(Find<QProgressBar>("pgbLoaded").value(), 0);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "no hourglass is left";
}

TEST_F(MainListsTest, TheTipOfAProcessorNamesItsMachineWhateverTheColumn) {
    OpenSample();
    Click("ALL?CPU");
    EXPECT_EQ(List().Items().index(1, 3).data(Qt::ToolTipRole).toString(), "PC2");
    Action("mnuConfig(0)").trigger();
    Click("ALL?CPU");
    EXPECT_EQ(Rows().size(), 1U) << "the original configuration has lists of its own";
    Click("PC1?DEVDISP");
    EXPECT_EQ(Rows().front(), "old|old|old");
}

TEST_F(MainListsTest, AFailureShowsItsBoxOverTheRowsSoFar) {
    OpenSample({{"O'Neill", std::nullopt, std::nullopt}});
    RunSQL(*gConnection, "UPDATE DrivesData SET \"Drive Size\" = NULL WHERE \"Drive Root\" = 'D:'");
    std::vector<std::string> rows;
    prompts.Expect(Box("Error#94", "Invalid use of Null", MsgBoxStyle::kCritical), [&] {
        rows = Rows();
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(List().Items().rowCount(), 3) << "they are to be seen behind the box";
    });
    Click("ALL?DRVDETAIL");
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows.back(), "PC2|D:|CD|||||||") << "up to the missing size";
    EXPECT_TRUE(gRecordset->IsOpen());

    prompts.Expect(Box("Error#-1", "Syntax error in query: an apostrophe or a NUL in the name \"O'Neill\"",
                       MsgBoxStyle::kCritical));
    Click("O'Neill?CPU");
    EXPECT_TRUE(Rows().empty());
    EXPECT_EQ(List().Items().columnCount(), 2);
    Click("PC1?CPU");
    EXPECT_EQ(Rows().size(), 24U) << "the next node is none the worse";
}

TEST_F(MainListsTest, OtherFailuresHaveTheirBoxesToo) {
    OpenSample();
    RunSQL(*gConnection,
           "ALTER TABLE OS RENAME TO Former; CREATE TABLE OS AS SELECT * FROM Former WHERE ConfID = 1;"
           "INSERT INTO OS SELECT * FROM Former");
    prompts.Expect(Box("Error#" + std::to_string(Errors::kKeyNotUnique),
                       "The key is not unique in its collection: PC1?OS", MsgBoxStyle::kCritical));
    Click("ALL?OS");
    EXPECT_EQ(Rows().size(), 2U) << "a key that comes twice stops the list";
    gConnection->Close();
    prompts.Expect(Box("Error#" + std::to_string(Errors::kConnectionClosed), "The connection is closed",
                       MsgBoxStyle::kCritical));
    Click("PC1?CPU");
    EXPECT_EQ(List().Items().columnCount(), 2);
}

} // namespace
