// SPDX-License-Identifier: GPL-3.0-or-later
// The print dialog of a machine without printers: which pages go to which PDF file.
#pragma once

#include "platform/report/Printing.h"

#include <QDialog>

class Prompts;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace report {

class PDFJobDialog final : public QDialog {
    Q_OBJECT

public:
    /// `pages` is what the report has.
    PDFJobDialog(Prompts& prompts, int pages, QWidget* owner);

    /// Shows the dialog until it is answered; false on cancel.
    bool Ask(PrintJob& job);

private:
    void Browse();
    void EnableOK();
    void accept() override;

    Prompts& mPrompts;
    QLineEdit* mFile;
    QRadioButton* mAll;
    QRadioButton* mRange;
    QSpinBox* mFirst;
    QSpinBox* mLast;
    QPushButton* mOK = nullptr;
};

/// Asks whether a file that is there may be replaced; true where none is.
bool MayReplace(Prompts& prompts, const std::string& path);

} // namespace report
