// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/ProgressWindow.h"

#include <QCoreApplication>

#include <limits>

namespace report {

namespace {

constexpr int kSteps = 1000;
constexpr int kEventInterval = 40; // milliseconds
constexpr int kPatience = 400;     // milliseconds

} // namespace

ProgressWindow::ProgressWindow(QWidget* owner, const QString& text)
    : mWindow(new QProgressDialog(text, QStringLiteral("Cancel"), 0, kSteps, owner)) {
    mWindow->setObjectName(QStringLiteral("Progress"));
    mWindow->setWindowTitle(QStringLiteral("Velmora"));
    mWindow->setWindowModality(Qt::ApplicationModal);
    mWindow->setAutoClose(false);
    mWindow->setAutoReset(false);
    // It is shown by Step: by itself it would never show for work of unknown length.
    mWindow->setMinimumDuration(std::numeric_limits<int>::max());
    mSinceBegun.start();
    mSinceEvents.start();
}

ProgressWindow::~ProgressWindow() {
    delete mWindow;
}

bool ProgressWindow::Step(double share, const QString& text) {
    if (mWindow.isNull())
        return false;
    if (mSinceEvents.elapsed() < kEventInterval)
        return !mWindow->wasCanceled();
    mSinceEvents.start();
    if (share < 0)
        mWindow->setMaximum(0);
    if (!text.isEmpty())
        mWindow->setLabelText(text);
    if (mSinceBegun.elapsed() >= kPatience)
        mWindow->show();
    if (share >= 0)
        mWindow->setValue(static_cast<int>(share * kSteps));
    if (mWindow.isNull())
        return false;
    // Until the window shows, nobody could answer input but the window beneath it.
    QCoreApplication::processEvents(mWindow->isVisible() ? QEventLoop::AllEvents
                                                         : QEventLoop::ExcludeUserInputEvents);
    return !mWindow.isNull() && !mWindow->wasCanceled();
}

} // namespace report
