// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileModule.h"
#include "platform/errors.h"
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
    const auto errorOf = [&](const char* name) {
        try {
            FileModule::CreateEmptyFile(folder.Path(name));
        } catch (const RunTimeError& error) {
            return error.number;
        }
        return 0;
    };
    EXPECT_EQ(errorOf("missing/PC1.pnf"), Errors::kPathNotFound);
    EXPECT_EQ(errorOf("PC1.pnf"), Errors::kPathAccess) << "a folder has the name";
}

} // namespace
