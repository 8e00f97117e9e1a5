// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListModel.h"

#include "browser/CaselessSearch.h"
#include "browser/Images.h"
#include "browser/RowOrder.h"

#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace {

QString Shown(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

ListModel::ListModel(QObject* parent) : QAbstractTableModel(parent) {}

void ListModel::AddColumn(std::string_view caption, int width) {
    const int column = static_cast<int>(mColumns.size());
    beginInsertColumns({}, column, column);
    mColumns.push_back({std::string(caption), width});
    endInsertColumns();
}

void ListModel::AddRow(std::string_view key, std::string_view text, Image icon) {
    mRows.Add(key, text, icon);
}

void ListModel::AddCountedRow(std::string_view machine, std::string_view keyEnd, std::string_view text,
                              Image icon) {
    mRows.AddCounted(machine, keyEnd, text, icon);
}

void ListModel::SetSubItem(int column, std::string_view text) {
    mRows.SetSubItem(column, text);
}

void ListModel::Publish() {
    const std::size_t rows = mRows.Count();
    if (rows == mPublished)
        return;
    if (mSortColumn >= 0 || !mFilter.empty()) {
        beginResetModel();
        mPublished = rows;
        mFiltered.clear();
        Rearrange();
        Narrow();
        endResetModel();
        return;
    }
    beginInsertRows({}, static_cast<int>(mPublished), static_cast<int>(rows) - 1);
    mPublished = rows;
    endInsertRows();
}

void ListModel::ClearItems() {
    beginResetModel();
    ForgetRows();
    endResetModel();
}

void ListModel::ClearColumns() {
    beginResetModel();
    ForgetRows();
    mColumns.clear();
    mSortColumn = -1;
    endResetModel();
}

void ListModel::ForgetRows() {
    mPublished = 0;
    mRows.Clear();
    mOrder = {};
    mFiltered = {};
}

void ListModel::Sort(int column, Qt::SortOrder order) {
    Publish();
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList held = persistentIndexList();
    RowNumbers stored;
    stored.reserve(static_cast<std::size_t>(held.size()));
    for (const QModelIndex& index : held)
        stored.push_back(static_cast<std::uint32_t>(Stored(static_cast<std::size_t>(index.row()))));

    mSortColumn = column;
    mSortOrder = order;
    Rearrange();

    if (!held.isEmpty()) {
        RowNumbers places(mRows.Count());
        for (std::size_t row = 0; row < Rows(); ++row)
            places[Stored(row)] = static_cast<std::uint32_t>(row);
        QModelIndexList moved;
        moved.reserve(held.size());
        for (std::size_t i = 0; i < stored.size(); ++i)
            moved.push_back(
                index(static_cast<int>(places[stored[i]]), held[static_cast<qsizetype>(i)].column()));
        changePersistentIndexList(held, moved);
    }
    emit layoutChanged({}, VerticalSortHint);
}

/// Orders all rows anew, and those that the filter has left with them.
void ListModel::Rearrange() {
    const bool isDescending = mSortOrder == Qt::DescendingOrder;
    mOrder = mSortColumn < 0 ? RowNumbers() : RowsInOrder(mRows, mSortColumn, isDescending);
    if (mFiltered.empty())
        return;
    const std::vector<bool> isLeft = Left();
    std::string text = std::move(mFiltered.back().text);
    mFiltered.clear();
    mFiltered.push_back({std::move(text), ShownOf(isLeft)});
}

void ListModel::Filter(const std::string& text) {
    Publish();
    beginResetModel();
    mFilter = text;
    const CaselessSearch search(text);
    // What was found for a text serves for any that holds it.
    while (!mFiltered.empty() && !CaselessSearch(mFiltered.back().text).IsIn(text))
        mFiltered.pop_back();
    if (mFiltered.empty() || !search.IsIn(mFiltered.back().text))
        Narrow();
    endResetModel();
}

/// Looks for the filter's text in the rows that are left: in the order in which they are stored, since a
/// walk in any other order waits for the memory at each row.
void ListModel::Narrow() {
    if (mFilter.empty())
        return;
    const CaselessSearch search(mFilter);
    const auto isFound = [&search](std::string_view cell) { return search.IsIn(cell); };
    std::vector<bool> isLeft = Left();
    for (std::size_t row = 0; row < isLeft.size(); ++row)
        if (isLeft[row])
            isLeft[row] = mRows.AnyCell(row, isFound);
    mFiltered.push_back({mFilter, ShownOf(isLeft)});
}

/// Of each row, whether the filter has left it so far.
std::vector<bool> ListModel::Left() const {
    std::vector<bool> isLeft(mRows.Count(), mFiltered.empty());
    if (!mFiltered.empty())
        for (const std::uint32_t row : mFiltered.back().rows)
            isLeft[row] = true;
    return isLeft;
}

/// Those of the rows shown for which `isLeft` holds, in their order.
ListModel::RowNumbers ListModel::ShownOf(const std::vector<bool>& isLeft) const {
    RowNumbers rows;
    rows.reserve(static_cast<std::size_t>(std::count(isLeft.begin(), isLeft.end(), true)));
    for (std::size_t shown = 0; shown < Rows(); ++shown)
        if (const std::size_t row = Stored(shown); isLeft[row])
            rows.push_back(static_cast<std::uint32_t>(row));
    return rows;
}

const ListModel::RowNumbers* ListModel::ShownRows() const {
    if (!mFiltered.empty())
        return &mFiltered.back().rows;
    return mOrder.empty() ? nullptr : &mOrder;
}

std::size_t ListModel::Rows() const {
    const RowNumbers* const rows = ShownRows();
    return rows != nullptr ? rows->size() : mRows.Count();
}

std::size_t ListModel::Stored(std::size_t row) const {
    const RowNumbers* const rows = ShownRows();
    return rows != nullptr ? rows->at(row) : row;
}

std::size_t ListModel::MemoryUsed() const {
    std::size_t numbers = mOrder.capacity();
    for (const Filtered& filtered : mFiltered)
        numbers += filtered.rows.capacity();
    return mRows.MemoryUsed() + numbers * sizeof(std::uint32_t);
}

int ListModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid())
        return 0;
    return static_cast<int>(ShownRows() != nullptr ? Rows() : mPublished);
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(mColumns.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto row = static_cast<std::size_t>(index.row());
    switch (role) {
        case Qt::DisplayRole:
            return Shown(Text(row, index.column()));
        case Qt::DecorationRole:
            return index.column() == 0 && Icon(row) != Image::None ? QVariant(TreeIcon(Icon(row)))
                                                                   : QVariant();
        case Qt::ToolTipRole:
            return PlainToolTip(Shown(Text(row, 0)));
        default:
            return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    if (role == Qt::DisplayRole)
        return Shown(mColumns[static_cast<std::size_t>(section)].caption);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

QString PlainToolTip(const QString& text) {
    return Qt::mightBeRichText(text) ? "<span>" + text.toHtmlEscaped() + "</span>" : text;
}
