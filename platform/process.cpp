// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/process.h"

#include "platform/errors.h"

#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class ChildProcess final : public RunningProcess {
public:
    explicit ChildProcess(pid_t id) : mID(id) {}
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    /// A child that still runs is left to itself; it is collected when this program ends.
    ~ChildProcess() override { Poll(); }

    int ExitCode() override {
        Poll();
        return mExitCode;
    }

private:
    void Poll() {
        // Its number may belong to another process once it has been collected.
        if (mExitCode != kStillActive)
            return;
        int status = 0;
        const pid_t ended = waitpid(mID, &status, WNOHANG);
        if (ended == 0)
            return;
        if (ended < 0)
            mExitCode = kUnknown;
        else
            mExitCode = WIFEXITED(status) ? WEXITSTATUS(status) : kKilled + WTERMSIG(status);
    }

    /// A shell's number for a program that a signal ended.
    static constexpr int kKilled = 128;
    /// Somebody else collected the child, so that its status is lost; it has ended all the same.
    static constexpr int kUnknown = -1;

    pid_t mID;
    int mExitCode = kStillActive;
};

} // namespace

std::unique_ptr<RunningProcess> SystemProcesses::Shell(const std::string& path,
                                                       const std::vector<std::string>& arguments) {
    std::vector<std::string> texts{path};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);

    pid_t id = 0;
    const int errorCode = posix_spawn(&id, path.c_str(), nullptr, nullptr, pointers.data(), environ);
    if (errorCode != 0)
        RaiseSystem(errorCode, path);
    return std::make_unique<ChildProcess>(id);
}
