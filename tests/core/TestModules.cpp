// SPDX-License-Identifier: GPL-3.0-or-later
// The modules without a window: scrambled texts, empty files, the settings as a registry.
#include "core/Admin.h"
#include "core/CReadWriteEasyReg.h"
#include "core/FileModule.h"
#include "platform/settings.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>

namespace {

using namespace std::string_literals;

class ScrambleText : public testing::Test {
protected:
    // The system's page is looked up once, at the first use; the codes below are those of 1252.
    ScrambleText() { setenv("LC_ALL", "C", 1); }
};

TEST_F(ScrambleText, ReversesAndRaisesEachCodeByOne) {
    const struct {
        const char* why;
        std::string plain, scrambled;
    } cases[] = {
        {"a logon list", "root:first;", "<utsjg;upps"},
        {"none", "", ""},
        {"the lowest codes", "\0\x01"s, "\x02\x01"},
        {"the end of ASCII: a code that the page leaves to a letter of its own", "~\x7F", "\xE2\x82\xAC\x7F"},
        {"letters of the page, not bytes of UTF-8", "M\xC3\xBCller", "sfmm\xC3\xBDN"},
        {"a code that the page leaves undefined", "\xE2\x82\xAC", "\xC2\x81"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Admin::ScrambleText(c.plain), c.scrambled) << c.why;
        EXPECT_EQ(Admin::UnscrambleText(c.scrambled), c.plain) << c.why;
    }
}

TEST_F(ScrambleText, NothingWrapsAtTheEndsOfTheCodes) {
    EXPECT_THROW(Admin::ScrambleText("\xC3\xBF"), RunTimeError) << "255 has no successor";
    EXPECT_THROW(Admin::UnscrambleText("\0"s), RunTimeError) << "0 has no predecessor";
}

TEST(GetShortPath, KeepsThePathUpToTheLongestThatIsTaken) {
    EXPECT_EQ(Admin::GetShortPath("/srv/Agreement file.txt"), "/srv/Agreement file.txt");
    std::string letters;
    while (letters.size() < 340)
        letters += "\xC3\xA9";
    EXPECT_EQ(Admin::GetShortPath(letters), letters.substr(0, 328)) << "164 characters of two bytes each";
}

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
        return ErrorOf([&] { FileModule::CreateEmptyFile(folder.Path(name)); });
    };
    EXPECT_EQ(errorOf("missing/PC1.pnf"), Errors::kPathNotFound);
    EXPECT_EQ(errorOf("PC1.pnf"), Errors::kPathAccess) << "a folder has the name";
}

class EasyRegTest : public testing::Test {
protected:
    void FillStore() { mStore.SaveSetting("Velmora", "Settings", "USER_LI", "scrambled"); }

    TemporaryFolder mFolder;
    SettingsStore mStore{mFolder.Path("velmora.ini")};
    CReadWriteEasyReg mRegistry{mStore};
};

TEST_F(EasyRegTest, OnlyKeysThatExistOpenAndAFailureLeavesNoneOpen) {
    EXPECT_FALSE(mRegistry.OpenRegistry(HKEY_CURRENT_USER, "Velmora\\Settings")) << "an empty store";
    FillStore();
    constexpr std::uint32_t kLocalMachine = 0x80000002;
    const std::pair<std::uint32_t, const char*> keys[] = {{0, "Velmora\\Settings"},
                                                          {kLocalMachine, "Velmora\\Settings"},
                                                          {HKEY_CURRENT_USER, "Velmora\\Options"},
                                                          {HKEY_CURRENT_USER, "Velmora\\Settings\\USER_LI"},
                                                          {HKEY_CURRENT_USER, ""}};
    for (const auto& [root, path] : keys) {
        ASSERT_TRUE(mRegistry.OpenRegistry(HKEY_CURRENT_USER, "Velmora\\Settings"));
        EXPECT_FALSE(mRegistry.OpenRegistry(root, path)) << path;
        EXPECT_FALSE(mRegistry.IsOpen()) << path;
        EXPECT_FALSE(mRegistry.DeleteValue("USER_LI")) << path;
    }
    EXPECT_TRUE(mRegistry.OpenRegistry(HKEY_CURRENT_USER, "Velmora"));
    EXPECT_FALSE(mRegistry.DeleteValue("USER_LI")) << "the application's own key has no values";
    EXPECT_FALSE(mRegistry.DeleteDirectory("Options")) << "none of that name";
    EXPECT_EQ(mStore.GetSetting("Velmora", "Settings", "USER_LI", ""), "scrambled");
}

TEST_F(EasyRegTest, AStoreThatCannotBeWrittenGivesFalse) {
    FillStore();
    ASSERT_TRUE(mRegistry.OpenRegistry(HKEY_CURRENT_USER, "Velmora\\Settings"));
    std::filesystem::remove(mFolder.Path("velmora.ini"));
    std::filesystem::create_directory(mFolder.Path("velmora.ini"));
    EXPECT_FALSE(mRegistry.DeleteValue("USER_LI"));
}

} // namespace
