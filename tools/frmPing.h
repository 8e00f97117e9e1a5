// SPDX-License-Identifier: GPL-3.0-or-later
// The window that pings every address of the database, one after the other, and lists the results. It is
// modal; whoever makes it runs it by exec. It sweeps anew each time it becomes active.
// Events run within a sweep, so the window can be closed, and even destroyed, in the middle of one.
#pragma once

#include "tools/PingCommands.h"

#include <QDialog>

#include <string>

class PingList;
class QLabel;
class QPushButton;
class QStatusBar;

class frmPing final : public QDialog {
    Q_OBJECT

public:
    explicit frmPing(const PingContext& context);
    ~frmPing() override;

    /// Pings one address: "OK       :12 ms" or "FAILED   :". The window may be gone when it returns.
    std::string PingEm(const std::string& theIP);
    /// Gives the list all the room above the buttons and the status bar.
    void SizeControls();

    /// Ends a sweep at its next yield. Every way of closing the window comes through here.
    void done(int result) override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void BuildControls();
    void BuildStatusBar();
    void Load();
    void Sweep();
    void PingAll();
    void TellForbidden();

    PingContext mContext;
    bool mIsSweeping = false;
    bool mIsStopped = false;

    PingList* lstPing = nullptr;
    QWidget* picBut = nullptr;
    QPushButton* btnRefresh = nullptr;
    QPushButton* cmdOK = nullptr;
    QStatusBar* sbStatusBar = nullptr;
    QLabel* mStatusPanel = nullptr;
    QLabel* mForbiddenPanel = nullptr;
};
