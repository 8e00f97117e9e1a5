// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/HelpKey.h"

#include <QCoreApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QVariant>

#include <utility>

namespace {

constexpr const char* kTopic = "helpTopic";
constexpr const char* kMessages = "messages.html";

bool IsHelpKey(const QEvent& event) {
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

} // namespace

void HelpTopic(QWidget& window, const char* page) {
    window.setProperty(kTopic, QString::fromLatin1(page));
}

std::string HelpTopicOf(const QWidget& widget) {
    const QWidget* window = widget.window();
    while (window != nullptr) {
        const QVariant topic = window->property(kTopic);
        if (topic.isValid())
            return topic.toString().toStdString();
        if (qobject_cast<const QMessageBox*>(window) != nullptr)
            return kMessages;
        window = window->parentWidget() != nullptr ? window->parentWidget()->window() : nullptr;
    }
    return {};
}

HelpKey::HelpKey(Show show, QObject* parent) : QObject(parent), mShow(std::move(show)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    return event->type() == QEvent::KeyPress && watched->isWidgetType() && IsHelpKey(*event) &&
           Answer(static_cast<const QWidget&>(*watched));
}

bool HelpKey::Answer(const QWidget& widget) {
    const QWidget& window = *widget.window();
    const std::string topic = HelpTopicOf(widget);
    if (window.windowType() == Qt::Popup ||
        (topic.empty() && qobject_cast<const QDialog*>(&window) == nullptr))
        return false;
    mShow(topic);
    return true;
}
