// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/HelpPage.h"

#include "browser/HelpBook.h"
#include "platform/desktop.h"

#include <QEvent>

#include <algorithm>

HelpPage::HelpPage(const HelpBook& book, Desktop& desktop, QWidget* parent)
    : QTextBrowser(parent), mBook(book), mDesktop(desktop), mFirstFont(font()) {
    setOpenLinks(false);
    document()->setDocumentMargin(fontMetrics().height());
    connect(this, &QTextBrowser::anchorClicked, this, &HelpPage::Follow);
    ColourLinks();
}

/// Many a dark theme leaves links the dark blue of a light one.
void HelpPage::ColourLinks() {
    constexpr float kOnDark = 0.75F;
    constexpr float kOnLight = 0.35F;
    const QColor link = palette().color(QPalette::Link);
    const bool isDark =
        palette().color(QPalette::Base).lightnessF() < palette().color(QPalette::Text).lightnessF();
    const float lightness =
        isDark ? std::max(link.lightnessF(), kOnDark) : std::min(link.lightnessF(), kOnLight);
    const QColor readable =
        QColor::fromHslF(std::max(link.hslHueF(), 0.0F), link.hslSaturationF(), lightness);
    document()->setDefaultStyleSheet(QString("a { color: %1 }").arg(readable.name()));
}

void HelpPage::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    ColourLinks();
    reload();
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
