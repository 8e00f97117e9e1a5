// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codepage.h"
#include "platform/text.h"
#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Val, ReadsTheNumberThatATextBeginsWith) {
    struct {
        const char* why;
        const char* text;
        double number;
    } cases[] = {
        {"what follows the number is not looked at", "12 MB", 12},
        {"blanks count for nothing, also within", " 1 2\t3", 123},
        {"one point only", "1.5.7", 1.5},
        {"sign without digits", "-", 0},
        {"a sign ends the number when it comes later", "5-3", 5},
        {"exponent", "1E3", 1000},
        {"the other letter for an exponent", "2d2", 200},
        {"an exponent without digits is none", "4E", 4},
        {"too small for a double is zero", "1e-999", 0},
        {"and so is no digit that counts, however far it is moved", "-0.0e99999999999", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Val(c.text), c.number) << c.why;
    EXPECT_EQ(ErrorOf([] { Val("1e999"); }), Errors::kOverflow);
    EXPECT_EQ(ErrorOf([] { Val(std::string(500, '9')); }), Errors::kOverflow);
    EXPECT_EQ(ErrorOf([] { Val("1" + std::string(400, '0') + "e-5"); }), Errors::kOverflow);
    EXPECT_EQ(ErrorOf([] { Val(std::string(400, '9') + "e-"); }), Errors::kOverflow);
    EXPECT_EQ(Val("0." + std::string(400, '0') + "1e"), 0) << "an exponent without digits is none";
    EXPECT_EQ(Val("0." + std::string(500, '0') + "1"), 0) << "and not an overflow";
}

TEST(CInt, RoundsHalvesToEvenAndKnowsItsRange) {
    EXPECT_EQ(CInt(0.5), 0);
    EXPECT_EQ(CInt(1.5), 2);
    EXPECT_EQ(CInt(2.5), 2);
    EXPECT_EQ(CInt(-32768.4), -32768);
    EXPECT_EQ(CInt(32767.4), 32767);
    EXPECT_EQ(ErrorOf([] { CInt(32767.5); }), Errors::kOverflow) << "rounds to 32768";
    EXPECT_EQ(ErrorOf([] { CInt(40000); }), Errors::kOverflow);
    EXPECT_EQ(ErrorOf([] { CLng(2147483648.0); }), Errors::kOverflow);
}

TEST(FormatNumber, FillsThePlacesFromTheRight) {
    struct {
        double value;
        const char* pattern;
        const char* text;
    } cases[] = {
        {20011102, "0000-00-00", "2001-11-02"},
        {112, "0000-00-00", "0000-01-12"},
        {120011102, "0000-00-00", "12001-11-02"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FormatNumber(c.value, c.pattern), c.text) << c.value << " by " << c.pattern;
}

TEST(Texts, OfNumbersAndDatesAreThoseOfTheSystem) {
    EXPECT_EQ(NumberText(4294967296.0), "4294967296") << "whole numbers have no point";
    EXPECT_EQ(NumberText(-0.1), "-0.1");
    EXPECT_EQ(NumberText(1e20), "1E+20");
    EXPECT_EQ(DisplayDate("20011102"), "2001-11-02");
    EXPECT_EQ(DisplayDate(""), "");
    EXPECT_EQ(DisplayDate("unknown"), "unknown");
    EXPECT_EQ(DisplayDate("1999-1-1"), "1999-1-1") << "what is not digits stays as it is";
    const LocalTime moment = *ParseDate("2001-5-3") + std::chrono::hours(9) + std::chrono::seconds(7);
    EXPECT_EQ(FormatDate(moment, "dd mmm yyyy hh:nn:ss"), "03 May 2001 09:00:07");
}

TEST(ParseDate, TakesTheUsualWrittenForms) {
    struct {
        const char* why;
        const char* text;
        const char* stored;
    } cases[] = {
        {"month first", "11-13-1998", "19981113"},
        {"day first where the first number can be no month", "13-11-1998", "19981113"},
        {"year first", "1999-6-15", "19990615"},
        {"two digits of this century", "1/2/29", "20290102"},
        {"two digits of the last one", "1/2/30", "19300102"},
        {"no leap day", "2-29-1900", nullptr},
        {"no such month in either reading", "13-13-1999", nullptr},
        {"mixed separators", "1-2/1999", nullptr},
        {"a bare number is none", "19990615", nullptr},
        {"a time is none", "10:30:00", nullptr},
        {"a date with more behind it is none", "1-2-1999x", nullptr},
        {"too many digits to be a year", "1-2-19999", nullptr},
    };
    for (const auto& c : cases) {
        const auto date = ParseDate(c.text);
        ASSERT_EQ(date.has_value(), c.stored != nullptr) << c.why;
        if (date) {
            EXPECT_EQ(FormatDate(*date, "yyyymmdd"), c.stored) << c.why;
        }
    }
}

TEST(CodePage, KeepsEveryByteThroughUTF8AndBack) {
    for (const int number : {874, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258}) {
        const CodePage page(number);
        for (int byte = 0; byte < 256; ++byte) {
            const std::string bytes(1, static_cast<char>(byte));
            ASSERT_EQ(page.Encode(page.Decode(bytes)), bytes) << "byte " << byte << " of page " << number;
        }
    }
    const CodePage western(1252);
    EXPECT_EQ(western.Decode("caf\xE9 \x80"), "café €");
    EXPECT_EQ(western.Decode("\x81"), "\xC2\x81") << "undefined in the page: the control character";
    EXPECT_EQ(western.Encode("Łódź ✓"),
              "?\xF3"
              "d? ?");
    EXPECT_EQ(western.Encode("\xC3"), "?") << "half a character";
}

TEST(CodePage, FollowsTheLocale) {
    EXPECT_EQ(CodePage::NumberFor("C.UTF-8"), 1252);
    EXPECT_EQ(CodePage::NumberFor("pl_PL.UTF-8"), 1250);
    EXPECT_EQ(CodePage::NumberFor("ru_RU"), 1251);
    EXPECT_EQ(CodePage::NumberFor("en_ZA.UTF-8"), 1252);
}

TEST(Text, CountsAndCutsCharactersNotBytes) {
    EXPECT_EQ(CharacterCount("née"), 3U);
    EXPECT_EQ(FirstCharacters("née", 2), "né");
    EXPECT_EQ(LastPositionOf("a/b/c", "/"), 4U);
    EXPECT_EQ(LastPositionOf("abc", "/"), 0U);
    EXPECT_EQ(InStr(2, "abcabc", "a"), 4U);
    EXPECT_TRUE(EqualNoCase("Net", "NET"));
    EXPECT_FALSE(EqualNoCase("é", "É")) << "letters beyond ASCII keep their case, as in the database";
}

} // namespace
