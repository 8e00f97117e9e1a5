// SPDX-License-Identifier: GPL-3.0-or-later
// The line under the pages in which a reader types what to find. Enter goes on to the next place, with Shift
// to the one before.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace report {

class FindBar final : public QWidget {
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent);

    /// Shows the line, ready to type in.
    void Open(const QString& initial);
    QString Sought() const;
    /// A note beside the text: how far a search is, that nothing was found.
    void Note(const QString& text, bool isWarning = false);

signals:
    void Wanted(bool isForward);
    void Changed();
    void Closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* mText;
    QToolButton* mPrevious;
    QToolButton* mNext;
    QLabel* mNote;
};

} // namespace report
