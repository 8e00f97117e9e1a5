// SPDX-License-Identifier: GPL-3.0-or-later
// The about window: version, licence and the libraries that the console stands on. Shown modally.
#pragma once

#include <QDialog>

class frmAbout final : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent);
};
