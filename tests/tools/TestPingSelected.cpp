// SPDX-License-Identifier: GPL-3.0-or-later
// The ping of the address that is selected in a list of network cards, to its box.
#include "platform/prompts.h"
#include "tests/support/FakeEcho.h"
#include "tests/support/FakeForm.h"
#include "tests/support/QueuedPrompts.h"
#include "tools/PingCommands.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PingSelectedTest : public testing::Test {
protected:
    PingSelectedTest() {
        form.node = "ALL?DEVNET";
        form.rows = {"PC1", "PC2"};
        form.subItems = {{"Card", "TCP/IP", "127.0.0.1", "255.0.0.0"},
                         {"Card", "TCP/IP", "127.0.0.2", "255.0.0.0"}};
        form.focusedItem = 1;
        form.selected = {0, 1};
    }

    QueuedPrompts prompts;
    FakeForm form;
    FakeEchoProbes probes;
    PingCommands commands{{form, prompts, probes}};
};

TEST_F(PingSelectedTest, TellsHowLongTheReplyTook) {
    probes.replies["127.0.0.2"] = {7, 2};
    prompts.Expect(
        Box("Ping Reply", "Ping replied in 7ms from IP 127.0.0.2. Tried (3 times)", MsgBoxStyle::kOKOnly),
        [this] { EXPECT_EQ(probes.alive, 0) << "the probe is released before the box"; });
    commands.mnuPingPrivate();
    EXPECT_THAT(probes.sent, ElementsAre("ZUL TEST PING, 100 > 127.0.0.2"));
    EXPECT_EQ(form.told, "");
}

TEST_F(PingSelectedTest, TellsThatNoReplyCame) {
    form.node = "PC1?DEVNET"; // its list has no column of the machine's name
    form.subItems[1] = {"TCP/IP", "127.0.0.2"};
    prompts.Expect(Box("Ping Failed", "Ping failed on IP 127.0.0.2!", MsgBoxStyle::kOKOnly));
    commands.mnuPingPrivate();
    EXPECT_EQ(form.told, "");
    EXPECT_EQ(probes.alive, 0);
}

TEST_F(PingSelectedTest, AForbiddingSystemIsToldOfBesideTheFailure) {
    probes.failure.emplace(Errors::kPermissionDenied, "Permission denied");
    prompts.Expect(Box("Ping Failed", "Ping failed on IP 127.0.0.2!", MsgBoxStyle::kOKOnly));
    commands.mnuPingPrivate();
    EXPECT_EQ(form.told, "This system forbids pings: press F1 for help\n");
}

TEST_F(PingSelectedTest, RefusesWhatIsNoAddress) {
    for (const char* address : {"", "n/a", "0.0.0.0", "fe80::1"}) {
        form.subItems[1][2] = address;
        prompts.Expect(
            Box("Can't ping", std::string("Invalid IP address : ") + address, MsgBoxStyle::kCritical));
        commands.mnuPingPrivate();
    }
    EXPECT_THAT(probes.sent, IsEmpty());
}

TEST_F(PingSelectedTest, DoesNothingElsewhereAndFailsInSilence) {
    const struct {
        const char* why;
        std::function<void()> change;
    } cases[] = {
        {"a list of another category", [this] { form.node = "ALL?DEV"; }},
        {"the machines", [this] { form.node = "MAIN"; }},
        {"the row with the focus is not selected, though another is", [this] { form.selected = {0}; }},
        {"no row has the focus", [this] { form.focusedItem.reset(); }},
        {"no node is selected", [this] { form.node.reset(); }},
        {"no probe can be made",
         [this] { probes.failure.emplace(Errors::kPathAccess, "Too many open files"); }},
    };
    for (const auto& c : cases) {
        const auto node = form.node;
        const auto focusedItem = form.focusedItem;
        const auto selected = form.selected;
        c.change();
        SCOPED_TRACE(c.why);
        commands.mnuPingPrivate();
        form.node = node;
        form.focusedItem = focusedItem;
        form.selected = selected;
    }
    EXPECT_EQ(form.told, "");
    EXPECT_EQ(probes.sent.size(), 1U) << "the last case's";
}

} // namespace
