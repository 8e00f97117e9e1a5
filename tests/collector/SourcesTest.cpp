// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Sources.h"
#include "tests/collector/FakeMachine.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace collector {

using namespace std::chrono_literals;

TEST(Sources, ReadOnlyPlainFilesAndOnlySoMuch) {
    const FakeMachine machine;
    machine.File("/etc/long", std::string(100, 'x'));
    machine.Folder("/etc/folder");
    ASSERT_EQ(::mkfifo(machine.At("/etc/pipe").c_str(), 0600), 0);
    const Sources sources = machine.Facts();
    EXPECT_EQ(sources.Read("/etc/long", 40).size(), 40U);
    EXPECT_EQ(sources.Read("/etc/folder"), "");
    EXPECT_EQ(sources.Read("/etc/pipe"), "") << "and does not wait for somebody to write into it";
    EXPECT_EQ(sources.Read("/etc/missing"), "");
}

TEST(Sources, FollowLinksButNotOutOfTheMachine) {
    const FakeMachine machine;
    machine.File("/sys/devices/pci/eth0/address", "02:00:00:00:00:01\n");
    machine.Link("/sys/class/net/eth0", "../../devices/pci/eth0");
    machine.Link("/etc/outside", "/usr");
    const Sources sources = machine.Facts();
    EXPECT_EQ(sources.Resolved("/sys/class/net/eth0"), "/sys/devices/pci/eth0");
    EXPECT_EQ(sources.Resolved("/etc/outside"), "");
    EXPECT_EQ(sources.Resolved("/sys/class/net/missing"), "");
}

TEST(RunProgram, GivesTheOutputOfAProgramThatSucceeds) {
    EXPECT_EQ(RunProgram({"echo", "$HOME; a b"}, 5s), "$HOME; a b\n") << "no shell reads the arguments";
    EXPECT_EQ(RunProgram({"false"}, 5s), "");
    EXPECT_EQ(RunProgram({"no-such-program-here"}, 5s), "");
}

TEST(RunProgram, GivesUpOnAProgramThatHangs) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(RunProgram({"sh", "-c", "echo early; sleep 30"}, 100ms), "");
    EXPECT_EQ(RunProgram({"sh", "-c", "exec >&-; sleep 30"}, 100ms), "") << "its output closed, itself alive";
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
}

TEST(RunProgram, StopsReadingAProgramThatNeverStopsWriting) {
    EXPECT_EQ(RunProgram({"yes"}, 300ms), "") << "ended from outside, so nothing of it counts";
}

} // namespace collector
