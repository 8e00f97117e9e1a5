// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/application.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // No display is needed, and no window appears on the developer's, unless one is asked for.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    // A test of a failure forks within a program that has threads.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const Application application(argc, argv);
    return RUN_ALL_TESTS();
}
