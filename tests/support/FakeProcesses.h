// SPDX-License-Identifier: GPL-3.0-or-later
// Programs that are only noted, and that end when the test says so.
#pragma once

#include "platform/errors.h"
#include "platform/process.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class FakeProcesses final : public Processes {
public:
    struct Start {
        std::string path;
        std::vector<std::string> arguments;
    };

    std::unique_ptr<RunningProcess> Shell(const std::string& path,
                                          const std::vector<std::string>& arguments) override;

    /// What was started, in order.
    std::vector<Start> starts;
    /// What each program answers to ExitCode, call by call; the last one stays.
    std::vector<int> exitCodes{0};
    /// Runs when a program is started: it can write the files that the real one would.
    std::function<void(const Start&)> onStart;
    /// Raised instead of starting anything.
    std::optional<RunTimeError> failure;
};
