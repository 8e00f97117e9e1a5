// SPDX-License-Identifier: GPL-3.0-or-later
// A machine made of files below a temporary folder, which goes with the object. Paths are the
// machine's own, such as "/proc/cpuinfo".
#pragma once

#include "collector/Sources.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace collector {

class FakeMachine {
public:
    FakeMachine() {
        std::string path = (std::filesystem::temp_directory_path() / "machine-XXXXXX").string();
        if (::mkdtemp(path.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        mRoot = path;
    }
    ~FakeMachine() {
        std::error_code error;
        std::filesystem::remove_all(mRoot, error);
    }
    FakeMachine(const FakeMachine&) = delete;
    FakeMachine& operator=(const FakeMachine&) = delete;
    FakeMachine(FakeMachine&&) = delete;
    FakeMachine& operator=(FakeMachine&&) = delete;

    void File(const std::string& path, const std::string& text) const {
        std::filesystem::create_directories(At(path).parent_path());
        std::ofstream(At(path), std::ios::binary) << text;
    }
    void Folder(const std::string& path) const { std::filesystem::create_directories(At(path)); }

    /// `target` as the link holds it; the kernel's are relative.
    void Link(const std::string& path, const std::string& target) const {
        std::filesystem::create_directories(At(path).parent_path());
        std::filesystem::create_symlink(target, At(path));
    }
    std::filesystem::path At(const std::string& path) const { return mRoot.string() + path; }

    /// The machine without any programs to run.
    Sources Facts() const {
        return Facts([](const CommandLine&, std::chrono::milliseconds) { return std::string(); });
    }
    Sources Facts(ProgramRunner runner) const { return Sources(mRoot, std::move(runner)); }

private:
    std::filesystem::path mRoot;
};

} // namespace collector
