// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListModel.h"

#include "browser/CaselessSearch.h"
#include "browser/Images.h"
#include "browser/RowOrder.h"
#include "core/Controls.h"

#include <QTextDocument>

#include <algorithm>
#include <utility>

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
        mOrder = Ordered(mSortColumn, mSortOrder, {});
        if (std::optional<Filtered> narrowed = Narrowed(mFilter, 0, {}))
            mFiltered.push_back(std::move(*narrowed));
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

void ListModel::Sort(int column, Qt::SortOrder order, const Progress& progress) {
    Publish();
    RowNumbers ordered = Ordered(column, order, progress);
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList held = persistentIndexList();
    RowNumbers stored;
    stored.reserve(static_cast<std::size_t>(held.size()));
    for (const QModelIndex& index : held)
        stored.push_back(static_cast<std::uint32_t>(Stored(static_cast<std::size_t>(index.row()))));

    mSortColumn = column;
    mSortOrder = order;
    Rearrange(std::move(ordered));

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

/// All rows in the order of a column; empty for the order in which they were added.
ListModel::RowNumbers ListModel::Ordered(int column, Qt::SortOrder order, const Progress& progress) const {
    return column < 0 ? RowNumbers() : RowsInOrder(mRows, column, order == Qt::DescendingOrder, progress);
}

/// Puts all rows in an order, and those that the filter has left with them.
void ListModel::Rearrange(RowNumbers order) {
    const std::vector<bool> isLeft = LeftBy(mFiltered.size());
    mOrder = std::move(order);
    if (mFiltered.empty())
        return;
    std::string text = std::move(mFiltered.back().text);
    mFiltered.clear();
    mFiltered.push_back({std::move(text), RowsThat(isLeft, ShownRows())});
}

void ListModel::Filter(const std::string& text, const Progress& progress) {
    Publish();
    const std::size_t filters = FiltersFor(text);
    std::optional<Filtered> narrowed = Narrowed(text, filters, progress);
    beginResetModel();
    mFilter = text;
    mFiltered.resize(filters);
    if (narrowed)
        mFiltered.push_back(std::move(*narrowed));
    endResetModel();
}

/// How many of the filters serve for `text`: what was found for a text serves for any that holds it.
std::size_t ListModel::FiltersFor(const std::string& text) const {
    std::size_t filters = mFiltered.size();
    while (filters > 0 && !CaselessSearch(mFiltered[filters - 1].text).IsIn(text))
        --filters;
    return filters;
}

/// Looks for `text` in the rows that the first `filters` filters leave: in the order in which they are
/// stored, since a walk in any other order waits for the memory at each row. Nothing where it leaves all.
std::optional<ListModel::Filtered> ListModel::Narrowed(const std::string& text, std::size_t filters,
                                                       const Progress& progress) const {
    constexpr std::size_t kRowsPerStep = 1024;
    const CaselessSearch search(text);
    if (text.empty() || (filters > 0 && search.IsIn(mFiltered[filters - 1].text)))
        return std::nullopt;
    const auto isFound = [&search](std::string_view cell) { return search.IsIn(cell); };
    std::vector<bool> isLeft = LeftBy(filters);
    bool isNarrower = false;
    for (std::size_t row = 0; row < isLeft.size(); ++row) {
        if (progress && row % kRowsPerStep == 0)
            progress(row, isLeft.size());
        if (!isLeft[row] || mRows.AnyCell(row, isFound))
            continue;
        isLeft[row] = false;
        isNarrower = true;
    }
    if (!isNarrower)
        return std::nullopt;
    return Filtered{text, RowsThat(isLeft, RowsOf(filters))};
}

/// Of each row, whether the first `filters` filters leave it.
std::vector<bool> ListModel::LeftBy(std::size_t filters) const {
    std::vector<bool> isLeft(mRows.Count(), filters == 0);
    if (filters > 0)
        for (const std::uint32_t row : mFiltered[filters - 1].rows)
            isLeft[row] = true;
    return isLeft;
}

/// Those of `rows`, null for all as they were added, for which `isLeft` holds, in their order.
ListModel::RowNumbers ListModel::RowsThat(const std::vector<bool>& isLeft, const RowNumbers* rows) const {
    RowNumbers left;
    left.reserve(static_cast<std::size_t>(std::count(isLeft.begin(), isLeft.end(), true)));
    const std::size_t count = rows != nullptr ? rows->size() : mRows.Count();
    for (std::size_t place = 0; place < count; ++place)
        if (const std::size_t row = rows != nullptr ? (*rows)[place] : place; isLeft[row])
            left.push_back(static_cast<std::uint32_t>(row));
    return left;
}

/// What the first `filters` filters leave, in the order shown; null for all as they were added.
const ListModel::RowNumbers* ListModel::RowsOf(std::size_t filters) const {
    if (filters > 0)
        return &mFiltered[filters - 1].rows;
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

std::size_t ListModel::PlaceOf(std::size_t stored) const {
    const RowNumbers* const rows = ShownRows();
    if (rows == nullptr)
        return stored;
    return static_cast<std::size_t>(std::find(rows->begin(), rows->end(), stored) - rows->begin());
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
            return Controls::Shown(Text(row, index.column()));
        case Qt::DecorationRole:
            return index.column() == 0 && Icon(row) != Image::None ? QVariant(TreeIcon(Icon(row)))
                                                                   : QVariant();
        case Qt::ToolTipRole:
            return PlainToolTip(Controls::Shown(Text(row, 0)));
        default:
            return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    if (role == Qt::DisplayRole)
        return Controls::Shown(mColumns[static_cast<std::size_t>(section)].caption);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

QString PlainToolTip(const QString& text) {
    return Qt::mightBeRichText(text) ? "<span>" + text.toHtmlEscaped() + "</span>" : text;
}
