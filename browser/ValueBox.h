// SPDX-License-Identifier: GPL-3.0-or-later
// A value that is read and copied but not changed: it looks like a label, takes the focus like a text box,
// and shows what a client PC wrote as plain text. Where it is too narrow dots stand for what is cut, and its
// tip tells it.
#pragma once

#include <QLineEdit>

class QGridLayout;
class QLabel;

class ValueBox final : public QLineEdit {
public:
    ValueBox(const QString& text, QWidget* parent);

    /// Shows the text from its beginning.
    void Show(const QString& text);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// Where the text stands.
    QRect Room() const;
    bool IsCut() const;
    void PaintDots(Qt::Alignment side, int position);
};

/// Adds `box`, under the object name `name`, to the row of `grid`, behind a label that names it. Returns the
/// label.
QLabel* AddValue(QGridLayout& grid, int row, const QString& caption, const QString& name, ValueBox& box);
