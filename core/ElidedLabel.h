// SPDX-License-Identifier: GPL-3.0-or-later
// A line of plain text that takes the room that there is: where it is longer, it ends in dots and its tool
// tip tells the rest. For names of files and machines, which may be of any length.
#pragma once

#include <QLabel>

class ElidedLabel final : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString Elided() const;
};
