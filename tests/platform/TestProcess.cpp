// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/process.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

namespace {

using namespace std::chrono_literals;

int WaitFor(RunningProcess& process) {
    for (int round = 0; round < 500; ++round) {
        if (const int code = process.ExitCode(); code != RunningProcess::kStillActive)
            return code;
        std::this_thread::sleep_for(10ms);
    }
    return RunningProcess::kStillActive;
}

TEST(Process, TellsARunningProgramFromOneThatHasEnded) {
    const TemporaryFolder folder;
    const std::string gate = folder.Path("gate");
    const auto process = SystemProcesses().Shell(
        "/bin/sh", {"-c", "while [ ! -e \"$1\" ]; do sleep 0.02; done; exit 7", "sh", gate});
    EXPECT_EQ(process->ExitCode(), RunningProcess::kStillActive);
    folder.WriteFile("gate", "");
    EXPECT_EQ(WaitFor(*process), 7);
    EXPECT_EQ(process->ExitCode(), 7) << "the status stays after the process is collected";

    const auto killed = SystemProcesses().Shell("/bin/sh", {"-c", "kill -9 $$"});
    EXPECT_EQ(WaitFor(*killed), 128 + 9) << "a collector that crashes has ended, too";
}

TEST(Process, PathsAndArgumentsReachTheProgramUntouched) {
    const TemporaryFolder folder;
    const std::string program = folder.WriteFile("a folder; touch $(x)/print 'all'.sh",
                                                 "#!/bin/sh\nprintf '[%s]' \"$@\" > \"$OUT\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    const EnvironmentVariable out("OUT", folder.Path("out"));
    const auto process = SystemProcesses().Shell(program, {"", "two words", "\"; rm -rf *; `id`", "$HOME"});
    EXPECT_EQ(WaitFor(*process), 0);
    EXPECT_EQ(folder.ReadFile("out"), "[][two words][\"; rm -rf *; `id`][$HOME]");
}

TEST(Process, WhatCannotBeStartedRaises) {
    const TemporaryFolder folder;
    const std::string noProgram = folder.WriteFile("bytes", "\x01\x02\x03");
    std::filesystem::permissions(noProgram, std::filesystem::perms::owner_all);
    const struct {
        const char* why;
        std::string path;
        int number;
    } cases[] = {
        {"missing", folder.Path("Movanta.exe"), Errors::kFileNotFound},
        {"not executable", folder.WriteFile("plain", "text"), Errors::kPermissionDenied},
        {"a folder", folder.Path(), Errors::kPermissionDenied},
        {"executable, but of no known format: no shell tries it", noProgram, Errors::kPathAccess},
    };
    for (const auto& c : cases) {
        const RunTimeError failure = FailureOf([&] { SystemProcesses().Shell(c.path, {}); });
        EXPECT_EQ(failure.number, c.number) << c.why;
        EXPECT_NE(failure.description.find(c.path), std::string::npos) << failure.description;
    }
}

} // namespace
