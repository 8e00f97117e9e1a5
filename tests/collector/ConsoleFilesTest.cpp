// SPDX-License-Identifier: GPL-3.0-or-later
// What the console and a collector write for each other.
#include "collector/InventoryFile.h"
#include "collector/Record.h"
#include "collector/Startup.h"
#include "tests/collector/FakeMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <system_error>

namespace collector {

TEST(Value, IsWrittenInThePageThatTheConsoleReads) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto write = [] {
        setenv("LC_ALL", "ru_RU.UTF-8", 1);
        std::exit(Value("\xD0\x96 \xC3\xA9", 9) == "\xC6 ?" ? 0 : 1);
    };
    EXPECT_EXIT(write(), testing::ExitedWithCode(0), "");
}

TEST(Value, HoldsNothingThatAReaderCouldMisread) {
    const struct {
        const char* why;
        std::string text;
        std::size_t width;
        std::string value;
    } cases[] = {
        {"a bar ends a field", "a|b", 50, "a/b"},
        {"a semicolon ends a detail", "a;b", 50, "a,b"},
        {"\"INFO1=\" in a value would be taken for the key", "INFO1=x", 50, "INFO1-x"},
        {"a line end would end the record", "a\r\nb", 50, "a b"},
        {"NUL and the second block of controls are no text", std::string("a\0\xC2\x85z", 5), 50, "a z"},
        {"makers pad with blanks", "  WDC   WD40  ", 50, "WDC WD40"},
        {"the code page has the sign above 0x80", "5 \xE2\x82\xAC", 50, "5 \x80"},
        {"the code page lacks the letter", "\xCE\xA9mega", 50, "?mega"},
        {"not UTF-8 at all", "a\xFF\xC3", 50, "a??"},
        {"an overlong bar is no bar", "\xC1\xBC", 50, "??"},
        {"a width counts characters, not bytes", "\xC3\xA9\xC3\xA9\xC3\xA9", 2, "\xE9\xE9"},
        {"a cut at a blank leaves none at the end", "ab cd", 3, "ab"},
    };
    setenv("LC_ALL", "C", 1); // the signs above 0x80 are those of 1252
    for (const auto& c : cases)
        EXPECT_EQ(Value(c.text, c.width), c.value) << c.why;
}

TEST(Positional, NeverBeginsWithABar) {
    // A reader takes "|x|" for a first field of "|x".
    EXPECT_EQ((Positional<2>({"", "x"}, {50, 50})), " |x|");
    EXPECT_EQ((Positional<3>({"one", "", "three"}, {50, 50, 3})), "one||thr|");
}

TEST(TaggedRecord, KeepsTheBlankThatMeansNoProblem) {
    TaggedRecord record;
    record.AddExact("Prob", "00 00 00 00 ", '|').Add("DevName", "a|b ", 50, '|').Add("BVer", "1;2", 50, ';');
    EXPECT_EQ(record.Text(), "Prob=00 00 00 00 |DevName=a/b|BVer=1,2;");
}

using std::chrono::seconds;

TEST(StartupOptions, AreReadAsTheConsoleWritesThem) {
    const struct {
        const char* why;
        const char* text;
        int delay;
        bool isAudible;
    } cases[] = {
        {"no file, no key: nothing to wait for", "", 0, false},
        {"as written", "[STARTUP]\r\nDELAYTIMER=30\r\nASKNEWUSERINFO=1\r\nPINGSOUND=1\r\nAGREEPATH=\r\n", 30,
         true},
        {"case of section and keys is free", "[Startup]\nDelayTimer = 5\npingsound=0\n", 5, false},
        {"the first of two", "[STARTUP]\nDELAYTIMER=5\nDELAYTIMER=60\n", 5, false},
        {"the longest wait is ten minutes", "[STARTUP]\nDELAYTIMER=99999999999999999999999\n", 600, false},
        {"quotes fall away, a tail is not read", "[STARTUP]\nDELAYTIMER=\"15 s\"\n", 15, false},
        {"a header without its end, a key without its value", "[STARTUP\nDELAYTIMER=10\nPINGSOUND\n=\n", 10,
         false},
    };
    for (const auto& c : cases) {
        const StartupOptions options = ParseStartupOptions(c.text);
        EXPECT_EQ(options.delay, seconds(c.delay)) << c.why;
        EXPECT_EQ(options.isAudible, c.isAudible) << c.why;
    }
}

