// SPDX-License-Identifier: GPL-3.0-or-later
// Shows the pages of a help file. Links to other pages are followed here; mail and web addresses go to the
// desktop, and any other address nowhere.
#pragma once

#include <QTextBrowser>

class Desktop;
class HelpBook;

class HelpPage final : public QTextBrowser {
    Q_OBJECT
public:
    /// Both must outlive this object, or its last page.
    HelpPage(const HelpBook& book, Desktop& desktop, QWidget* parent);

    /// Shows the page, or its place behind "#", unless it is on display.
    void Show(const QUrl& page);
    /// Selects the next place of `text` without regard to case, from the cursor on and then from the page's
    /// other end. False where the page does not hold it.
    bool Find(const QString& text, bool isBackward);
    /// Back to the size of text that a page is first shown in.
    void ResetZoom();

    QVariant loadResource(int type, const QUrl& name) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void Follow(const QUrl& link);
    void ColourLinks();

    const HelpBook& mBook;
    Desktop& mDesktop;
    QFont mFirstFont;
};
