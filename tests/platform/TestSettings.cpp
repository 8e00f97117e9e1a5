// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/SmallFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <QSettings>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <random>

namespace {

using namespace std::string_literals;

class SettingsTest : public testing::Test {
protected:
    void Save(const std::string& key, const std::string& text) {
        SettingsStore(mFile).SaveSetting("Velmora", "Settings", key, text);
    }

    std::string NextRun(const std::string& key, const std::string& fallback = "(none)") {
        return SettingsStore(mFile).GetSetting("Velmora", "Settings", key, fallback);
    }

    TemporaryFolder mFolder;
    std::string mFile = mFolder.Path("configuration/velmora.ini");
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
        {"a control character before what could be one of its digits",
         "\x01\x7F"
         "Abe \0a"s},
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

TEST_F(SettingsTest, FilesAreThoseOfTheToolkitInBothDirections) {
    static const std::string kPieces[] = {"a",
                                          "F",
                                          "9",
                                          " ",
                                          "\t",
                                          ",",
                                          ";",
                                          "=",
                                          "\"",
                                          "\\",
                                          "@",
                                          "@ByteArray(",
                                          ")",
                                          "[",
                                          "]",
                                          "%",
                                          "\n",
                                          "\r",
                                          "\x01",
                                          "\x1F",
                                          "\0"s,
                                          "\x7F",
                                          "\xC3\xBC",
                                          "\xE2\x82\xAC",
                                          "\xF0\x9F\x98\x80",
                                          "'",
                                          "?",
                                          "#",
                                          "/"};
    std::mt19937 random(20011102);
    std::uniform_int_distribution<std::size_t> piece(0, std::size(kPieces) - 1);
    const QString path = QString::fromStdString(mFolder.Path("toolkit.ini"));
    const auto key = [](int round) { return "Key" + std::to_string(round); };
    constexpr int kRounds = 300;
    std::vector<std::string> texts;
    QSettings toolkit(path, QSettings::IniFormat);
    for (int round = 0; round < kRounds; ++round) {
        std::string text;
        for (int left = round % 9; left > 0; --left)
            text += kPieces[piece(random)];
        toolkit.setValue(QString::fromStdString("Velmora/Settings/" + key(round)),
                         QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
        texts.push_back(text);
    }
    toolkit.setValue("Velmora/Settings/Bytes", QByteArray("/srv/\xDF\0", 7));
    toolkit.setValue("Other/Number", 5);
    toolkit.sync();

    SettingsStore store(path.toStdString());
    for (int round = 0; round < kRounds; ++round)
        ASSERT_EQ(store.GetSetting("Velmora", "Settings", key(round), "(none)"), texts[round])
            << testing::PrintToString(texts[round]);
    EXPECT_EQ(store.GetSetting("Velmora", "Settings", "Bytes", ""), "/srv/\xDF\0"s);
    // What the store writes, with all that it found there.
    store.SaveSetting("Velmora", "Settings", "New", "/srv/\xFF");
    std::filesystem::copy_file(path.toStdString(), mFolder.Path("copy.ini"));
    const QSettings reader(QString::fromStdString(mFolder.Path("copy.ini")), QSettings::IniFormat);
    for (int round = 0; round < kRounds; ++round)
        ASSERT_EQ(
            reader.value(QString::fromStdString("Velmora/Settings/" + key(round))).toString().toStdString(),
            texts[round])
            << testing::PrintToString(texts[round]);
    EXPECT_EQ(reader.value("Velmora/Settings/New").toByteArray().toStdString(), "/srv/\xFF");
    EXPECT_EQ(reader.value("Other/Number").toInt(), 5);
}

TEST_F(SettingsTest, AFullDiskIsAFailureAndLeavesTheStoreAsItWas) {
    Save("USER_LI", std::string(5000, 'x'));
    const std::string before = mFolder.ReadFile("configuration/velmora.ini");
    {
        const SmallFiles full(1000);
        EXPECT_THROW(Save("ImportDir", "/srv/inventory"), RunTimeError);
    }
    EXPECT_EQ(mFolder.ReadFile("configuration/velmora.ini"), before);
    EXPECT_EQ(mFolder.Names("configuration").size(), 1U);
}

TEST_F(SettingsTest, ConsolesThatSaveAtTheSameTimeKeepEachOthersSettings) {
    constexpr int kConsoles = 4;
    constexpr int kSettings = 20;
    const auto key = [](int console, int setting) {
        return std::to_string(console) + "." + std::to_string(setting);
    };
    for (int console = 0; console < kConsoles; ++console)
        if (fork() == 0) {
            for (int setting = 0; setting < kSettings; ++setting)
                Save(key(console, setting), "text");
            _exit(0);
        }
    for (int console = 0; console < kConsoles; ++console) {
        int status = -1;
        wait(&status);
        EXPECT_EQ(status, 0);
    }
    for (int console = 0; console < kConsoles; ++console)
        for (int setting = 0; setting < kSettings; ++setting)
            EXPECT_EQ(NextRun(key(console, setting)), "text") << key(console, setting);
}

TEST_F(SettingsTest, AHomeThatIsMissingIsNotMade) {
    const EnvironmentVariable folder("XDG_CONFIG_HOME", "");
    const EnvironmentVariable home("HOME", mFolder.Path("home"));
    SettingsStore store;
    EXPECT_EQ(ErrorOf([&] { store.SaveSetting("Velmora", "Settings", "ViewMode", "3"); }),
              Errors::kPathAccess);
    EXPECT_FALSE(mFolder.Exists("home"));
    std::filesystem::create_directory(mFolder.Path("home"));
    store.SaveSetting("Velmora", "Settings", "ViewMode", "3");
    EXPECT_TRUE(mFolder.Exists("home/.config/velmora/velmora.ini"));
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