TEST(StartupOptions, AreFoundUnderANameInAnyCase) {
    const FakeMachine shared;
    shared.File("/Movanta.ini", "[STARTUP]\nDELAYTIMER=20\n");
    EXPECT_EQ(ReadStartupOptions(shared.At("")).delay, seconds(20));
}

TEST(TimeToWait, CountsFromTheLogonAndIsOverForAConsoleThatStartsLater) {
    const struct {
        const char* why;
        std::optional<std::time_t> logon;
        int wait;
    } cases[] = {
        {"ten seconds after the logon", 990, 20},
        {"nobody knows of a logon: the console must not wait", std::nullopt, 0},
        {"a logon in the future: the clock was set back", 2000, 30},
    };
    for (const auto& c : cases)
        EXPECT_EQ(TimeToWait(seconds(30), c.logon, 1000), seconds(c.wait)) << c.why;
}

namespace {

using testing::ElementsAre;

class InventoryFileTest : public testing::Test {
protected:
    std::vector<std::string> Names() const { return Sources(shared.At("/")).List("/INF"); }
    std::string Text(const std::string& name) const { return Sources(shared.At("/")).Read("/INF/" + name); }
    void Write(const std::string& text) const { WriteInventory(shared.At("/INF"), "PC7", text); }

    FakeMachine shared;
};

} // namespace

TEST_F(InventoryFileTest, TheFirstRunMakesTheBaselineAndLaterRunsKeepIt) {
    Write("first");
    EXPECT_THAT(Names(), ElementsAre("PC7.INF", "PC7.ORG")) << "and nothing passing is left behind";
    Write("second");
    EXPECT_EQ(Text("PC7.ORG"), "first");
    EXPECT_EQ(Text("PC7.INF"), "second");
}

TEST_F(InventoryFileTest, NamesInAnotherCaseAreTheSameFiles) {
    shared.File("/INF/pc7.org", "baseline");
    shared.File("/INF/Pc7.Inf", "old");
    shared.File("/INF/PC77.ORG", "another machine");
    shared.File("/INF/pc7.pnf", "");
    Write("new");
    EXPECT_THAT(Names(), ElementsAre("PC77.ORG", "Pc7.Inf", "pc7.org", "pc7.pnf"));
    EXPECT_EQ(Text("pc7.org"), "baseline");
    EXPECT_EQ(Text("Pc7.Inf"), "new");
}

TEST_F(InventoryFileTest, AReaderThatHasTheOldFileOpenKeepsItWhole) {
    Write("old and long enough to be cut");
    std::ifstream reader(shared.At("/INF/PC7.INF"), std::ios::binary);
    Write("new");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old and long enough to be cut");
}

TEST_F(InventoryFileTest, AFailureNamesItsPlaceAndLeavesNothingBehind) {
    shared.File("/INF", "a file where the folder should be");
    try {
        Write("text");
        FAIL() << "a folder that can't be made went unnoticed";
    } catch (const std::system_error& failure) {
        EXPECT_THAT(failure.what(), testing::HasSubstr("INF"));
    }
    const FakeMachine other;
    other.Folder("/INF/PC7.INF/in the way");
    EXPECT_THROW(WriteInventory(other.At("/INF"), "PC7", "text"), std::system_error);
    EXPECT_THAT(Sources(other.At("/")).List("/INF"), ElementsAre("PC7.INF", "PC7.ORG"));
}

} // namespace collector
