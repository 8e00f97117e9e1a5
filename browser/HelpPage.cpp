// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/HelpPage.h"

#include "browser/HelpBook.h"
#include "platform/desktop.h"

HelpPage::HelpPage(const HelpBook& book, Desktop& desktop, QWidget* parent)
    : QTextBrowser(parent), mBook(book), mDesktop(desktop), mFirstFont(font()) {
    setOpenLinks(false);
    document()->setDocumentMargin(fontMetrics().height());
    connect(this, &QTextBrowser::anchorClicked, this, &HelpPage::Follow);
}

void HelpPage::Show(const QUrl& page) {
    if (page.isValid() && page != source())
        setSource(page, QTextDocument::HtmlResource);
}

void HelpPage::Follow(const QUrl& link) {
    if (link.scheme() == QLatin1String("qthelp"))
        Show(link);
    else if (link.scheme() == QLatin1String("https") || link.scheme() == QLatin1String("mailto"))
        mDesktop.Open(link.toString(QUrl::FullyEncoded).toStdString());
}

bool HelpPage::Find(const QString& text, bool isBackward) {
    const QTextDocument::FindFlags flags =
        isBackward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (text.isEmpty())
        return false;
    if (find(text, flags))
        return true;
    const QTextCursor before = textCursor();
    moveCursor(isBackward ? QTextCursor::End : QTextCursor::Start);
    if (find(text, flags))
        return true;
    setTextCursor(before);
    return false;
}

void HelpPage::ResetZoom() {
    setFont(mFirstFont);
}

QVariant HelpPage::loadResource(int /*type*/, const QUrl& name) {
    // All of the help file stands in one folder. What is not in it is not fetched from anywhere else.
    const QUrl address = HelpBook::FirstPage().resolved(name);
    return address.scheme() == QLatin1String("qthelp") ? mBook.Data(address) : QByteArray();
}
