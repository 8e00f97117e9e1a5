// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors.h"
#include "platform/settings.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
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

    static mode_t Mode(const std::string& path) {
        struct stat state {};
        EXPECT_EQ(stat(path.c_str(), &state), 0) << path;
        return state.st_mode & 0777U;
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
    EXPECT_EQ(Mode(mFile), 0600U) << "a new file";

    std::filesystem::permissions(mFile, std::filesystem::perms(0644));
    Save("USER_LI", "scrambled anew");
    EXPECT_EQ(Mode(mFile), 0600U) << "a file that was restored from elsewhere";
}

TEST_F(SettingsTest, TheUsersOwnStoreLiesInTheConfigurationFolder) {
    const char* const before = std::getenv("XDG_CONFIG_HOME");
    const std::string kept = before == nullptr ? "" : before;
    setenv("XDG_CONFIG_HOME", mFolder.Path("xdg").c_str(), 1);
    SettingsStore().SaveSetting("Velmora", "Settings", "ViewMode", "3");
    if (before == nullptr)
        unsetenv("XDG_CONFIG_HOME");
    else
        setenv("XDG_CONFIG_HOME", kept.c_str(), 1);
    EXPECT_NE(mFolder.ReadFile("xdg/velmora/velmora.ini").find("ViewMode=3"), std::string::npos);
}

TEST_F(SettingsTest, AStoreThatCannotBeWrittenSaysSoEachTimeAndRecovers) {
    mFolder.WriteFile("configuration", "a file where the folder should be");
    SettingsStore store(mFile);
    for (int attempt = 1; attempt <= 2; ++attempt) {
        try {
            store.SaveSetting("Velmora", "Settings", "ImportDir", "/srv/inf");
            ADD_FAILURE() << "nothing raised in attempt " << attempt;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number, Errors::kPathAccess);
        }
    }
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
