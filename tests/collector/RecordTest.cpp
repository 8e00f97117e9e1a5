// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Record.h"

#include <gtest/gtest.h>

#include <cstdlib>

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

} // namespace collector
