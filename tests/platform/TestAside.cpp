// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Aside.h"
#include "platform/errors.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

namespace {

TEST(AsideTest, TheCallerWaitsWithOpenEyesAndLearnsOfFailures) {
    std::promise<void> seen;
    const std::thread::id own = std::this_thread::get_id();
    std::thread::id where;
    int waits = 0;
    int nested = 0;
    // Done only when the waiting caller has been let do something.
    RunAside(
        [&] {
            where = std::this_thread::get_id();
            seen.get_future().wait();
        },
        [&] {
            EXPECT_TRUE(RunsAside());
            if (++waits > 1)
                return;
            RunAside([&] { nested += std::this_thread::get_id() == own ? 1 : 0; }, [] {});
            seen.set_value();
        });
    EXPECT_GE(waits, 1);
    EXPECT_NE(where, own);
    EXPECT_EQ(nested, 1) << "one at a time is aside";
    EXPECT_FALSE(RunsAside());

    int failure = 0;
    for (const bool isAside : {true, false})
        try {
            RunAside([] { Raise(Errors::kDiskFull); }, isAside ? [] {} : std::function<void()>());
        } catch (const RunTimeError& error) {
            failure += error.number;
        }
    EXPECT_EQ(failure, 2 * Errors::kDiskFull);
    EXPECT_FALSE(RunsAside());
}

} // namespace
