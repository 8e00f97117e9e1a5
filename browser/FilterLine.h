// SPDX-License-Identifier: GPL-3.0-or-later
// The line below a list in which a text is typed that its rows must hold. Hidden until it is opened; Escape
// asks for its closing, Enter and the down key go on to the rows.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

class FilterLine final : public QWidget {
    Q_OBJECT
public:
    explicit FilterLine(QWidget* parent);

    /// Shows the line and takes the focus.
    void Open();
    /// Empties and hides the line.
    void Close();
    /// How many rows are left of how many; shown behind the text.
    void ShowCount(std::size_t left, std::size_t all);

signals:
    void TextChanged(const QString& text);
    /// By Escape.
    void Closed();
    /// The focus is to go on to the rows.
    void Left();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* mText;
    QLabel* mCount;
};
