// SPDX-License-Identifier: GPL-3.0-or-later
#include "DocumentSamples.h"
#include "platform/report/Document.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Texts.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using report::Formula;

/// Of a row with the name "Élan x", the size 1,536, a set flag and a Null.
std::string Shown(const std::string& text) {
    const ADODB::Value row[] = {std::string("\xC3\x89lan x"), 1536.0, -1.0, {}};
    try {
        const Formula formula(text, "T", Samples::kFields, {});
        const ADODB::Value value = formula.Evaluate(row);
        return ADODB::IsNull(value) ? "Null" : report::FormatValue({}, value, formula.IsFlag());
    } catch (const RunTimeError& error) {
        return error.description;
    }
}

TEST(Formula, GivesTheValueThatItsTextMeans) {
    const struct {
        const char* why;
        const char* text;
        const char* value;
    } cases[] = {
        {"products bind tighter than sums, signs tightest", "1 + -2 * 3 - 4 / 8", "-5.5"},
        {"operators of one strength go from the left", "100 / 10 / 2 - 3 - 1", "1"},
        {"sums bind tighter than the joining of texts", "\"a\" & 1 + 2 & 'b'", "a3b"},
        {"and binds tighter than or, not tighter than both", "true or false and not true", "True"},
        {"not takes the whole comparison", "not 1 = 2", "True"},
        {"names of any case and with the case of none", "{t.NAME} & {T.size}", "\xC3\x89lan x1536"},
        {"a quote in a text is doubled, the other stands bare", "'it''s \"so\"'", "it's \"so\""},
        {"texts are equal in any case", "{T.Name} = \"\xC3\x89LAN X\"", "True"},
        {"but not to the byte", "Exact({T.Name}, \"\xC3\x89LAN X\")", "False"},
        {"a number and a text that is one are numbers", "{T.Size} = \"1536.0\" and 9 < '10'", "True"},
        {"two texts are texts, though both are numbers", "'9' < '10'", "False"},
        {"a number and another text are texts", "{T.Size} < 'abc'", "True"},
        {"a flag reads as people write it", "{T.Flag} & \"/\" & ({T.Flag} = 'true')", "True/True"},
        {"Null is equal to Null alone", "{T.None} = null and {T.Name} <> {T.None}", "True"},
        {"so that unequal is always the opposite of equal", "not ({T.None} = '') and {T.None} <> ''", "True"},
        {"any other comparison with it is not known", "{T.None} < 1", "Null"},
        {"nor its opposite", "not ({T.None} < 1)", "Null"},
        {"what decides needs no other", "{T.None} < 1 or true", "True"},
        {"and what does not decide leaves it open", "{T.None} < 1 and true", "Null"},
        {"a condition that is not known is not met", "if {T.None} < 1 then 'yes' else 'no'", "no"},
        {"nothing is chosen where no condition is met", "if false then 1 else if 2 > 3 then 2", "Null"},
        {"the first condition that is met chooses", "if 1 > 2 then 1 else if 2 > 1 then 2 else 3", "2"},
        {"joining takes Null as empty", "{T.None} & 'a' & null", "a"},
        {"arithmetic with Null, with words, by zero",
         "IsNull({T.None} + 1) and IsNull('a' * 2) and "
         "IsNull(1 / 0)",
         "True"},
        {"no number grows out of a double", "1e308 * 10", "Null"},
        {"characters are counted, not bytes", "Len({T.Name}) & Left({T.Name}, 1) & InStr({T.Name}, 'LAN')",
         "6\xC3\x89"
         "2"},
        {"places outside of the text give what there is",
         "Left('abc', 99) & Mid('abc', 0, 1) & Mid('abc', "
         "3) & Mid('abc', 9) & Right('abc', -1)",
         "abcac"},
        {"what is replaced is found in any case, and not within what replaced it",
         "Replace('aXbx', 'x', 'xx') & Replace('|9|', '|', '') & Replace('a', '', 'b')", "axxbxx9a"},
        {"halves go to the even neighbour", "Round(2.5) & Round(3.5) & Round(0.125, 2)", "240.12"},
        {"a function of Null is Null", "UCase({T.None})", "Null"},
        {"numbers at a text's beginning", "Val('12 KB') + Val('none')", "12"},
        {"formats of objects serve in formulas", "Text({T.Size}, \"megabytes-kb\")", "2 MB"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Shown(c.text), c.value) << c.why << '\n' << c.text;
}

TEST(Formula, RefusesWithPositionAndCause) {
    const std::string deepParentheses = Repeated("(", 65) + "1" + Repeated(")", 65);
    const struct {
        const char* why;
        std::string text;
        const char* complaint;
    } cases[] = {
        {"nothing", "  ", "position 3: a value is expected"},
        {"an operand is missing", "1 + ", "position 5: a value is expected"},
        {"an operator is missing", "1 2", "position 3: an operator is expected"},
        {"a chain of comparisons", "1 < 2 < 3", "position 7: a comparison has two sides"},
        {"a parenthesis is open", "(1 + 2", "position 7: \")\" is expected"},
        {"a text is open", "'abc", "position 1: the closing quote is missing"},
        {"a brace is open", "1 + {T.Size", "position 5: \"}\" is missing"},
        {"another table", "{U.Size}", "position 1: the table has no field {U.Size}"},
        {"a field of no table", "{Size}", "position 1: the table has no field {Size}"},
        {"a formula that is not there", "{@Size}", "position 1: no formula before this one"},
        {"an unknown function", "Shell('x')", "position 1: \"Shell\" has no meaning here"},
        {"too few values", "Left('x')", "position 9: Left takes more values"},
        {"too many", "Len('x', 1)", "position 10: Len takes fewer values"},
        {"a condition without a value", "if 1", "position 5: \"then\" is expected"},
        {"a number of letters", "12kb", "position 1: \"12kb\" is no number"},
        {"no format", "Text(1, 'bytes')", "position 16: the name of a format is expected"},
        {"a format that is computed", "Text(1, {T.Name})", "the name of a format is expected"},
        {"deep parentheses", deepParentheses, "this nests too deep"},
        {"many signs", Repeated("-", 70) + "1", "this nests too deep"},
        {"deep ifs", Repeated("if true then (", 40) + "1", "this nests too deep"},
        {"length", Repeated("1 + ", 1024) + "1", "the formula is too long"},
    };
    for (const auto& c : cases) {
        const std::string answer = Shown(c.text);
        EXPECT_TRUE(answer.find(c.complaint) != std::string::npos) << c.why << '\n' << answer;
    }
    EXPECT_EQ(Shown(Repeated("1 + ", 900) + "1"), "901") << "a long chain is not deep";
    EXPECT_EQ(Shown(Repeated("if 1 > 2 then 1 else ", 100) + "7"), "7") << "nor are many choices in a row";
}

TEST(Formula, CountsTheStepsOfWhatItUses) {
    std::vector<report::NamedFormula> formulas;
    formulas.push_back({"F", Formula("'x'", "T", Samples::kFields, {})});
    const RunTimeError failure = FailureOf([&] {
        for (int i = 0; i < 60; ++i)
            formulas.push_back(
                {"F", Formula("{@F} & {@F}", "T", Samples::kFields, std::span(&formulas.back(), 1))});
    });
    EXPECT_NE(failure.description.find("too many steps"), std::string::npos)
        << "a text of 2 to the 60th letters";
    const std::string hundred = Repeated("{T.Name} & ", 100) + "''";
    const ADODB::Value row[] = {std::string(1000, 'x') + "\xC3\xA9", 0.0, 0.0, {}};
    const ADODB::Value value = Formula(hundred, "T", Samples::kFields, {}).Evaluate(row);
    EXPECT_LE(std::get<std::string>(value).size(), 32767U) << "and texts are cut";
}

TEST(FormatValue, ReadsAsPeopleWrite) {
    using ADODB::Value;
    const struct {
        const char* why;
        const char* format;
        Value value;
        bool isFlag;
        const char* text;
    } cases[] = {
        {"nothing is nothing under any format", "megabytes", {}, false, ""},
        {"numbers in decimal", "general", 0.5, false, "0.5"},
        {"flags in words", "general", -1.0, true, "True"},
        {"flags as an answer", "yes-no", 0.0, true, "No"},
        {"any number but 0 is a yes", "yes-no", 1.0, false, "Yes"},
        {"a stored date", "date", std::string("20011102"), false, "2001-11-02"},
        {"what is no date stays", "date", std::string("N/A"), false, "N/A"},
        {"thousands", "number", -1234567.0, false, "-1,234,567"},
        {"a number that came as text", "number", std::string("65536"), false, "65,536"},
        {"a text among numbers", "number", std::string("n/a"), false, "n/a"},
        {"bytes", "megabytes", 6442450944.0, false, "6,144 MB"},
        {"kilobytes", "megabytes-kb", 65536.0, false, "64 MB"},
        {"a share", "percent", 0.27, false, "27 %"},
        {"a number of more digits than are known", "number", 1e18, false, "1E+18"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(report::FormatValue(*report::FindFormat(c.format), c.value, c.isFlag), c.text) << c.why;
}

TEST(Formula, SurvivesWhatIsNoFormula) {
    std::mt19937 random(20020305);
    const auto sample = [&random] { return Samples::kFormulas[random() % std::size(Samples::kFormulas)]; };
    const ADODB::Value row[] = {std::string("\xC3\xA9\xC3"), -1e300, -1.0, {}};
    int valid = 0;
    for (int i = 0; i < 8000; ++i) {
        const std::string text = Damaged(random, sample(), sample());
        try {
            Formula(text, "T", Samples::kFields, {}).Evaluate(row);
            ++valid;
        } catch (const RunTimeError& error) {
            ASSERT_TRUE(error.description.starts_with("position ")) << text;
        }
    }
    EXPECT_GT(valid, 200) << "some of them must get as far as to a value";
}

} // namespace
