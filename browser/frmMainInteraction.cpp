// SPDX-License-Identifier: GPL-3.0-or-later
// What the user does to the main window's list: opening a row, sorting by a column, copying, and the choice
// of the properties dialog.
#include "browser/Categories.h"
#include "browser/DrillDown.h"
#include "browser/ListText.h"
#include "browser/ListView.h"
#include "browser/TreeModel.h"
#include "browser/frmMain.h"
#include "browser/frmProperties.h"
#include "browser/frmSystemProp.h"
#include "core/LongWork.h"
#include "core/NodeKeys.h"
#include "platform/application.h"
#include "platform/errors.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTreeView>

#include <numeric>

namespace {

/// Lets the bar tell of a sort or a filter.
Progress BarOf(ShownWork& work) {
    return [&work](std::size_t done, std::size_t all) {
        work.Look(static_cast<double>(done), static_cast<double>(all));
    };
}

} // namespace

std::string frmMain::SelectedNodeKey() const {
    const QModelIndex node = SelectedNode();
    if (!node.isValid())
        Raise(Errors::kNoObject);
    return mTree->Key(node);
}

std::vector<std::string> frmMain::ListColumns() const {
    std::vector<std::string> captions;
    for (const ListColumnHeader& column : lvListView->Items().Columns())
        captions.push_back(column.caption);
    return captions;
}

std::size_t frmMain::ListItems() const {
    return lvListView->Items().Rows();
}

std::size_t frmMain::HiddenListItems() const {
    return lvListView->HiddenRows();
}

std::string frmMain::ListItemText(std::size_t row) const {
    return std::string(lvListView->Items().Text(row, 0));
}

std::string frmMain::ListSubItem(std::size_t row, int column) const {
    return std::string(lvListView->Items().Text(row, column));
}

std::vector<std::size_t> frmMain::SelectedListItems() const {
    return lvListView->SelectedRows();
}

std::size_t frmMain::SelectedListItem() const {
    const int row = lvListView->SelectedItem();
    if (row < 0)
        Raise(Errors::kNoObject);
    return static_cast<std::size_t>(row);
}

bool frmMain::IsListItemSelected(std::size_t row) const {
    return lvListView->IsSelected(row);
}

bool frmMain::CheckIfSelected() const {
    return lvListView->HasSelection();
}

void frmMain::lvListView_DblClick() {
    Guarded("Error#", [this] {
        const DrillDown target = DrillDownFrom(lvListView->Items().Key(SelectedListItem()));
        if (target.kind == DrillKind::UnknownKey)
            mPrompts.MsgBox(target.key, MsgBoxStyle::kOKOnly, "");
        if (target.kind != DrillKind::Node)
            return;
        const QModelIndex node = mTree->Find(target.key);
        if (!node.isValid())
            return;
        tvTreeView->expand(node);
        tvTreeView->setCurrentIndex(node);
        NodeClick(node);
    });
}

void frmMain::lvListView_ColumnClick(int column) {
    Guarded("Error#", [&] {
        ShownWork work(*this);
        lvListView->SortBy(column, BarOf(work));
    });
}

void frmMain::lvListView_FilterTyped(const QString& text) {
    Guarded("Error#", [&] {
        ShownWork work(*this);
        lvListView->Filter(text, BarOf(work));
    });
}

void frmMain::mnuCopy() {
    const ListModel& items = lvListView->Items();
    if (items.Columns().empty())
        return;
    ShownWork work(*this);
    QClipboard& clipboard = *QGuiApplication::clipboard();
    clipboard.clear();
    QString text = QString::fromStdString(HeadingLine(items));
    std::vector<std::size_t> rows;
    if (CheckIfSelected()) {
        rows = SelectedListItems();
    } else {
        rows.resize(items.Rows());
        std::iota(rows.begin(), rows.end(), std::size_t{0});
    }
    std::size_t done = 0;
    for (const std::size_t row : rows) {
        text += RowLine(items, row);
        work.Step(static_cast<double>(++done), static_cast<double>(rows.size()));
    }
    clipboard.setText(text);
}

void frmMain::mnuProperties() {
    const std::string key = mTree->Key(SelectedNode());
    // What fails in the dialogs fails in the program; a command's own handler must not see it.
    if (key == "ALL" || key == "MAIN") {
        Application::Guard([this] { return frmSystemProp(this, mClock).exec(); });
    } else if (key.find(kMachineSuffix) != std::string::npos) {
        Application::Guard([&] {
            frmProperties properties(this, mPrompts);
            properties.ConfID(mShowConf);
            properties.ComputerName(NodeKeys::WithoutMain(key));
            return properties.exec();
        });
    }
}
