// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Aside.h"

#include <chrono>
#include <future>
#include <system_error>

namespace {

bool gRuns = false;

class Running {
public:
    Running() { gRuns = true; }
    ~Running() { gRuns = false; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
};

} // namespace

void RunAside(const std::function<void()>& call, const std::function<void()>& wait) {
    constexpr std::chrono::milliseconds kInterval{20};
    if (!wait || gRuns)
        return call();
    std::future<void> done;
    try {
        done = std::async(std::launch::async, call);
    } catch (const std::system_error&) {
        return call();
    }
    {
        const Running running;
        while (done.wait_for(kInterval) != std::future_status::ready)
            wait();
    }
    done.get();
}

bool RunsAside() {
    return gRuns;
}
