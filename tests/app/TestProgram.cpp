// SPDX-License-Identifier: GPL-3.0-or-later
// The program itself, in a folder of its own.
#include "import/Schema.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

namespace {

class ProgramTest : public testing::Test {
protected:
    ProgramTest() {
        std::filesystem::create_directories(folder.Path("runtime"));
        std::filesystem::permissions(folder.Path("runtime"), std::filesystem::perms::owner_all);
        std::filesystem::create_directories(folder.Path("program"));
        std::filesystem::copy_file(MOVA_PROGRAM, folder.Path("program/velmora"));
        CreateDatabase(folder.Path("program/Template.sdb"));
    }
    ~ProgramTest() override {
        if (process > 0) {
            kill(process, SIGKILL);
            waitpid(process, nullptr, 0);
        }
    }

    void Start() {
        process = fork();
        if (process != 0)
            return;
        setenv("XDG_RUNTIME_DIR", folder.Path("runtime").c_str(), 1);
        setenv("XDG_CONFIG_HOME", folder.Path("config").c_str(), 1);
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        const std::string program = folder.Path("program/velmora");
        execl(program.c_str(), program.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }

    /// Waits until `holds`, at most half a minute.
    template <class Condition>
    static bool Until(const Condition& holds) {
        for (int i = 0; i < 600 && !holds(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return holds();
    }

    bool IsAlive() const { return waitpid(process, nullptr, WNOHANG) == 0; }

    TemporaryFolder folder;
    pid_t process = 0;
};

TEST_F(ProgramTest, ABoxOfTheStartUpWaitsForItsAnswer) {
    // Without a collector the start-up ends in a box that nobody answers here; the program must not pass it.
    Start();
    std::this_thread::sleep_for(std::chrono::seconds(2));
    EXPECT_TRUE(IsAlive());
    EXPECT_FALSE(folder.Exists("program/Demodb.mdb")) << "the start-up had ended before";
}

TEST_F(ProgramTest, AKilledRunLeavesASoundDatabaseAndNoLock) {
    folder.WriteFile("program/Movanta.exe", "#!/bin/sh\nexit 0\n");
    std::filesystem::permissions(folder.Path("program/Movanta.exe"), std::filesystem::perms::owner_all);
    folder.WriteFile("program/INF/PC1.ORG", "[NET]\r\nINFO0=PC1|ann|20011120|08:00:00|0|\r\n");
    for (int round = 0; round < 2; ++round) {
        Start();
        EXPECT_TRUE(Until([this] { return folder.Exists("config/velmora/velmora.ini"); }))
            << "the window's settings";
        EXPECT_TRUE(IsAlive()) << "a lock left behind would have ended it";
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        std::filesystem::remove_all(folder.Path("config"));
    }
    process = 0;
}

} // namespace
