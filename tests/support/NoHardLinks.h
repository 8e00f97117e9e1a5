// SPDX-License-Identifier: GPL-3.0-or-later
// Runs something as on a disk without hard links, such as a memory stick's. The system's own filter refuses
// them to one thread, and to the processes that it starts, for good; so that is a thread of its own.
#pragma once

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <thread>

inline bool RefuseHardLinks() {
    constexpr unsigned kRefusal = SECCOMP_RET_ERRNO | EPERM;
    // Each jump passes over as many statements as its last numbers say, where the call is that one or not.
    std::array<sock_filter, 5> filter = {{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
#ifdef __NR_link
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_link, 1, 0),
#else
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_linkat, 1, 0),
#endif
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_linkat, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, kRefusal),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

inline void WithoutHardLinks(const std::function<void()>& work) {
    std::thread([&work] {
        ASSERT_TRUE(RefuseHardLinks());
        work();
    }).join();
}
