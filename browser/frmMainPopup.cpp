// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's pop-up menus: the right mouse button, or the menu key, on the tree and on the list.
#include "browser/ListView.h"
#include "browser/TreeModel.h"
#include "browser/frmMain.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QTreeView>

namespace {

/// Shift+F10 asks on every keyboard, and on those that have one the menu key.
bool AsksByKeyboard(const QEvent& event) {
    if (event.type() == QEvent::ContextMenu)
        return static_cast<const QContextMenuEvent&>(event).reason() == QContextMenuEvent::Keyboard;
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier;
}

/// Where the event asks for a pop-up menu, if it does. The mouse asks when its button goes up.
std::optional<QPoint> PopupPosition(const QAbstractItemView& view, const QEvent& event) {
    if (event.type() == QEvent::MouseButtonRelease) {
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        if (mouse.button() == Qt::RightButton)
            return mouse.globalPosition().toPoint();
    }
    if (AsksByKeyboard(event)) {
        const QRect item = view.visualRect(view.currentIndex());
        const bool isSeen = view.viewport()->rect().intersects(item);
        return view.viewport()->mapToGlobal(isSeen ? item.bottomLeft() : QPoint());
    }
    return std::nullopt;
}

} // namespace

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == imgSplitter)
        return DragSplitter(*event);
    if (watched == centralWidget()) {
        if (event->type() == QEvent::Resize)
            Arrange();
        return false;
    }
    const bool isTree = watched == tvTreeView || watched == tvTreeView->viewport();
    const std::optional<QPoint> position =
        PopupPosition(isTree ? *tvTreeView : lvListView->CurrentView(), *event);
    if (!position)
        return false;
    if (isTree)
        ShowTreePopup(*position);
    else
        ShowListPopup(*position);
    // The view itself must see the button go up.
    return event->type() != QEvent::MouseButtonRelease;
}

void frmMain::ShowTreePopup(const QPoint& position) {
    // The press has selected a node; the menu must offer what that node allows.
    NodeClick(SelectedNode());
    mnuPopup->popup(position);
}

void frmMain::ShowListPopup(const QPoint& position) {
    const QModelIndex node = SelectedNode();
    // Without a node the commands would not know what they are to act on.
    if (!node.isValid())
        return;
    const bool canPing = mTree->Key(node).find("?DEVNET") != std::string::npos;
    for (const char* name : {"mnuPingPrivate", "mnuPingMarker"})
        Action(name).setVisible(canPing);
    if (canPing) {
        const int row = lvListView->SelectedItem();
        if (row < 0)
            return;
        for (const char* name : {"mnuPingPrivate", "mnuPingMarker"})
            Action(name).setEnabled(lvListView->IsSelected(static_cast<std::size_t>(row)));
    }
    mnuPopupR->popup(position);
}
