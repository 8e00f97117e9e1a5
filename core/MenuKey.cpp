// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MenuKey.h"

#include <QAction>
#include <QMainWindow>
#include <QMenuBar>
#include <QShortcut>

void OpenMenuByKey(QMainWindow& window) {
    auto* const shortcut = new QShortcut(QKeySequence(Qt::Key_F10), &window);
    QObject::connect(shortcut, &QShortcut::activated, &window,
                     [&window] { window.menuBar()->setActiveAction(window.menuBar()->actions().value(0)); });
}
