// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileModule.h"
#include "platform/errors.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(CreateEmptyFile, ReplacesWhatStandsThere) {
    const TemporaryFolder folder;
    FileModule::CreateEmptyFile(folder.Path("PC1.pnf"));
    EXPECT_EQ(folder.ReadFile("PC1.pnf"), "");

    folder.WriteFile("PC2.pnf", "answers of before");
    FileModule::CreateEmptyFile(folder.Path("PC2.pnf"));
    EXPECT_EQ(folder.ReadFile("PC2.pnf"), "");

    folder.WriteFile("database", "rows");
    std::filesystem::create_symlink(folder.Path("database"), folder.Path("PC3.pnf"));
    FileModule::CreateEmptyFile(folder.Path("PC3.pnf"));
    EXPECT_EQ(folder.ReadFile("database"), "rows") << "a client PC can put a link into the shared folder";
    EXPECT_FALSE(std::filesystem::is_symlink(folder.Path("PC3.pnf")));
}

TEST(CreateEmptyFile, RaisesWhereNoFileCanBe) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path("PC1.pnf"));
    const struct {
        const char* why;
        std::string path;
        int number;
    } cases[] = {
        {"no such folder", folder.Path("missing/PC1.pnf"), Errors::kPathNotFound},
        {"a folder has the name", folder.Path("PC1.pnf"), Errors::kPathAccess},
    };
    for (const auto& c : cases) {
        try {
            FileModule::CreateEmptyFile(c.path);
            ADD_FAILURE() << c.why;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number, c.number) << c.why << ": " << error.description;
        }
    }
}

TEST(FileModule, DialogsGetTheirTextsAndGiveThePath) {
    QueuedPrompts prompts;
    prompts.Expect(OpenFile("Please select a backup file"), "/backups/monday.zbk");
    prompts.Expect(SaveFile("Please enter backup filename"));
    prompts.Expect(Folder("Please select Import Directory", "/srv/inf"), "/srv/other");
    EXPECT_EQ(FileModule::ShowOpenDialog(prompts, "Backup File (*.zbk)|*.zbk", "Please select a backup file",
                                         "zbk", "/backups"),
              "/backups/monday.zbk");
    EXPECT_EQ(FileModule::ShowSaveDialog(prompts, "Backup File (*.zbk)|*.zbk", "Please enter backup filename",
                                         "zbk"),
              "");
    EXPECT_EQ(FileModule::BrowseForFolder(prompts, "Please select Import Directory", "/srv/inf"),
              "/srv/other");
    ASSERT_EQ(prompts.FileDialogs().size(), 2U);
    EXPECT_EQ(prompts.FileDialogs()[0].folder, "/backups");
    EXPECT_EQ(prompts.FileDialogs()[1].folder, "");
    EXPECT_EQ(prompts.FileDialogs()[1].defaultExtension, "zbk");
    EXPECT_EQ(prompts.FileDialogs()[1].filter, "Backup File (*.zbk)|*.zbk");
}

} // namespace
