// SPDX-License-Identifier: GPL-3.0-or-later
// The state of the open database and where its folders are. Shown modally; reads no table, only the
// process-wide values.
#pragma once

#include "platform/clock.h"

#include <QDialog>

class frmSystemProp final : public QDialog {
    Q_OBJECT
public:
    /// Raises error 13 where gLastImportDate is neither "n/a" nor a date; it can be "N/A" where a machine
    /// has no logon date.
    frmSystemProp(QWidget* parent, const Clock& clock);
    ~frmSystemProp() override;
};
