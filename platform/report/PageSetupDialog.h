// SPDX-License-Identifier: GPL-3.0-or-later
// Paper, orientation and margins of a report. Lengths show in the user's own unit, and are points outside.
#pragma once

#include "platform/report/Page.h"

#include <QDialog>

#include <array>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace report {

class PageSetupDialog final : public QDialog {
    Q_OBJECT

public:
    PageSetupDialog(const PageFormat& format, QWidget* owner);

    /// What the dialog says now.
    PageFormat Format() const;

private:
    void Check();

    QComboBox* mPaper;
    QRadioButton* mPortrait;
    QRadioButton* mLandscape;
    /// Left, top, right, bottom.
    std::array<QDoubleSpinBox*, 4> mMargins{};
    QLabel* mNote;
    QPushButton* mOK = nullptr;
    /// What nobody changes stays as it is: a box shows it rounded.
    PageFormat mInitial;
    int mInitialPaper = 0;
    std::array<double, 4> mInitialMargins{};
    double mUnit;
};

/// The paper of the user's country, A4 or Letter, turned for a landscape document.
PageFormat UsualFormat(bool isLandscape);

} // namespace report
