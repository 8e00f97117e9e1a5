// SPDX-License-Identifier: GPL-3.0-or-later
// The window that stands over the program while pages go to a printer or file: how far they are, and Cancel.
// It holds all other input back, so nothing that is being printed can be closed meanwhile. It shows only when
// the work takes more than a moment.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QProgressDialog>

namespace report {

class ProgressWindow {
public:
    ProgressWindow(QWidget* owner, const QString& text);
    ~ProgressWindow();
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;

    /// Lets events through now and then; false when the user has cancelled. A share below 0 is unknown.
    bool Step(double share, const QString& text = {});

private:
    QPointer<QProgressDialog> mWindow;
    QElapsedTimer mSinceBegun;
    QElapsedTimer mSinceEvents;
};

} // namespace report
