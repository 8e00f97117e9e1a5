// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/singleinstance.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/TemporaryFolder.h"

#include <QCoreApplication>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

namespace {

class SingleInstanceTest : public testing::Test {
protected:
    /// One round of the start-up's wait for the collector.
    static void WaitRound() { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

    TemporaryFolder mProgram;
    TemporaryFolder mRuntime;
    TemporaryFolder mTemporary;
    EnvironmentVariable mRuntimeFolder{"XDG_RUNTIME_DIR", mRuntime.Path()};
    EnvironmentVariable mTemporaryFolder{"TMPDIR", mTemporary.Path()};
};

TEST_F(SingleInstanceTest, ALaterCopyRaisesTheFirstThatIsWaiting) {
    SingleInstance first(mProgram.Path());
    EXPECT_FALSE(first.IsPrior());
    int raised = 0;
    first.Listen([&] { ++raised; });
    {
        SingleInstance second(mProgram.Path() + "/.");
        EXPECT_TRUE(second.IsPrior()) << "another way of writing the folder is the same folder";
        EXPECT_TRUE(second.ActivateFirst());
    }
    EXPECT_EQ(raised, 0);
    WaitRound();
    EXPECT_EQ(raised, 1) << "the second copy has ended by now, the request has not";

    const SingleInstance elsewhere(mTemporary.Path());
    EXPECT_FALSE(elsewhere.IsPrior()) << "a copy of another folder is another program";
}

TEST_F(SingleInstanceTest, AKilledCopyLeavesNothingThatLocksOut) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        SingleInstance killed(mProgram.Path());
        killed.Listen([] {});
        const bool isFirst = !killed.IsPrior();
        if (write(ready[1], &isFirst, sizeof isFirst) == sizeof isFirst)
            pause();
        _exit(0);
    }
    bool wasFirst = false;
    ASSERT_EQ(read(ready[0], &wasFirst, sizeof wasFirst), static_cast<ssize_t>(sizeof wasFirst));
    EXPECT_TRUE(wasFirst);
    EXPECT_TRUE(SingleInstance(mProgram.Path()).IsPrior()) << "another process holds it";
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(ready[0]);
    close(ready[1]);

    SingleInstance next(mProgram.Path());
    EXPECT_FALSE(next.IsPrior());
    int raised = 0;
    next.Listen([&] { ++raised; });
    SingleInstance(mProgram.Path()).ActivateFirst();
    WaitRound();
    EXPECT_EQ(raised, 1) << "the socket that the killed copy left is replaced";
}

TEST_F(SingleInstanceTest, OnlyAFolderOfTheUsersAloneIsTrusted) {
    std::filesystem::permissions(mRuntime.Path(), std::filesystem::perms(0777));
    const std::string own = mTemporary.Path("velmora-" + std::to_string(geteuid()));
    {
        const SingleInstance first(mProgram.Path());
        EXPECT_TRUE(SingleInstance(mProgram.Path()).IsPrior()) << "the temporary folder serves as well";
        EXPECT_TRUE(std::filesystem::is_empty(mRuntime.Path()));
        EXPECT_EQ(std::filesystem::status(own).permissions(), std::filesystem::perms::owner_all);
    }
    std::filesystem::permissions(own, std::filesystem::perms(0777));
    const SingleInstance first(mProgram.Path());
    SingleInstance second(mProgram.Path());
    EXPECT_TRUE(second.IsPrior())
        << "a folder that others can write to is not trusted; the program folder's own lock still tells";
    EXPECT_FALSE(second.ActivateFirst()) << "but there is no socket then";
}

TEST_F(SingleInstanceTest, AnotherUsersCopyCountsAsPrior) {
    const SingleInstance first(mProgram.Path());
    // Another user has another runtime folder.
    const TemporaryFolder other;
    const EnvironmentVariable runtimeFolder("XDG_RUNTIME_DIR", other.Path());
    EXPECT_TRUE(SingleInstance(mProgram.Path()).IsPrior()) << "both would rebuild the one database";
}

} // namespace
