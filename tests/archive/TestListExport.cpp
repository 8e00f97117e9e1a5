// SPDX-License-Identifier: GPL-3.0-or-later
// What the list shows, written as comma-separated lines.
#include "archive/ListExport.h"
#include "platform/codepage.h"
#include "platform/files.h"
#include "tests/archive/ExportTest.h"

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
    EXPECT_EQ(folder.Rights("list.csv"), 0600U) << "it may hold personal details";
    ExpectNoOtherFile("list.csv");
}

TEST_F(ListExportTest, TakesTheSelectedRowsAlone) {
    const std::string headers = "\"User Name\",\"Description\"\r\n";
    const struct {
        const char* why;
        std::vector<std::size_t> selected;
        std::size_t rows;
        std::string lines;
    } cases[] = {
        {"two of three", {0, 1}, 3, headers + "\"PC1\",\"17\" screen, flat\"\r\n\"PC2\",\"\"\r\n"},
        {"a list without rows is its headers", {}, 0, headers},
    };
    for (const auto& c : cases) {
        form.selected = c.selected;
        form.rows.resize(c.rows);
        // A dialog may hand over its whole buffer.
        ExpectPath("list.csv" + std::string(3, '\0'));
        prompts.Expect(Box("Export", "Exported Ok!"));
        command.mnuExport();
        EXPECT_EQ(folder.ReadFile("list.csv"), c.lines) << c.why;
        DeleteFile(folder.Path("list.csv"));
    }
    form.told.clear();
    form.columns.clear();
    prompts.Expect(Box("Export", "There's nothing to export.", 32));
    command.mnuExport();
    EXPECT_EQ(form.told, "") << "a list without columns is nothing";
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
