// SPDX-License-Identifier: GPL-3.0-or-later
// Programs that the system starts. Nothing goes through a shell: a path is a path, whatever it holds.
#pragma once

#include <memory>
#include <string>
#include <vector>

class RunningProcess {
public:
    /// What GetExitCodeProcess gives for a process that has not ended.
    static constexpr int kStillActive = 259;

    virtual ~RunningProcess() = default;
    /// kStillActive, or the status that the process ended with: 128 and the number of the signal that ended
    /// it, -1 where the status can no longer be known.
    virtual int ExitCode() = 0;
};

class Processes {
public:
    virtual ~Processes() = default;
    /// Starts the program without waiting. Raises error 53 where there is none, 70 where it may not be run,
    /// 75 where the file is no program.
    virtual std::unique_ptr<RunningProcess> Shell(const std::string& path,
                                                  const std::vector<std::string>& arguments) = 0;
};

class SystemProcesses final : public Processes {
public:
    std::unique_ptr<RunningProcess> Shell(const std::string& path,
                                          const std::vector<std::string>& arguments) override;
};
