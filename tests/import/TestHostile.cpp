// SPDX-License-Identifier: GPL-3.0-or-later
// What a client PC could put into the folder: nothing of it may crash, hang or touch the rows of a machine
// that it does not name.
#include "tests/import/ImportTest.h"
#include "tests/support/Texts.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <random>

namespace {

class HostileTest : public ImportTest {
protected:
    HostileTest() {
        Write("GOOD.ORG", SmallFile("GOOD"));
        EXPECT_TRUE(Import("GOOD"));
        mGood = Good();
    }
    ~HostileTest() override {
        EXPECT_EQ(Good(), mGood) << "the rows of another machine changed";
        EXPECT_EQ(IntegrityCheck(), "ok");
    }

    /// Imports one file and nothing else.
    bool ImportFile(const std::string& bytes) {
        Write("BAD.ORG", bytes);
        return Import("BAD");
    }

    /// The small file of the machine BAD with one text replaced.
    static std::string Bad(const std::string& text, const std::string& replacement) {
        std::string file = SmallFile("BAD");
        const std::size_t place = file.find(text);
        EXPECT_NE(place, std::string::npos) << text;
        return file.replace(place, text.size(), replacement);
    }

    std::string Count(const std::string& table) const {
        return Rows("SELECT COUNT(*) FROM " + table + " WHERE COMPUTERNAME = 'BAD' AND ConfID = 0");
    }

private:
    std::string Good() const {
        std::string rows;
        for (const char* table : {"Net", "OS", "PC", "UninstallData", "DeviceData", "DrivesData"})
            rows += Rows(std::string("SELECT * FROM ") + table + " WHERE COMPUTERNAME = 'GOOD'") + "\n";
        return rows;
    }
    std::string mGood;
};

TEST_F(HostileTest, NamesThatBreakTheStatementEndTheImportWithItsBox) {
    for (const std::string name : {"O'NEIL", "x' OR '1'='1", "'"}) {
        prompts.Expect(Question{Question::Kind::Box, "Error# -1", {}, {}});
        EXPECT_FALSE(ImportFile(Bad("BAD|", name + "|"))) << name;
        EXPECT_TRUE(noData);
    }
    Write("O'X.ORG", SmallFile("GOOD2"));
    Write("O'X.PNF", Lines({"[DETAIL]"}));
    prompts.Expect(Question{Question::Kind::Box, "Error# -1", {}, {}});
    EXPECT_FALSE(Import("O'X")) << "personal details go by the file's name";
    EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), "GOOD\nGOOD2");
    EXPECT_EQ(Rows("SELECT LastImportDate FROM Version"), "20011120") << "of the good machine's import";
}

TEST_F(HostileTest, OddNamesAreMachinesOrNone) {
    struct {
        const char* why;
        std::string record;
        const char* machine;
    } cases[] = {
        {"no name", "", ""},
        {"a first bar belongs to the name", "|user|20011102|", "|user"},
        {"a question mark is a character", "A?B|u|", "A?B"},
        {"so are control characters", "A\x01\x1B|u|", "A\x01\x1B"},
        {"a name past twenty characters is cut", "NAME-OF-MORE-THAN-TWENTY|u|", "NAME-OF-MORE-THAN-TW"},
        {"and never found again", "NAME-OF-MORE-THAN-TWENTY|u|", ""},
    };
    std::string machines = "GOOD";
    for (const auto& c : cases) {
        EXPECT_TRUE(ImportFile(Bad("BAD|user|20011102|08:15:00|00A0C9000001|", c.record))) << c.why;
        machines += (*c.machine == '\0' ? "" : "\n") + std::string(c.machine);
        EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), machines) << c.why;
    }
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM DeviceData WHERE COMPUTERNAME LIKE 'NAME%'"), "0")
        << "rows under the whole name would have no machine";
}

TEST_F(HostileTest, CountsAreBelievedWithinSixteenBits) {
    struct {
        const char* why;
        const char* count;
        const char* rows;
    } cases[] = {
        {"smaller than the keys: the rest is ignored", "1", "1"},
        {"larger than the keys: the missing ones are skipped", "30000", "2"},
        {"rounded half to even", "0.5", "0"},
        {"negative", "-1", "0"},
        {"text", "many", "0"},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(
            ImportFile(Bad("[UNINSTALL]\r\nINFO0=2|", "[UNINSTALL]\r\nINFO0=" + std::string(c.count) + "|")))
            << c.why;
        EXPECT_EQ(Count("UninstallData"), c.rows) << c.why;
    }
    for (const char* count : {"32768", "40000", "1e300"}) {
        prompts.Expect(Box("Error# 6", "Overflow: BAD.org"), MsgBoxAnswer::OK);
        EXPECT_FALSE(
            ImportFile(Bad("[DEVICE]\r\nINFO0=4|", "[DEVICE]\r\nINFO0=" + std::string(count) + "|")));
        EXPECT_EQ(Count("UninstallData"), "2") << "rows already written stay";
    }
}

TEST_F(HostileTest, ABadRowEndsItsSectionAlone) {
    // The second device's name is longer than its column: the first stays, the rest are missing.
    EXPECT_TRUE(ImportFile(Bad("DevName=Ethernet", "DevName=" + std::string(51, 'x'))));
    EXPECT_EQ(Rows("SELECT \"Device Name\" FROM DeviceData WHERE COMPUTERNAME = 'BAD' AND ConfID = 0"),
              "Graphics");
    EXPECT_EQ(Count("DrivesData"), "2");
    // A number past the double's range is no number.
    EXPECT_TRUE(ImportFile(Bad("|131072|", "|1e999|")));
    EXPECT_EQ(Rows("SELECT RAM FROM PC WHERE COMPUTERNAME = 'BAD' AND ConfID = 0"), "131072")
        << "the row of the import before";
}

