// SPDX-License-Identifier: GPL-3.0-or-later
// While it lives no file of the process can grow beyond a limit: writes fail as on a full disk, only with
// another error number.
#pragma once

#include <sys/resource.h>

#include <csignal>

class SmallFiles {
public:
    explicit SmallFiles(rlim_t bytes) : mHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &mBefore);
        const rlimit limit{bytes, mBefore.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFiles() {
        setrlimit(RLIMIT_FSIZE, &mBefore);
        std::signal(SIGXFSZ, mHandler);
    }
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;

private:
    void (*mHandler)(int);
    rlimit mBefore{};
};
