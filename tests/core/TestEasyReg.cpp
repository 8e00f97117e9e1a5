// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/CReadWriteEasyReg.h"
#include "platform/settings.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class EasyRegTest : public testing::Test {
protected:
    void FillStore() {
        mStore.SaveSetting("Velmora", "Settings", "USER_LI", "scrambled");
        mStore.SaveSetting("Velmora", "Settings", "ImportDir", "/srv/inf");
    }
    std::string Setting(const char* key) const { return mStore.GetSetting("Velmora", "Settings", key, "-"); }

    TemporaryFolder mFolder;
    SettingsStore mStore{mFolder.Path("velmora.ini")};
    CReadWriteEasyReg mRegistry{mStore};
};

TEST_F(EasyRegTest, ClearingTheSectionTakesAllSettingsWithIt) {
    FillStore();
    ASSERT_TRUE(mRegistry.OpenRegistry(HKEY_CURRENT_USER, "Velmora"));
    EXPECT_FALSE(mRegistry.DeleteValue("USER_LI")) << "the application's own key has no values";
    EXPECT_TRUE(mRegistry.DeleteDirectory("Settings"));
    EXPECT_FALSE(mRegistry.DeleteDirectory("Settings")) << "gone already";
    EXPECT_TRUE(mRegistry.CloseRegistry());
    EXPECT_EQ(Setting("USER_LI") + Setting("ImportDir"), "--");
}

TEST_F(EasyRegTest, ClearingTheLogonListLeavesTheRest) {
    FillStore();
    ASSERT_TRUE(mRegistry.OpenRegistry(HKEY_CURRENT_USER, "Velmora\\Settings"));
    EXPECT_FALSE(mRegistry.DeleteDirectory("Settings")) << "a section holds no keys";
    EXPECT_TRUE(mRegistry.DeleteValue("USER_LI"));
    EXPECT_EQ(Setting("USER_LI"), "-");
    EXPECT_EQ(Setting("ImportDir"), "/srv/inf");
}

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
    EXPECT_EQ(Setting("USER_LI"), "scrambled");
}

TEST_F(EasyRegTest, AStoreThatCannotBeWrittenGivesFalse) {
    FillStore();
    ASSERT_TRUE(mRegistry.OpenRegistry(HKEY_CURRENT_USER, "Velmora\\Settings"));
    std::filesystem::remove(mFolder.Path("velmora.ini"));
    std::filesystem::create_directory(mFolder.Path("velmora.ini"));
    EXPECT_FALSE(mRegistry.DeleteValue("USER_LI"));
}

} // namespace
