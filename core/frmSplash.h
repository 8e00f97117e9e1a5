// SPDX-License-Identifier: GPL-3.0-or-later
// The start-up's picture: a top-most window without a frame, cut along the edge of its picture. It belongs to
// itself: a click or its timer unloads it at any time, so nobody keeps a pointer to it; ask Loaded() each
// time.
#pragma once

#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <string>

class QLabel;

class frmSplash final : public QWidget {
    Q_OBJECT

public:
    /// Loads the window, hidden. Paint and timer events are let through meanwhile.
    frmSplash();
    ~frmSplash() override;

    /// The splash, or null when it is gone.
    static frmSplash* Loaded();

    /// The text of lblStatus; shown at once.
    void Status(const std::string& text);
    /// Starts or stops the timer that unloads the window after five seconds.
    void TimerEnabled(bool isEnabled);
    /// Hides the window and takes it out of the registry; it is destroyed when no handler of it runs.
    void Unload();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QPixmap mPicture;
    QLabel* mStatus = nullptr;
    QTimer mTimer{this};
};
