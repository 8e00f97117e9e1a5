// SPDX-License-Identifier: GPL-3.0-or-later
// What the list shows, written as comma-separated lines.
#include "archive/ListExport.h"
#include "core/Globals.h"
#include "platform/codepage.h"
#include "tests/archive/ExportTest.h"
#include "tests/support/SmallFiles.h"

namespace {

constexpr int kYesNoDefaultNo = 4 + 16 + 256;

class ListExportTest : public ExportTest {
protected:
    ListExportTest() {
        form.columns = {"User Name", "Description"};
        form.rows = {"PC1", "PC2", "Ren\u00e9"};
        form.subItems = {{"17\" screen, flat"}, {""}, {"line\r\nbreak \u65e5"}};
    }

    ListExport command{context};
};

TEST_F(ListExportTest, WritesTheListAsItStands) {
    ExpectPath("list.csv");
    prompts.Expect(Box("Export", "Exported Ok!", 32));
    command.mnuExport();
    EXPECT_EQ(folder.ReadFile("list.csv"),
              "\"User Name\",\"Description\"\r\n"
              "\"PC1\",\"17\" screen, flat\"\r\n"
              "\"PC2\",\"\"\r\n"
              "\"Ren" +
                  CodePage::System().Encode("\u00e9") + "\",\"line\r\nbreak ?\"\r\n");
    EXPECT_EQ(form.told,
              "Enter a export filename name ...\n\nExport in progress ...\nhourglass\narrow\n"
              "Export completed ...\n");
    const FileDialog dialog = prompts.FileDialogs().at(0);
    EXPECT_EQ(dialog.filter, "Export File (*.csv)|*.csv");
    EXPECT_EQ(dialog.defaultExtension, "csv");
    EXPECT_EQ(dialog.folder, "/opt/velmora");
    ExpectNoOtherFile("list.csv");
}

TEST_F(ListExportTest, TakesTheSelectedRowsAlone) {
    form.selected = {0, 1};
    // A dialog may hand over its whole buffer.
    prompts.Expect(SaveFile("Please enter export filename"), folder.Path("list.csv") + std::string(3, '\0'));
    prompts.Expect(Box("Export", "Exported Ok!"));
    command.mnuExport();
    EXPECT_EQ(folder.ReadFile("list.csv"),
              "\"User Name\",\"Description\"\r\n"
              "\"PC1\",\"17\" screen, flat\"\r\n\"PC2\",\"\"\r\n");
}

TEST_F(ListExportTest, AListWithoutRowsIsItsHeaders) {
    form.rows.clear();
    ExpectPath("list.csv");
    prompts.Expect(Box("Export", "Exported Ok!"));
    command.mnuExport();
    EXPECT_EQ(folder.ReadFile("list.csv"), "\"User Name\",\"Description\"\r\n");
}

TEST_F(ListExportTest, AListWithoutColumnsIsNothing) {
    form.columns.clear();
    prompts.Expect(Box("Export", "There's nothing to export.", 32));
    command.mnuExport();
    EXPECT_EQ(form.told, "");
}

TEST_F(ListExportTest, ChangesNothingUnlessToldTo) {
    folder.WriteFile("list.csv", "old");
    const Question overwrite =
        Box("Overwrite?", "Overwrite '" + folder.Path("list.csv") + "' this file?", kYesNoDefaultNo);
    ExpectPath("list.csv");
    prompts.Expect(overwrite, MsgBoxAnswer::No);
    command.mnuExport();
    prompts.Expect(SaveFile("Please enter export filename"));
    command.mnuExport();
    EXPECT_EQ(form.told, "Enter a export filename name ...\n\nEnter a export filename name ...\n\n");
    EXPECT_EQ(folder.ReadFile("list.csv"), "old");
    ExpectPath("list.csv");
    prompts.Expect(overwrite, MsgBoxAnswer::Yes);
    prompts.Expect(Box("Export", "Exported Ok!"));
    command.mnuExport();
    EXPECT_TRUE(folder.ReadFile("list.csv").starts_with("\"User Name\""));
}

TEST_F(ListExportTest, AFullDiskLeavesTheOldFile) {
    form.subItems[0] = {std::string(200000, 'x')};
    folder.WriteFile("list.csv", "old");
    ExpectPath("list.csv");
    prompts.Expect(Box("Overwrite?", "Overwrite '" + folder.Path("list.csv") + "' this file?"),
                   MsgBoxAnswer::Yes);
    prompts.Expect(Box("Error #75", "File too large: " + folder.Path("list.csv"), 16));
    {
        const SmallFiles full(100000);
        command.mnuExport();
    }
    EXPECT_EQ(folder.ReadFile("list.csv"), "old");
    EXPECT_TRUE(form.told.ends_with("Export in progress ...\nhourglass\narrow\n")) << form.told;
    ExpectNoOtherFile("list.csv");
}

TEST_F(ListExportTest, TellsWhyAFileCanNotBe) {
    ExpectPath("missing/list.csv");
    prompts.Expect(Box("Error #76", "Path not found: " + folder.Path("missing"), 16));
    command.mnuExport();
    gDatabasePath = folder.Path("Demodb.mdb");
    ExpectPath("Demodb.mdb");
    prompts.Expect(Box("Error #70", "Permission denied: " + gDatabasePath, 16));
    command.mnuExport();
    gDatabasePath.clear();
}

} // namespace
