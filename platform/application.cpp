// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/application.h"

#include "platform/prompts.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QPointer>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <cstdlib>
#include <iostream>
#include <new>
#include <utility>

namespace {

struct FailureState {
    Prompts* prompts = nullptr;
    std::function<void()> uncover;
    std::function<void()> cleanup;
    bool hasFailed = false;
};

FailureState& State() {
    static FailureState state;
    return state;
}

/// The exception that is being handled, as the system's own.
RunTimeError Caught() {
    try {
        throw;
    } catch (const RunTimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return {Errors::kOutOfMemory, "Out of memory"};
    } catch (const std::exception& error) {
        return {Errors::kInvalidCall, error.what()};
    } catch (...) {
        return {Errors::kInvalidCall, "Invalid procedure call or argument"};
    }
}

[[noreturn]] void ShowAndEnd(const RunTimeError& error) {
    const std::string text = "Run-time error '" + std::to_string(error.number) + "':\n\n" + error.description;
    std::cerr << text << std::endl;
    try {
        if (State().uncover)
            State().uncover();
        if (State().prompts != nullptr)
            State().prompts->MsgBox(text, MsgBoxStyle::kCritical, "Velmora");
    } catch (...) {
        std::cerr << "The failure could not be shown in a box." << std::endl;
    }
    try {
        if (State().cleanup)
            State().cleanup();
    } catch (...) {
        std::cerr << "The clean-up failed." << std::endl;
    }
    // Event loops and handlers of the toolkit are on the stack, and can be neither thrown through nor
    // destroyed.
    std::_Exit(EXIT_FAILURE);
}

/// The toolkit's dialogs keep their state in the user's configuration folder. They would make a home that is
/// missing, and do without where no folder can be.
void LeaveMissingHomeAlone() {
    const QFileInfo folder(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    if (!folder.dir().exists())
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
}

} // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    LeaveMissingHomeAlone();
    setApplicationName(QStringLiteral("Velmora"));
    setQuitOnLastWindowClosed(false);
}

bool Application::notify(QObject* receiver, QEvent* event) {
    const QEvent::Type type = event->type();
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        // Events go on behind the box of a failure. What fails among them changes nothing: the program ends.
        if (State().hasFailed)
            return false;
        const RunTimeError error = Caught();
        // No box can open within a paint event.
        if (type != QEvent::Paint)
            Fail(error);
        State().hasFailed = true;
        QTimer::singleShot(0, this, [error] { ShowAndEnd(error); });
        return false;
    }
}

int Application::Guard(const std::function<int()>& body) {
    try {
        return body();
    } catch (...) {
        Fail(Caught());
    }
}

void Application::ShowFailuresBy(Prompts* prompts) {
    State().prompts = prompts;
}

void Application::BeforeShowing(std::function<void()> uncover) {
    State().uncover = std::move(uncover);
}

void Application::AfterShowing(std::function<void()> cleanup) {
    State().cleanup = std::move(cleanup);
}

void Application::Fail(const RunTimeError& error) {
    if (State().hasFailed)
        std::_Exit(EXIT_FAILURE);
    State().hasFailed = true;
    ShowAndEnd(error);
}

void Application::LetEventsThrough() {
    processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Application::LetAppear(QWidget& window) {
    constexpr int kLongestWait = 250; // milliseconds
    const QDeadlineTimer deadline(kLongestWait);
    // What is let through may end it.
    const QPointer<QWidget> shown(&window);
    do
        LetEventsThrough();
    while (shown && shown->isVisible() && !shown->windowHandle()->isExposed() && !deadline.hasExpired());
    if (shown)
        shown->repaint();
}

std::string CommandLine(int argc, const char* const* argv) {
    std::string line;
    for (int i = 1; i < argc; ++i) {
        if (i > 1)
            line += ' ';
        line += argv[i];
    }
    return line;
}
