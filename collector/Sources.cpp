// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Sources.h"

#include "collector/Text.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <future>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

namespace collector {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kOutputLimit = 4U << 20U;

class Descriptor {
public:
    explicit Descriptor(int number) : mNumber(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;

    int Number() const { return mNumber; }
    void Close() {
        if (mNumber >= 0)
            ::close(mNumber);
        mNumber = -1;
    }

private:
    int mNumber;
};

// Reads what `descriptor` holds into `text`, one piece. False at its end and on failure.
bool ReadPiece(int descriptor, std::string& text, std::size_t limit) {
    std::array<char, 65536> piece{};
    const std::size_t wanted = std::min(piece.size(), limit - text.size());
    const ssize_t got = wanted == 0 ? 0 : ::read(descriptor, piece.data(), wanted);
    if (got <= 0)
        return false;
    text.append(piece.data(), static_cast<std::size_t>(got));
    return true;
}

// False when the time is up before the program has closed its output, or the output is too long: what is cut
// somewhere would be read as whole.
bool ReadUntil(int descriptor, Clock::time_point deadline, std::string& output) {
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd waiting{descriptor, POLLIN, 0};
        const int ready = left.count() <= 0 ? 0 : ::poll(&waiting, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0 || output.size() == kOutputLimit)
            return false;
        if (!ReadPiece(descriptor, output, kOutputLimit))
            return true;
    }
}

// Waits for a program that has closed its output. False when it goes on past the deadline.
bool HasEnded(pid_t program, Clock::time_point deadline, int& status) {
    while (::waitpid(program, &status, WNOHANG) == 0) {
        if (Clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

// Starts `command`, -1 where it can't be, from the system's own folders: whoever starts the collector must
// not choose by his PATH what it runs. It is in a process group of its own, so that its children can be
// killed with it.
pid_t Spawn(const CommandLine& command, int output) {
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str())); // posix_spawn does not write to them
    arguments.push_back(nullptr);
    std::string path = "PATH=/usr/bin:/bin";
    std::string language = "LC_ALL=C";
    std::string printServer = "CUPS_SERVER=/run/cups/cups.sock";
    const std::array<char*, 4> environment = {path.data(), language.data(), printServer.data(), nullptr};

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);

    pid_t program = -1;
    for (const char* const place : {"/usr/bin/", "/bin/"}) {
        const std::string file = place + command.front();
        if (::posix_spawn(&program, file.c_str(), &actions, &attributes, arguments.data(),
                          environment.data()) == 0)
            break;
        program = -1;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return program;
}

} // namespace

std::string RunProgram(const CommandLine& command, std::chrono::milliseconds timeLimit) {
    std::array<int, 2> ends{};
    if (command.empty() || ::pipe2(ends.data(), O_CLOEXEC) != 0)
        return {};
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    const auto deadline = Clock::now() + timeLimit;
    const pid_t program = Spawn(command, writing.Number());
    writing.Close();
    if (program < 0)
        return {};

    std::string output;
    int status = 0;
    if (!ReadUntil(reading.Number(), deadline, output) || !HasEnded(program, deadline, status)) {
        ::kill(-program, SIGKILL);
        ::waitpid(program, &status, 0);
        return {};
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? output : std::string();
}

Sources::Sources(std::filesystem::path root, ProgramRunner runner) : mRunner(std::move(runner)) {
    std::error_code error;
    mRoot = std::filesystem::canonical(root, error);
    if (error)
        mRoot = std::move(root);
}

std::filesystem::path Sources::At(std::string_view path) const {
    return mRoot / std::filesystem::path(path).relative_path();
}

std::string Sources::Read(std::string_view path, std::size_t limit) const {
    // Not to wait for a writer, should a pipe stand in the file's place.
    const Descriptor file(::open(At(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat kind {};
    if (file.Number() < 0 || ::fstat(file.Number(), &kind) != 0 || !S_ISREG(kind.st_mode))
        return {};
    std::string text;
    while (ReadPiece(file.Number(), text, limit)) {
    }
    return text;
}

std::string Sources::ReadLine(std::string_view path) const {
    const std::string text = Read(path, 4096);
    return std::string(Trimmed(std::string_view(text).substr(0, text.find('\n'))));
}

std::uint64_t Sources::ReadHexadecimal(std::string_view path) const {
    return WholeNumber(ReadLine(path), 16).value_or(0);
}

bool Sources::Exists(std::string_view path) const {
    std::error_code error;
    return std::filesystem::exists(At(path), error);
}

std::vector<std::string> Sources::List(std::string_view folder) const {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(At(folder), error), end; !error && entry != end;
         entry.increment(error))
        names.push_back(entry->path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string Sources::Resolved(std::string_view path) const {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(At(path), error);
    if (error)
        return {};
    const std::filesystem::path relative = target.lexically_relative(mRoot);
    if (relative.empty() || *relative.begin() == "..")
        return {};
    return std::string("/").append(relative.string());
}

std::optional<Space> Sources::SpaceOf(std::string_view path) const {
    constexpr int mostUnanswered = 3;
    if (mUnanswered >= mostUnanswered)
        return std::nullopt;
    auto promise = std::make_shared<std::promise<std::optional<Space>>>();
    std::future<std::optional<Space>> answer = promise->get_future();
    const auto ask = [promise, place = At(path)] {
        struct statvfs figures {};
        if (::statvfs(place.c_str(), &figures) != 0)
            return promise->set_value(std::nullopt);
        promise->set_value(Space{.size = std::uint64_t{figures.f_blocks} * figures.f_frsize,
                                 .free = std::uint64_t{figures.f_bavail} * figures.f_frsize});
    };
    try {
        // Left behind when it blocks; it ends with the program.
        std::thread(ask).detach();
    } catch (const std::system_error&) {
        return std::nullopt; // no thread to be had
    }
    if (answer.wait_for(std::chrono::seconds(3)) != std::future_status::ready) {
        ++mUnanswered;
        return std::nullopt;
    }
    return answer.get();
}

std::string Sources::Run(const CommandLine& command, std::chrono::milliseconds timeLimit) const {
    return mRunner(command, timeLimit);
}

} // namespace collector
