// SPDX-License-Identifier: GPL-3.0-or-later
// Each failure runs in a program of its own, which must end with exit status 1 and have said why.
#include "platform/application.h"
#include "tests/support/QueuedPrompts.h"

#include <QEventLoop>
#include <QPaintEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <iostream>
#include <new>
#include <stdexcept>

namespace {

/// Writes its boxes to the error stream, and does what a test wants while one is open.
class WrittenPrompts final : public QueuedPrompts {
public:
    explicit WrittenPrompts(std::function<void()> meanwhile = {}) : mMeanwhile(std::move(meanwhile)) {}
    MsgBoxAnswer MsgBox(const std::string& text, int style, const std::string& title) override {
        std::cerr << "BOX " << title << "/" << style << "/" << text << std::endl;
        if (mMeanwhile)
            mMeanwhile();
        std::cerr << "READ" << std::endl;
        return MsgBoxAnswer::OK;
    }

private:
    std::function<void()> mMeanwhile;
};

void Cleanup() {
    std::cerr << "CLOSED" << std::endl;
}

/// Runs the event loop until the failure of a timer's handler ends the program.
void FailInEvent(const std::function<void()>& handler, WrittenPrompts& prompts) {
    Application::ShowFailuresBy(&prompts);
    Application::AfterShowing(Cleanup);
    QTimer::singleShot(0, qApp, handler);
    QTimer::singleShot(5000, qApp, [] { std::_Exit(99); });
    QEventLoop().exec();
}

void FailInEvent(const std::function<void()>& handler) {
    WrittenPrompts prompts;
    FailInEvent(handler, prompts);
}

constexpr const char* kNotFound =
    "BOX Velmora/16/Run-time error '53':\n\nFile not found: Template.sdb\nREAD\nCLOSED";

TEST(ApplicationDeathTest, AFailureIsShownAndTheDatabaseClosedBeforeTheEnd) {
    EXPECT_EXIT(FailInEvent([] { Raise(Errors::kFileNotFound, "Template.sdb"); }), testing::ExitedWithCode(1),
                kNotFound);
    EXPECT_EXIT(FailInEvent([] { throw std::bad_alloc(); }), testing::ExitedWithCode(1),
                "Run-time error '7':\n\nOut of memory");
    EXPECT_EXIT(FailInEvent([] { throw std::logic_error("a fault of ours"); }), testing::ExitedWithCode(1),
                "Run-time error '5':\n\na fault of ours");
}

TEST(ApplicationDeathTest, AFailureInAClickWithinADialogsOwnLoopEndsTheProgramToo) {
    EXPECT_EXIT(FailInEvent([] {
                    QPushButton button;
                    QObject::connect(&button, &QPushButton::clicked,
                                     [] { Raise(Errors::kFileNotFound, "Template.sdb"); });
                    button.show();
                    QTimer::singleShot(0, &button, [&] { QTest::mouseClick(&button, Qt::LeftButton); });
                    QEventLoop().exec();
                }),
                testing::ExitedWithCode(1), kNotFound);
}

TEST(ApplicationDeathTest, AFailureWhilePaintingIsShownOnceThePaintingIsOver) {
    class Canvas final : public QWidget {
    protected:
        void paintEvent(QPaintEvent* /*event*/) override { Raise(Errors::kFileNotFound, "Template.sdb"); }
    };
    EXPECT_EXIT(FailInEvent([] {
                    Canvas canvas;
                    canvas.show();
                    QEventLoop().exec();
                }),
                testing::ExitedWithCode(1), kNotFound);
}

TEST(ApplicationDeathTest, ASecondFailureNeitherRecursesNorHidesTheFirst) {
    EXPECT_EXIT(
        {
            WrittenPrompts prompts([] {
                QTimer::singleShot(0, qApp, [] { throw std::logic_error("second"); });
                QTest::qWait(50);
            });
            FailInEvent([] { Raise(Errors::kFileNotFound, "Template.sdb"); }, prompts);
        },
        testing::ExitedWithCode(1), kNotFound);
    EXPECT_EXIT(
        {
            WrittenPrompts prompts([] { throw std::logic_error("the box itself"); });
            FailInEvent([] { Raise(Errors::kFileNotFound, "Template.sdb"); }, prompts);
        },
        testing::ExitedWithCode(1), "could not be shown.*\nCLOSED");
}

TEST(ApplicationDeathTest, TheStartUpIsGuardedLikeAHandler) {
    EXPECT_EQ(Application::Guard([] { return 3; }), 3);
    EXPECT_EXIT(Application::Guard([]() -> int { Raise(Errors::kFileNotFound, "Template.sdb"); }),
                testing::ExitedWithCode(1), "Run-time error '53'")
        << "without anyone to show it, it goes to the error stream";
}

TEST(CommandLine, IsTheRawTextOfTheArguments) {
    const char* const none[] = {"console"};
    EXPECT_EQ(CommandLine(1, none), "");
    const char* const several[] = {"console", "-style", "fusion", "\\CLEAR "};
    EXPECT_EQ(CommandLine(4, several), "-style fusion \\CLEAR ") << "the toolkit's own, and every blank";
}

} // namespace
