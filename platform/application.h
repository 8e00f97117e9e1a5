// SPDX-License-Identifier: GPL-3.0-or-later
// The program object: the last net under every event handler. What no command has caught arrives here, is
// shown as "Run-time error 'N':" and ends the program with exit status 1, since its state is unknown then.
// It never ends the program because the last visible window has closed: FormRegistry decides that.
#pragma once

#include "platform/errors.h"

#include <QApplication>

#include <functional>
#include <string>

class Prompts;

class Application final : public QApplication {
    Q_OBJECT

public:
    Application(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;

    /// Runs `body` with the same net, for what runs before the event loop, and returns its result.
    static int Guard(const std::function<int()>& body);

    /// Where a failure is shown; null for the error stream alone. Must live as long as the program.
    static void ShowFailuresBy(Prompts* prompts);
    /// What is done before the box, such as taking away what would cover it.
    static void BeforeShowing(std::function<void()> uncover);
    /// What is done when the box has been answered, such as closing the database. Its own failure is ignored.
    static void AfterShowing(std::function<void()> cleanup);

    /// Shows the failure and ends the program with exit status 1, whatever is on the stack.
    [[noreturn]] static void Fail(const RunTimeError& error);

    /// Lets paint and timer events through, with user input held back: no command can start within another.
    static void LetEventsThrough();
    /// Lets them through until `window`, which was just shown, is on the screen, and paints it. A desktop
    /// that does not bring it there in a quarter of a second is not waited for.
    static void LetAppear(QWidget& window);
};

/// The raw arguments joined by one blank. To be taken before the Application is made, which removes some.
std::string CommandLine(int argc, const char* const* argv);
