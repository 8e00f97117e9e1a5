// SPDX-License-Identifier: GPL-3.0-or-later
// A single echo: which texts are tried at all, and the real probe on the loopback. Whatever else the real one
// sends, it sends in a network namespace of the test's own, which has no way out.
#include "platform/echo.h"
#include "platform/errors.h"
#include "tests/support/FakeEcho.h"
#include "tools/Echo.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>

namespace {

EchoResult Ping(EchoProbes& probes, const std::string& address) {
    return SendEcho(probes, address, QEventLoop::AllEvents);
}

TEST(IsPingable, TakesWhatBeginsWithANumberOtherThanNought) {
    const struct {
        const char* why;
        const char* address;
        bool isPingable;
    } cases[] = {
        {"read as 192.168", "192.168.1.1", true},
        {"read as 12", "12abc", true},
        {"read as 0.1", "0.1.2.3", true},
        {"read as 0.0", "0.0.0.0", false},
        {"no number", "abc", false},
        {"no text", "", false},
        {"colons end the number", "::1", false},
        {"past any number, and not nought", "1e999", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(IsPingable(c.address), c.isPingable) << c.address << ": " << c.why;
}

TEST(SendEcho, LetsOtherEventsRunUntilTheWaitIsOver) {
    FakeEchoProbes probes;
    int ticks = 0;
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, [&ticks] { ++ticks; });
    other.start(5);
    const EchoResult silent = Ping(probes, "127.0.0.9");
    EXPECT_FALSE(silent.milliseconds || silent.isForbidden);
    EXPECT_GT(ticks, 1);
    EXPECT_LT(silent.rounds, 200) << "it sleeps between its rounds";
    EXPECT_EQ(probes.alive, 0);

    probes.replies["127.0.0.9"] = {3, 1};
    const EchoResult reply = Ping(probes, "127.0.0.9");
    EXPECT_EQ(reply.milliseconds, 3);
    EXPECT_EQ(reply.rounds, 1);
}

class SystemEchoTest : public testing::Test {
protected:
    void SetUp() override {
        if (Ping(probes, "127.0.0.1").isForbidden)
            GTEST_SKIP() << "this system lets the test send no echo requests";
    }

    SystemEchoProbes probes;
};

TEST_F(SystemEchoTest, TheLoopbackAnswers) {
    for (const char* address : {"127.0.0.1", "127.200.100.1"}) {
        const EchoResult echo = Ping(probes, address);
        ASSERT_TRUE(echo.milliseconds) << address;
        EXPECT_GE(*echo.milliseconds, 0);
    }
}

/// A raw socket hears this system's own request, and the replies to all others.
TEST_F(SystemEchoTest, OnlyItsOwnReplyCounts) {
    const auto other = probes.Create();
    other->Data("ZUL TEST PING");
    other->TimeOut(100);
    other->Host("127.0.0.1");
    const auto probe = probes.Create();
    probe->Data("ZUL TEST PING");
    probe->TimeOut(100);
    probe->Host("127.0.0.1");
    EXPECT_FALSE(probe->Done()) << "before anything was sent";
    EXPECT_EQ(probe->RoundTripTime(), 0);
    other->Send();
    EXPECT_TRUE(other->Done());
    EXPECT_FALSE(probe->Done());
    probe->Send();
    EXPECT_TRUE(probe->Done());

    const auto late = probes.Create();
    late->Host("127.0.0.1");
    late->TimeOut(-1);
    late->Send();
    EXPECT_FALSE(late->Done()) << "a reply past its time";
}

TEST_F(SystemEchoTest, NothingIsResolvedOrMisread) {
    const struct {
        const char* why;
        std::string address;
    } cases[] = {
        {"a name", "localhost"},
        {"a number and no address", "12abc"},
        {"three parts, which some readers complete", "127.0.1"},
        {"one number, which some readers take for four", "2130706433"},
        {"octal, which some readers take for 127", "0177.0.0.1"},
        {"a hidden end", std::string("127.0.0.1\0.example", 18)},
        {"blanks", " 127.0.0.1"},
        {"a line end", "127.0.0.1\n"},
        {"options of a command line", "127.0.0.1 -f"},
        {"the other protocol", "1::1"},
        {"the same in its guise", "::ffff:127.0.0.1"},
        {"everybody on the loopback", "127.255.255.255"},
        {"too long for any address", std::string(5000, '1')},
    };
    for (const auto& c : cases) {
        const EchoResult echo = Ping(probes, c.address);
        EXPECT_FALSE(echo.milliseconds) << c.address << ": " << c.why;
        EXPECT_FALSE(echo.isForbidden) << c.why;
    }
}

constexpr int kHasPassed = 0;
constexpr int kHasFailed = 1;
constexpr int kNoNamespace = 77;
/// Whom the test becomes, to have no rights over raw sockets.
constexpr uid_t kNobody = 65534;

/// What a network of the test's own is like.
struct Network {
    /// Groups whose programs may ping.
    const char* pingGroups;
    /// Whether the test keeps its rights, and with them raw sockets.
    bool isPrivileged;
    /// Whether its loopback answers.
    bool answers;
};

void WriteSetting(const char* name, const char* text) {
    std::ofstream("/proc/sys/net/ipv4/" + std::string(name)) << text << std::flush;
}

/// Moves the process into an empty network. False where the system does not let it.
bool Enter(const Network& network) {
    if (unshare(CLONE_NEWNET) != 0)
        return false;
    ifreq loopback{};
    loopback.ifr_name[0] = 'l';
    loopback.ifr_name[1] = 'o';
    loopback.ifr_flags = IFF_UP;
    const int control = socket(AF_INET, SOCK_DGRAM, 0);
    const bool isUp = control >= 0 && ioctl(control, SIOCSIFFLAGS, &loopback) == 0;
    close(control);
    WriteSetting("ping_group_range", network.pingGroups);
    WriteSetting("icmp_echo_ignore_all", network.answers ? "0" : "1");
    return isUp && (network.isPrivileged ||
                    (setresgid(kNobody, kNobody, kNobody) == 0 && setresuid(kNobody, kNobody, kNobody) == 0));
}

/// Ends the process, which is the test's own, with what became of it.
[[noreturn]] void InNetwork(const Network& network, bool (*holds)(EchoProbes& probes)) {
    if (!Enter(network))
        std::_Exit(kNoNamespace);
    SystemEchoProbes probes;
    std::_Exit(holds(probes) ? kHasPassed : kHasFailed);
}

/// Where no network was to be had, that is told, and is no failure.
bool Passed(int status) {
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    if (code == kNoNamespace)
        std::cout << "skipped: this system lets the test make no network of its own" << std::endl;
    return code == kHasPassed || code == kNoNamespace;
}

bool Answers(EchoProbes& probes) {
    return Ping(probes, "127.0.0.1").milliseconds && Ping(probes, "127.9.9.9").milliseconds;
}

bool IsForbidden(EchoProbes& probes) {
    const EchoResult echo = Ping(probes, "127.0.0.1");
    return echo.isForbidden && !echo.milliseconds;
}

bool AreSilent(EchoProbes& probes) {
    bool isSilent = true;
    for (const char* address :
         {"127.0.0.1", "10.1.2.3", "0.1.2.3", "255.255.255.255", "224.0.0.1", "240.0.0.1"}) {
        const EchoResult echo = Ping(probes, address);
        isSilent = isSilent && !echo.milliseconds && !echo.isForbidden;
    }
    return isSilent;
}

TEST(SystemEchoInNetworks, UsesWhicheverSocketTheSystemAllows) {
    const struct {
        const char* why;
        Network network;
        bool (*holds)(EchoProbes& probes);
    } cases[] = {
        {"its group may ping", {"65534 65534", false, true}, Answers},
        {"its group may not, but it may use raw sockets", {"1 0", true, true}, Answers},
        {"neither", {"1 0", false, true}, IsForbidden},
        {"nobody answers", {"65534 65534", false, false}, AreSilent},
        {"nobody answers, though a raw socket hears its own request", {"1 0", true, false}, AreSilent},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        EXPECT_EXIT(InNetwork(c.network, c.holds), Passed, "");
    }
}

} // namespace
