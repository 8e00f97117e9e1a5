// SPDX-License-Identifier: GPL-3.0-or-later
// The Import dialog: asks for a folder of inventory files and imports it, with one bar for the files and one
// for the parts of the file in hand. It is modal; whoever makes it runs it by exec. Unless it is cancelled,
// the folder is remembered when it closes, whether or not it was imported.
#pragma once

#include "core/Pace.h"
#include "import/ImportCommands.h"
#include "import/cSinImport.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QProgressBar;

class frmImport final : public QDialog, private ImportEvents {
    Q_OBJECT
public:
    explicit frmImport(const ImportContext& context);
    ~frmImport() override;

    void done(int result) override;
    /// The Cancel button, and the Escape key with it.
    void reject() override;

protected:
    /// By the frame, which does not cancel.
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildControls();
    void Load();
    void Browse();
    void Import();

    void ShowSteps();
    void DoneSoFarUsers(const std::string& name, double percent) override;
    void DoneSoFarUser(const std::string& name, double percent) override;
    void StillWorking() override;

    const ImportContext& mContext;
    struct Step {
        std::string name;
        double percent = 0;
    };
    bool mIsCancelled = false;
    Step mFile;
    Step mSection;
    Pace mPace;

    QLineEdit* TXTImportDir = nullptr;
    QLabel* LBLName = nullptr;
    QProgressBar* PBImport = nullptr;
    QLabel* LBLNameUser = nullptr;
    QProgressBar* PBImportUser = nullptr;
};
