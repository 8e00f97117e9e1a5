// SPDX-License-Identifier: GPL-3.0-or-later
// What a piece of work fails with.
#pragma once

#include "platform/errors.h"

#include <gtest/gtest.h>

/// The number of the run-time error that `work` raises, 0 for none. An error without words fails the test.
template <class Work>
int ErrorOf(const Work& work) {
    try {
        work();
    } catch (const RunTimeError& failure) {
        EXPECT_FALSE(failure.description.empty()) << failure.number;
        return failure.number;
    }
    return 0;
}