TEST_F(HostileTest, DriverDatesThatCanNotBeStoredGetTheDefault) {
    struct {
        const char* why;
        std::string date;
        const char* stored;
    } cases[] = {
        {"garbage longer than the column", "some time ago", "19800101"},
        {"short garbage passes unchanged", "soon", "soon"},
        {"a date that no calendar has", "13-45-1999", "19800101"},
        {"eight digits pass", "19990615", "19990615"},
        {"empty stays empty", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(ImportFile(Bad("DvrDate=6-15-1999", "DvrDate=" + c.date)));
        EXPECT_EQ(
            Rows(
                "SELECT \"Device Driver Date\" FROM DeviceData WHERE COMPUTERNAME = 'BAD' AND ConfID = 0 AND "
                "\"Device Name\" = 'Graphics'"),
            c.stored)
            << c.why;
    }
}

TEST_F(HostileTest, ProtocolCountsCostNothing) {
    for (const char* count : {"1000000000;", "1|"}) {
        EXPECT_TRUE(ImportFile(Bad("PCount=1;", "PCount=" + std::string(count))));
        EXPECT_EQ(
            Rows("SELECT COUNT(*) FROM DeviceNetwork AS N JOIN DeviceData AS D ON N.\"Device Auto ID\" = "
                 "D.\"Device Auto ID\" WHERE COMPUTERNAME = 'BAD' AND ConfID = 0"),
            "2")
            << count
            << ": not closed by its own terminator at once, but by a later one, the number is still 1";
    }
}

TEST_F(HostileTest, FilesMadeToBeSlowAreNot) {
    const std::string head = SmallFile("BAD").substr(0, SmallFile("BAD").find("[DEVICE]"));
    // Ten megabytes with three keys for a count of 32767.
    EXPECT_TRUE(ImportFile(
        head + "[DEVICE]\r\nINFO0=32767|\r\n[DEVICEDATA]\r\n" +
        Lines({"INFO0=Cat=a|", "INFO1=Cat=b|", "x=" + std::string(10 << 20, 'x'), "INFO2=Cat=c|"})));
    EXPECT_EQ(Count("DeviceData"), "3");
    std::string run;
    // Records that run into each other, with dates and counts of no end.
    const std::string blanks(1 << 20, ' ');
    for (const char* tag : {"DvrDate", "PCount"}) {
        run = "INFO";
        for (int i = 0; i < 32767; ++i)
            run += std::to_string(i) + "=INFO";
        EXPECT_TRUE(ImportFile(head + "[DEVICE]\r\nINFO0=32767|\r\n[DEVICEDATA]\r\n" + run +
                               "Cat=Network adapters|" + tag + "=" + blanks + "|;"));
    }
    // Records that run into each other, each with every protocol: rows without end, were they all written.
    run.clear();
    for (int i = 0; i < 2000; ++i)
        run += "INFO" + std::to_string(i) + "=";
    run += "Cat=Network adapters|PCount=999999999;";
    for (int i = 0; i < 1000; ++i)
        run += "PR" + std::to_string(i) + "=TCP;";
    EXPECT_TRUE(ImportFile(head + "[DEVICE]\r\nINFO0=2000|\r\n[DEVICEDATA]\r\n" + run));
    EXPECT_LT(std::stoi(Rows("SELECT COUNT(*) FROM DeviceNetwork")), 20000);
    // One line of ten megabytes.
    EXPECT_TRUE(
        ImportFile(head + "[DEVICE]\r\nINFO0=2|\r\n[DEVICEDATA]\r\nINFO0=" + std::string(10 << 20, 'z')));
    EXPECT_EQ(Count("DeviceData"), "1") << "a device without a single tag has empty values";
}

TEST_F(HostileTest, WhatIsNoFileIsPassedOver) {
    std::filesystem::create_directory(inventory + "/folder.org");
    symlink((inventory + "/missing").c_str(), (inventory + "/dangling.org").c_str());
    mkfifo((inventory + "/pipe.org").c_str(), 0600);
    symlink("/dev/zero", (inventory + "/endless.org").c_str());
    Write(".hidden.org", SmallFile("HIDDEN"));
    Write("noextension", SmallFile("NONE"));
    std::filesystem::remove(inventory + "/GOOD.ORG");
    Write("LAST.ORG", SmallFile("LAST"));
    ASSERT_TRUE(Import());
    EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), "GOOD\nLAST");
}

TEST_F(HostileTest, AnyBytesAreSurvived) {
    AnyBox anyBox;
    std::mt19937 random(11);
    const std::string sound = SmallFile("BAD");
    for (int round = 0; round < 400; ++round) {
        std::string sections = sound.substr(sound.find('[', 20));
        for (int change = 0; change < 4; ++change)
            sections = Damaged(random, std::move(sections), sound);
        Write("BAD.ORG", sound.substr(0, sound.find('[', 20)) + sections);
        noData = false;
        cSinImport(connection, anyBox, clock, {}, nullptr).ImportInfData(inventory, "BAD", noData);
        ASSERT_EQ(Rows("SELECT COUNT(*) FROM Net WHERE COMPUTERNAME = 'GOOD'"), "1");
    }
}

} // namespace
