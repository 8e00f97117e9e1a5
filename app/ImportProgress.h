// SPDX-License-Identifier: GPL-3.0-or-later
// Tells the user of the start-up's import: in the splash as long as it is there, and after that in a small
// window of its own, which goes with this object. Lets paint and timer events through, with the user's
// input held back, so that the desktop never takes the program for hung.
#pragma once

#include "import/cSinImport.h"

#include <QElapsedTimer>

#include <memory>

class QLabel;
class QProgressBar;
class QWidget;

class ImportProgress final : public ImportEvents {
public:
    ImportProgress();
    ~ImportProgress() override;
    ImportProgress(const ImportProgress&) = delete;
    ImportProgress& operator=(const ImportProgress&) = delete;

    void DoneSoFarUsers(const std::string& name, double percent) override;
    void DoneSoFarUser(const std::string& name, double percent) override;
    void StillWorking() override;

private:
    void Show();
    void ShowInWindow();
    void MakeWindow();

    QElapsedTimer mSinceShown;
    std::string mName;
    double mPercent = 0;
    std::unique_ptr<QWidget> mWindow;
    QLabel* mLabel = nullptr;
    QProgressBar* mBar = nullptr;
};
