// SPDX-License-Identifier: GPL-3.0-or-later
// A machine made of files below a temporary folder, which goes with the object. Paths are the
// machine's own, such as "/proc/cpuinfo".
#pragma once

#include "collector/Sources.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <string>

namespace collector {

class FakeMachine {
public:
    void File(const std::string& path, const std::string& text) const { mFolder.WriteFile(path, text); }
    void Folder(const std::string& path) const { std::filesystem::create_directories(At(path)); }

    /// `target` as the link holds it; the kernel's are relative.
    void Link(const std::string& path, const std::string& target) const {
        std::filesystem::create_directories(At(path).parent_path());
        std::filesystem::create_symlink(target, At(path));
    }
    std::filesystem::path At(const std::string& path) const { return mFolder.Path() + path; }

    /// The machine without any programs to run.
    Sources Facts() const {
        return Facts([](const CommandLine&, std::chrono::milliseconds) { return std::string(); });
    }
    Sources Facts(ProgramRunner runner) const { return Sources(mFolder.Path(), std::move(runner)); }

private:
    TemporaryFolder mFolder;
};

} // namespace collector
