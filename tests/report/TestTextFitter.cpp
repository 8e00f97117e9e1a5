// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/TextFitter.h"

#include <gtest/gtest.h>

namespace {

using report::Continuation;
using report::FittedStyle;
using report::FixedMeasure;
using report::TextLine;
using report::TextStyle;

/// Lines with "/" between them where a blank was, and "~" where a word was broken.
std::string Joined(const std::vector<TextLine>& lines) {
    std::string joined;
    for (const TextLine& line : lines) {
        if (&line != lines.data())
            joined += line.continuation == Continuation::WithinWord ? "~" : "/";
        joined += line.text;
    }
    return joined;
}

// Every character is 6 points wide in this style.
constexpr double kCharacter = 6;
const TextStyle kTen{10, false, false, report::kTextColor};

TEST(TextFitter, BreaksAtBlanksElseAnywhere) {
    struct {
        const char* why;
        std::string text;
        int characters;
        std::string lines;
    } cases[] = {
        {"it fits to the last character", "ten is all", 10, "ten is all"},
        {"at the last blank that fits", "one two three", 8, "one two/three"},
        {"a blank needs no room at the end", "one two three", 7, "one two/three"},
        {"blanks around a break go", "one   two", 4, "one/two"},
        {"those of the beginning stay", "  one two", 5, "  one/two"},
        {"a word longer than the line", "abcdefgh", 3, "abc~def~gh"},
        {"behind a short one", "ab cdefgh", 3, "ab/cde~fgh"},
        {"a path has no blanks", "C:\\Programs\\Tool.exe /x", 12, "C:\\Programs\\~Tool.exe /x"},
        {"line breaks hold, however they are written", "a\nb\r\nc\n\nd", 9, "a/b/c//d"},
        {"but the last one begins no line", "a\n", 9, "a"},
        {"other control characters are blanks",
         "a\tb\x01"
         "c\x7f"
         "d",
         3, "a b/c d"},
        {"characters are not torn", "ééééé", 2, "éé~éé~é"},
        {"nor are bytes that are none", "\xff\xc3", 1, "\xff~\xc3"},
        {"no room at all: a character a line", "ab c", 0, "a~b/c"},
        {"nothing is a line too", "", 5, ""},
        {"blanks alone are nothing", "     ", 2, ""},
    };
    const FixedMeasure measure;
    const FittedStyle style(measure, kTen);
    for (const auto& c : cases) {
        std::vector<TextLine> lines;
        const std::size_t count = style.Wrap(c.text, c.characters * kCharacter, &lines);
        EXPECT_EQ(Joined(lines), c.lines) << c.why;
        EXPECT_EQ(count, lines.size()) << c.why;
        EXPECT_EQ(style.Wrap(c.text, c.characters * kCharacter), count) << "counted alone: " << c.why;
    }
}

TEST(TextFitter, CutsWhatDoesNotFit) {
    struct {
        const char* why;
        const char* text;
        int characters;
        const char* cut;
    } cases[] = {
        {"it fits", "abcde", 5, "abcde"},
        {"the sign that there is more takes a place", "abcdef", 5, "abcd…"},
        {"no blank stands before it", "abc def", 5, "abc…"},
        {"one line only", "a\nb", 5, "a b"},
        {"between characters", "éééé", 3, "éé…"},
        {"not even room for the sign", "abc", 0, ""},
    };
    const FixedMeasure measure;
    const FittedStyle style(measure, kTen);
    for (const auto& c : cases)
        EXPECT_EQ(style.Cut(c.text, c.characters * kCharacter), c.cut) << c.why;
}

} // namespace
