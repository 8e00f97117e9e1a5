// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Startup.h"
#include "tests/collector/FakeMachine.h"

#include <gtest/gtest.h>

namespace collector {

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

} // namespace collector
