// SPDX-License-Identifier: GPL-3.0-or-later
// The small top-most window that stands while a report or an import is at work. It belongs to itself, like
// the splash: it is unloaded through the registry or by its frame, so nobody keeps a pointer to it.
#pragma once

#include <QWidget>

class frmCompiling final : public QWidget {
    Q_OBJECT

public:
    /// Loads the window, hidden.
    frmCompiling();
    ~frmCompiling() override;

    /// Shows the window and waits, a quarter of a second at most, until it is painted: who shows it is about
    /// to be busy. User input is held back.
    void ShowAndPaint();
    void Unload();

protected:
    void closeEvent(QCloseEvent* event) override;
};
