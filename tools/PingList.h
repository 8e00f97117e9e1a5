// SPDX-License-Identifier: GPL-3.0-or-later
// A list of lines in a fixed-pitch font, so that what stands in columns lines up. Its rows can be selected
// and copied, and it follows its end for as long as the end is in sight.
// Lines may come faster than anybody reads, and painting each would take longer than the ping that it tells
// of: those of a twentieth of a second are shown together.
#pragma once

#include <QListWidget>
#include <QTimer>

#include <string>

class PingList final : public QListWidget {
    Q_OBJECT

public:
    explicit PingList(QWidget* parent);

    void AddLine(const std::string& text);
    /// Shows at once what was added.
    void ShowLines();
    void Clear();
    /// Drawn in a list without lines.
    void Hint(const QString& text);
    /// Puts the selected lines on the clipboard, in the list's order.
    void Copy() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QStringList mAdded;
    QTimer mShowTimer;
    QString mHint;
};
