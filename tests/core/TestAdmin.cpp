// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Admin.h"
#include "platform/errors.h"

#include <gtest/gtest.h>

#include <cstdlib>

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
    for (int i = 0; i < 170; ++i)
        letters += "\xC3\xA9";
    EXPECT_EQ(Admin::GetShortPath(letters), letters.substr(0, 328)) << "164 characters of two bytes each";
}

} // namespace
