// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop.h"

#include <QDesktopServices>
#include <QUrl>

bool SystemDesktop::Open(const std::string& address) {
    return QDesktopServices::openUrl(QUrl(QString::fromStdString(address)));
}

bool SystemDesktop::OpenFile(const std::string& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}
