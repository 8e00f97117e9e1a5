// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/FakeProcesses.h"

#include <utility>

namespace {

class FakeProcess final : public RunningProcess {
public:
    explicit FakeProcess(std::vector<int> exitCodes) : mExitCodes(std::move(exitCodes)) {}

    int ExitCode() override {
        const int code = mExitCodes.at(mNext);
        if (mNext + 1 < mExitCodes.size())
            ++mNext;
        return code;
    }

private:
    std::vector<int> mExitCodes;
    std::size_t mNext = 0;
};

} // namespace

std::unique_ptr<RunningProcess> FakeProcesses::Shell(const std::string& path,
                                                     const std::vector<std::string>& arguments) {
    if (failure)
        throw RunTimeError(*failure);
    starts.push_back({path, arguments});
    if (onStart)
        onStart(starts.back());
    return std::make_unique<FakeProcess>(exitCodes);
}
