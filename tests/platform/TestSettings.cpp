// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using namespace std::string_literals;

class SettingsTest : public testing::Test {
protected:
    void Save(const std::string& key, const std::string& text) {
        SettingsStore(mFile).SaveSetting("Velmora", "Settings", key, text);
    }

    /// What the next run reads: from a copy, since the toolkit remembers a file that it has read before.
    std::string NextRun(const std::string& key, const std::string& fallback = "(none)") {
        const std::string copy = mFolder.Path("copy" + std::to_string(++mCopies) + ".ini");
        std::filesystem::copy_file(mFile, copy);
        return SettingsStore(copy).GetSetting("Velmora", "Settings", key, fallback);
    }

    TemporaryFolder mFolder;
    std::string mFile = mFolder.Path("configuration/velmora.ini");
    int mCopies = 0;
};

TEST_F(SettingsTest, TextsComeBackInTheNextRunAsTheyWere) {
    std::string everyCharacter;
    for (int code = 1; code < 0x80; ++code)
        everyCharacter += static_cast<char>(code);
    for (int code = 0x80; code <= 0xFF; ++code)
        everyCharacter += {static_cast<char>(0xC0 | (code >> 6)), static_cast<char>(0x80 | (code & 0x3F))};
    const struct {
        const char* why;
        std::string text;
    } cases[] = {
        {"empty is a value, not a missing one", ""},
        {"blanks at both ends", "  C:/Inventory folder  "},
        {"a folder name like the format's own marks", "@Invalid()"},
        {"quotation marks and backslashes", R"("\\server\share" \x41 \n)"},
        {"lines", "one\r\ntwo\n\n"},
        {"what the scrambled logon list is made of", everyCharacter},
        {"a NUL", "before\0behind"s},
        {"a path whose bytes are no UTF-8",
         "/srv/Stra\xDF"
         "e/\xFF\xFE"},
    };
    for (const auto& c : cases) {
        Save("Key", c.text);
        EXPECT_EQ(NextRun("Key"), c.text) << c.why;
    }
    EXPECT_EQ(NextRun("Other", "1000"), "1000");
}

TEST_F(SettingsTest, OnlyTheOwnerReadsTheLogonList) {
    Save("USER_LI", "scrambled");
    EXPECT_EQ(mFolder.Rights("configuration/velmora.ini"), 0600U) << "a new file";

    std::filesystem::permissions(mFile, std::filesystem::perms(0644));
    Save("USER_LI", "scrambled anew");
    EXPECT_EQ(mFolder.Rights("configuration/velmora.ini"), 0600U)
        << "a file that was restored from elsewhere";
}

TEST_F(SettingsTest, TheUsersOwnStoreLiesInTheConfigurationFolder) {
    const EnvironmentVariable home("XDG_CONFIG_HOME", mFolder.Path("xdg"));
    SettingsStore().SaveSetting("Velmora", "Settings", "ViewMode", "3");
    EXPECT_NE(mFolder.ReadFile("xdg/velmora/velmora.ini").find("ViewMode=3"), std::string::npos);
}

TEST_F(SettingsTest, AStoreThatCannotBeWrittenSaysSoEachTimeAndRecovers) {
    mFolder.WriteFile("configuration", "a file where the folder should be");
    SettingsStore store(mFile);
    for (int attempt = 1; attempt <= 2; ++attempt)
        EXPECT_EQ(ErrorOf([&] { store.SaveSetting("Velmora", "Settings", "ImportDir", "/srv/inf"); }),
                  Errors::kPathAccess)
            << "attempt " << attempt;
    std::filesystem::remove(mFolder.Path("configuration"));
    store.SaveSetting("Velmora", "Settings", "ImportDir", "/srv/inventory");
    EXPECT_EQ(NextRun("ImportDir"), "/srv/inventory");
}

TEST_F(SettingsTest, ABrokenFileIsReadAsFarAsItGoesAndWrittenAnew) {
    mFolder.WriteFile("configuration/velmora.ini",
                      "[Velmora\nnonsense\n[Velmora]\nSettings\\ImportDir=/a, /b\nSettings\\ViewMode=2\n");
    EXPECT_EQ(NextRun("ViewMode"), "2");
    EXPECT_EQ(NextRun("ImportDir"), "/a, /b") << "a comma typed by hand must not lose the folder";
    Save("ViewMode", "0");
    EXPECT_EQ(NextRun("ViewMode"), "0");
}

} // namespace
