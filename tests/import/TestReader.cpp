// SPDX-License-Identifier: GPL-3.0-or-later
// What is found in an inventory file, and how old it must be to be read.
#include "import/Record.h"
#include "import/TimeFrame.h"
#include "import/cINIReader.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

std::string Value(const std::string& contents, const std::string& section, const std::string& key) {
    cINIReader reader;
    reader.Contents(contents);
    return std::string(reader.GetValue(section, key, "default"));
}

TEST(cINIReader, FindsValuesByPlainSearch) {
    const std::string twoSections = "[A]\r\nINFO0=first\r\nINFO1=second\r\n[B]\r\nINFO0=b\r\nINFO2=late\r\n";
    struct {
        const char* why;
        std::string contents;
        const char* section;
        const char* key;
        const char* value;
    } cases[] = {
        {"the first key", twoSections, "A", "INFO0", "first"},
        {"a key that only a later section has", twoSections, "A", "INFO2", "default"},
        {"case counts", twoSections, "a", "INFO0", "default"},
        {"a header with a blank behind it is none", "[A] \r\nINFO0=x\r\n", "A", "INFO0", "default"},
        {"bare line feeds make no header", "[A]\nINFO0=x\n", "A", "INFO0", "default"},
        {"a value that ends in ] ends its section", "[A]\r\nINFO0=x]\r\nINFO1=y\r\n", "A", "INFO1",
         "default"},
        {"and still has its value", "[A]\r\nINFO0=x]\r\n", "A", "INFO0", "x]"},
        {"INFO1 is not INFO11", "[A]\r\nINFO11=x\r\nINFO1=y\r\n", "A", "INFO1", "y"},
        {"the first place wins, also inside a value", "[A]\r\nINFO0=see INFO1=z\r\nINFO1=y\r\n", "A", "INFO1",
         "z"},
        {"the last line loses a character without CR LF", "[A]\r\nINFO0=xyz", "A", "INFO0", "xy"},
        {"an empty last line without CR LF can't lose one", "[A]\r\nINFO0=", "A", "INFO0", "default"},
        {"the same for a record that is found by number", "[A]\r\nINFO3=abc", "A", "INFO3", "ab"},
        {"a value is not trimmed", "[A]\r\nINFO0= x \r\n", "A", "INFO0", " x "},
        {"keys of other names", "[DETAIL]\r\nTXTINPUT1=one\r\nTXTINPUT10=ten\r\n", "DETAIL", "TXTINPUT10",
         "ten"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Value(c.contents, c.section, c.key), c.value) << c.why;
}

TEST(cINIReader, AnUnreadableFileHasNoSections) {
    const TemporaryFolder folder;
    cINIReader reader;
    reader.INIFilename(folder.Path("missing/PC1.ORG"));
    EXPECT_EQ(reader.INIFilename(), folder.Path("missing/PC1.ORG"));
    EXPECT_EQ(reader.GetValue("NET", "INFO0", "none"), "none");
    reader.CloseINI();
    EXPECT_EQ(reader.INIFilename(), "");
}

std::string Field(const std::string& record, int number) {
    const TextSearch search(record);
    return std::string(Record(search, search.Text()).GetField(number));
}

TEST(Record, WrapsAroundPastItsLastField) {
    EXPECT_EQ(Field("a|b|", 3), "") << "behind the last bar there is nothing";
    EXPECT_EQ(Field("a|b|", 4), "a") << "then the search starts from the front";
    EXPECT_EQ(Field("|x|y|", 1), "|x") << "a first bar belongs to the first field";
}

/// The rule of positions as the format states it, step by step: positions from 1, 0 for nowhere.
std::string FieldByTheRule(const std::string& record, int number) {
    const auto next = [&record](std::size_t start) {
        const std::size_t found = start > record.size() ? std::string::npos : record.find('|', start - 1);
        return found == std::string::npos ? 0 : found + 1;
    };
    std::size_t p = number <= 1 ? 1 : 0;
    for (int i = 1; i < number; ++i)
        p = next(p + 1);
    std::size_t q = next(p + 1);
    q = std::max(q, p);
    const std::size_t length = number < 2 ? q - p : q - p - 1;
    if (number >= 2 && q == p)
        return "";
    return record.substr(number < 2 ? p - 1 : p, length);
}

TEST(Record, AgreesWithTheRuleOnAnyRecord) {
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        std::string record;
        for (std::size_t length = random() % 12; length > 0; --length)
            record += "ab||c"[random() % 5];
        const int number = static_cast<int>(random() % 30);
        ASSERT_EQ(Field(record, number), FieldByTheRule(record, number)) << record << " " << number;
    }
}

std::string Tagged(const std::string& record, const char* tag, const char* terminator) {
    const TextSearch search(record);
    return std::string(Record(search, search.Text()).GetTagged(tag, terminator));
}

TEST(Record, FindsTagsByTheirFirstPlace) {
    EXPECT_EQ(Tagged("Cat=Modem|IO=02F8|", "IO", "|"), "02F8");
    EXPECT_EQ(Tagged("xIO=1|IO=2|", "IO", "|"), "1") << "the end of a longer tag";
    EXPECT_EQ(Tagged("Cat=Modem", "Cat", "|"), "") << "not closed";
    EXPECT_EQ(Tagged("Cat=Modem|", "IO", "|"), "");
    EXPECT_EQ(Tagged("Model=a;Cat=b|", "Model", "|"), "a;Cat=b") << "only its own terminator closes a tag";
}

