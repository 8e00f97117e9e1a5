// SPDX-License-Identifier: GPL-3.0-or-later
// F1 in a dialog opens the help at the page that explains it. A window names its page where it is built;
// one that names none has that of the window it belongs to, and a message box has the page of all messages.
#pragma once

#include <QObject>

#include <functional>
#include <string>

class QWidget;

/// Names the page, "import.html#window", that F1 opens in `window`.
void HelpTopic(QWidget& window, const char* page);
/// The page of the window that `widget` stands in; empty where neither it nor an owner of it has one.
std::string HelpTopicOf(const QWidget& widget);

/// Watches the program for as long as it lives.
class HelpKey final : public QObject {
public:
    /// Called with the page, or with an empty text for a dialog without one.
    using Show = std::function<void(const std::string& page)>;
    HelpKey(Show show, QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Answer(const QWidget& widget);

    Show mShow;
};
