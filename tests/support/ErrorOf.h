// SPDX-License-Identifier: GPL-3.0-or-later
// What a piece of work fails with.
#pragma once

#include "platform/errors.h"

#include <gtest/gtest.h>

/// The run-time error that `work` raises, one of number 0 for none. An error without words fails the test.
template <class Work>
RunTimeError FailureOf(const Work& work) {
    try {
        work();
    } catch (const RunTimeError& failure) {
        EXPECT_FALSE(failure.description.empty()) << failure.number;
        return failure;
    }
    return {0, {}};
}

/// The number of that error.
template <class Work>
int ErrorOf(const Work& work) {
    return FailureOf(work).number;
}