TEST(Record, LongRecordsReadAsShortOnes) {
    // Far places are found by another road than near ones; both must give the same.
    const std::string filler(10000, 'x');
    const std::string record =
        "a|" + filler + "|c|MEM=" + filler + "|IP7=127.0.0.1;IP70=no;" + filler + "PR7=TCP;";
    EXPECT_EQ(Field(record, 2), filler);
    EXPECT_EQ(Field(record, 3), "c");
    EXPECT_EQ(Field(record, 5), "") << "no bar behind it";
    EXPECT_EQ(Field(record, 6), "a") << "wrapped around";
    EXPECT_EQ(Tagged(record, "MEM", "|"), filler);
    EXPECT_EQ(Tagged(record, "IP7", ";"), "127.0.0.1");
    EXPECT_EQ(Tagged(record, "PR7", ";"), "TCP");
    EXPECT_EQ(Tagged(record, "PR8", ";"), "");
}

TEST(Record, ASearchEndsWithItsRecord) {
    // The next line's tags are none of this one's, near or far.
    for (const std::size_t length : {std::size_t{10}, std::size_t{9000}}) {
        const std::string line = "Cat=" + std::string(length, 'y') + "|";
        const std::string contents = line + "\r\nMEM=1|IP0=127.0.0.1;";
        const TextSearch search(contents);
        const Record record(search, search.Text().substr(0, line.size()));
        EXPECT_EQ(record.GetTagged("MEM", "|"), "");
        EXPECT_EQ(record.GetTagged("IP0", ";"), "");
        EXPECT_EQ(record.GetField(2), "");
    }
}

TEST(Record, WalksTheProtocolsItHasInOrder) {
    const auto protocols = [](const std::string& record, double highest) {
        std::string numbers;
        const TextSearch search(record);
        Record(search, search.Text()).ForEachProtocol(highest, [&](long long n) {
            numbers += std::to_string(n) + " ";
        });
        return numbers;
    };
    EXPECT_EQ(protocols("PR0=a;PR1=b;", 1), "0 1 ") << "the highest number is included";
    EXPECT_EQ(protocols("PR0=a;PR1=b;", 0), "0 ");
    EXPECT_EQ(protocols("PR1=b;", -1), "");
    EXPECT_EQ(protocols("PR0=;PR2=c;", 5), "2 ") << "an empty name is skipped";
    EXPECT_EQ(protocols("PR90=z;PR1=b;PR007=no;PR5", 1e9), "1 90 ")
        << "a billion costs no more than the record";
}

constexpr int kSeconds = 0;
constexpr int kMinutes = 1;
constexpr int kHours = 2;
constexpr int kDays = 3;

LocalTime Stamp(int day, int hours, int minutes, int seconds) {
    const std::chrono::year_month_day date{std::chrono::year(2001), std::chrono::month(11),
                                           std::chrono::day(static_cast<unsigned>(day))};
    return std::chrono::local_days(date) + std::chrono::hours(hours) + std::chrono::minutes(minutes) +
           std::chrono::seconds(seconds);
}

TEST(CheckDate, AcceptsAFileAsOldAsTheFrameAllows) {
    struct {
        const char* why;
        int unit, count;
        LocalTime file;
        bool passes;
    } cases[] = {
        {"no frame: an unchanged stamp passes", kSeconds, 0, Stamp(2, 8, 0, 0), true},
        {"an older file never", kSeconds, 0, Stamp(2, 7, 59, 59), false},
        {"just inside the frame", kMinutes, 30, Stamp(2, 8, 29, 59), false},
        {"at its end", kMinutes, 30, Stamp(2, 8, 30, 0), true},
        {"hours into the next day", kHours, 23, Stamp(3, 7, 0, 0), true},
        {"a day, but a second", kDays, 1, Stamp(3, 7, 59, 59), false},
        {"a day", kDays, 1, Stamp(3, 8, 0, 0), true},
        {"sixty minutes are no time of day: never", kMinutes, 60, Stamp(30, 8, 0, 0), false},
        {"nor 24 hours", kHours, 24, Stamp(30, 8, 0, 0), false},
        {"a negative count is none either", kMinutes, -5, Stamp(30, 8, 0, 0), false},
        {"an unknown unit", 4, 0, Stamp(30, 8, 0, 0), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CheckDate("20011102", "08:00:00", c.file, {c.unit, c.count}), c.passes) << c.why;
}

TEST(CheckDate, NothingStoredPassesAndGarbageDoesNot) {
    const LocalTime file = Stamp(2, 8, 0, 0);
    EXPECT_TRUE(CheckDate("", "08:00:00", file, {kMinutes, 60})) << "whatever the frame";
    EXPECT_TRUE(CheckDate("20011102", "", file, {}));
    EXPECT_FALSE(CheckDate("2001110x", "08:00:00", file, {}));
    EXPECT_FALSE(CheckDate("20011102", "8 o'clo", file, {}));
    EXPECT_FALSE(CheckDate("20011102", "25:00:00", file, {}));
}

} // namespace
