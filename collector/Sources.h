// SPDX-License-Identifier: GPL-3.0-or-later
// Where facts come from: the files below a root folder, "/" on a real machine, and the few programs
// that have to be asked. Nothing here fails: what is missing, forbidden, too slow or no plain file
// reads as empty. Paths are absolute as seen from the root. Lists are sorted by name.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace collector {

/// A file system's size and what is free for the user, in bytes.
struct Space {
    std::uint64_t size = 0;
    std::uint64_t free = 0;
};

using CommandLine = std::vector<std::string>;

/// What a program writes on its standard output; empty when it can't be run, fails, or is not done
/// within the time limit (it is killed then).
using ProgramRunner = std::function<std::string(const CommandLine&, std::chrono::milliseconds)>;

/// The real runner: a name in /usr/bin or /bin, no shell, a fixed environment with untranslated messages.
/// Empty, too, for a program that writes more than 4 MB.
std::string RunProgram(const CommandLine& command, std::chrono::milliseconds timeLimit);

class Sources {
public:
    explicit Sources(std::filesystem::path root = "/", ProgramRunner runner = RunProgram);

    /// At most the first `limit` bytes of a plain file.
    std::string Read(std::string_view path, std::size_t limit = kUsualLimit) const;

    /// A one-line file's text, trimmed.
    std::string ReadLine(std::string_view path) const;

    /// The number in a one-line file, with or without "0x"; 0 where there is none.
    std::uint64_t ReadHexadecimal(std::string_view path) const;

    bool Exists(std::string_view path) const;

    /// The names in a folder.
    std::vector<std::string> List(std::string_view folder) const;

    /// The path that `path` leads to through all links, as seen from the root; empty when it leads
    /// nowhere or out of the root.
    std::string Resolved(std::string_view path) const;

    /// The file system behind `path`. A server that is gone would block the question for ever, so it
    /// is given up after three seconds, and after three such failures nothing is asked any more.
    std::optional<Space> SpaceOf(std::string_view path) const;

    std::string Run(const CommandLine& command, std::chrono::milliseconds timeLimit) const;

    static constexpr std::size_t kUsualLimit = 1U << 20U;

private:
    std::filesystem::path At(std::string_view path) const;

    std::filesystem::path mRoot;
    ProgramRunner mRunner;
    mutable int mUnanswered = 0;
};

} // namespace collector
