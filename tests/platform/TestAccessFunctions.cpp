// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialectTest.h"

namespace {

using AccessFunctions = DialectTest;

TEST_F(AccessFunctions, GiveTheValuesOfTheDesktopDatabase) {
    const struct {
        const char* expression;
        const char* value;
        const char* why = "";
    } cases[] = {
        // Operators.
        {"(1\\0 & (3 Mod 0)) & 'x'", "x", "nothing comes of a division by nothing"},
        {"(False Imp True) & (True Eqv False) & (True Xor True)", "-100"},
        {"'a' + 'b' & 2^-1", "ab0.5"},
        {"#1/1/2002# - 1", "20011231"},
        {"7/2", "3.5", "division keeps the fraction"},
        {"7.5\\2", "4", "both sides round first, halves to even"},
        {"6000000000\\1048576", "5722", "drives are larger than 32 bits"},
        {"10 Mod 3*2", "4", "Mod binds less than *"},
        {"2^3^2", "64", "from left to right"},
        {"-2^2", "-4", "^ binds more than the sign"},
        {"5--3", "8", "two signs are no comment"},
        {"1/0", "NULL"},
        {"'a' & Null & 5", "a5", "Null joins as nothing"},
        {"1+2 & 3*4", "312", "& binds less than +"},
        {"'a' & 'b' = 'AB'", "-1", "and more than ="},
        {"1.0 & ''", "1", "numbers join as they are shown"},
        {"'a' + Null", "NULL", "+ hands Null on, unlike &"},
        {"1 = 1", "-1", "true is all bits set"},
        {"3 Between 5 And 1", "-1", "either bound may be the lower one"},
        {"'b' Not Between 'C' And 'a'", "0", "without regard to case"},
        {"UCase('a') = 'a'", "-1", "computed texts compare without regard to case"},
        {"\"it's \"\"it\"\"\"", "it's \"it\""},
        {"#11/2/2001#", "20011102", "month first"},
        {"#25/12/2001#", "20011225", "unless there is no such month"},
        {"#12/31/2001# + 1", "20020101"},
        {"#1/1/2002# - #12/1/2001#", "31"},
        {"#1/1/2002# - '20011201'", "31", "a stored date is a text"},
        // Texts.
        {"Right('Jürgen',5) & Mid('abc',2) & Mid('abc',9) & StrReverse('aüb')", "ürgenbcbüa"},
        {"Replace('abc','','x') & InStr('abc','') & InStr(3,'abcabc','b') & InStr(9,'abc','b')", "abc150"},
        {"CStr(2.50) & IsNull(Null) & Len('Jü') & Left(12345,2)", "2.5-1212"},
        {"Choose(3,'a','b') & Null", "NULL"},
        {"Left('Jürgen',2)", "Jü", "characters, not bytes"},
        {"Mid('Jürgen',2,2)", "ür"},
        {"UCase('ab1') & LCase('AB1')", "AB1ab1"},
        {"'[' & Trim(' a ') & LTrim(' a ') & RTrim(' a ') & Trim('  ') & ']'", "[aa  a]"},
        {"InStr('Jürgen','G')", "4", "in characters, without regard to case"},
        {"InStr(1,'abc','C',0)", "0", "but where that is asked for"},
        {"Replace('a-b-A','a','xy')", "xy-b-xy"},
        {"Chr(65) & Asc('Az')", "A65"},
        {"'[' & Space(2) & String(3,'*-') & String(2,45) & ']'", "[  ***--]"},
        {"Val('12.5 MB') & Val('x')", "12.50"},
        {"Nz(Null) & Nz(Null,7) & Nz(1,2)", "71"},
        {"IIf(Null,'a','b')", "b"},
        {"IIf(1=1,1,Chr(-1))", "1", "the other branch is not worked out"},
        {"Choose(2,'a','b')", "b"},
        {"Switch(1=2,'a',2=2,'b')", "b"},
        // Numbers.
        {"CLng('70000') & CDbl(' 1.5e1 ') & Abs('-3')", "70000153"},
        {"Format('20011102','0000-00-00') & Format('abc','>') & Format(Null,'0.00')", "2001-11-02ABC"},
        {"CInt(2.5) & CInt(3.5)", "24", "halves to even"},
        {"Int(-1.5) & Fix(-1.5)", "-2-1"},
        {"Round(2.5) & Round(0.125,2)", "20.12"},
        {"Round(1E300,20)", "1.0e+300", "nothing left to round, and no overflow on the way"},
        {"Format(20011102,'0000-00-00')", "2001-11-02"},
        {"Format(0.5,'0.00') & Format(7,'00') & Format(0.25,'0%')", "0.500725%"},
        {"Format(-5,'00') & Format(1234567,'#,##0') & Format(2.345,'0.00') & Format(3,'0.##')",
         "-051,234,5672.353."},
        {"Format('n/a','0.00')", "n/a", "no number"},
        {"Format('20011102','dd mmm yyyy')", "02 Nov 2001"},
        {"Format('unknown','yyyy-mm-dd')", "unknown"},
        // Dates.
        {"Year('20011102') & Month('2001-11-02') & Day('20011102')", "2001112"},
        {"DateAdd('q',2,'20011102') & DateAdd('h',25,'20011102')", "2002050220011103 01:00:00"},
        {"DateDiff('d','20011102','20011203') & DateDiff('w','20011103','20011116')", "311"},
        {"DateDiff('n','20011102 08:59:59','20011102 09:00:00') & DateDiff('h','20011102','20011103')",
         "124"},
        {"Year('20011331') & DateValue('20011102 25:00:00')", "NULL"},
        {"Year('nonsense')", "NULL", "one bad date must not stop a report"},
        {"DateValue('20011102 08:00:00')", "20011102"},
        {"DateSerial(2001,14,0)", "20020131", "months and days run on"},
        {"DateSerial(29,1,1) & DateSerial(30,1,1)", "2029010119300101"},
        {"DateAdd('m',1,'20010131')", "20010228", "to the end of the shorter month"},
        {"DateAdd('yyyy',-1,'20000229')", "19990228"},
        {"DateAdd('ww',1,'20011102') & DateAdd('d',-2,'20011102')", "2001110920011031"},
        {"DateDiff('yyyy','20011231','20020101')", "1", "boundaries count, not full years"},
        {"DateDiff('q','20011231','20020101') & DateDiff('m','20020101','20011231')", "1-1"},
        {"DateDiff('ww','20011103','20011104')", "1", "from Saturday to Sunday"},
        // Wildcards.
        {"'a-b' Like 'a[-x]b' And '[x]' Like '[[]x]' And '' Like '%' And '' Like '[]'", "-1"},
        {"'x Microsoft Office 2000' Like '%MICROSOFT OFFICE%'", "-1"},
        {"'Office' Like 'off'", "0", "the whole text counts"},
        {"'PC_01' Like 'PC?##' And 'PC_01' Like 'pc_0_'", "-1"},
        {"'Visual C#' Like '%C#%' And 'a*b?' Like 'a*b?'", "-1", "wildcards match themselves"},
        {"'PCX1' Like 'PC[a-cx]#' And 'PCY1' Not Like 'PC[a-cx]#'", "-1"},
        {"'PC1' Like 'PC[!a-z]' And Not 'PCA' Like 'PC[!a-z]'", "-1"},
        {"'ü' Like '?' And 'ü' Like '[à-ý]'", "-1", "characters, not bytes"},
        {"'aXbXXc' Like 'a%X%c' And Not 'aXbXXc' Like 'a%X%d'", "-1"},
        {"'a' Like '[a'", "engine: Invalid procedure call or argument: Invalid pattern string"},
        {"String(5000,'a') Like '%a%a%a%a%a%a%a%a%a%b'", "0", "and soon"},
        // Failures.
        {"CInt('x')", "engine: Type mismatch"},
        {"Mid('a',0)", "engine: Invalid procedure call or argument"},
        {"DateAdd('x',1,'20011102')", "engine: Invalid procedure call or argument"},
        {"DateSerial(9999,12,32)", "engine: Invalid procedure call or argument"},
        {"CInt(40000)", "engine: Overflow"},
        {"Left('a',-1)", "engine: Invalid procedure call or argument"},
        {"10^400", "engine: Overflow"},
        {"String(2000000000,'a')", "engine: Out of memory", "no text grows out of all bounds"},
        {"Replace(String(100000,'a'),'a',String(100000,'b'))", "engine: Out of memory"},
        {"DateAdd('d',2147483647,'20011102')", "engine: Invalid procedure call or argument"},
        {"DateSerial(2147483647,2147483647,2147483647)", "engine: Invalid procedure call or argument"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Value(c.expression), c.value) << c.expression << ": " << c.why;
}

TEST_F(AccessFunctions, TodayIsStoredLikeAnyOtherDate) {
    EXPECT_EQ(Value("Date() - DateSerial(Year(Date()), Month(Date()), Day(Date()) - 30)"), "30");
    EXPECT_EQ(Value("Len(Date()) & '/' & Len(Now()) & '/' & Len(Time())"), "8/17/8");
}

TEST_F(AccessFunctions, RefuseACallThatWasNeverTranslated) {
    Execute("create view Foreign1 as select AccessLeft() as x");
    EXPECT_EQ(Rows("SELECT * FROM Foreign1"), "engine: Invalid procedure call or argument");
}

} // namespace
