// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListModel.h"

#include "platform/errors.h"

#include <QTextDocument>

#include <algorithm>
#include <functional>
#include <utility>

namespace {

constexpr unsigned kLengthBits = 7;
constexpr unsigned kMoreBit = 1U << kLengthBits;

QString Shown(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Reads the cells of a row one after the other.
class CellReader {
public:
    CellReader(const char* begin, const char* end) : mAt(begin), mEnd(end) {}

    bool AtEnd() const { return mAt == mEnd; }
    std::string_view Next() {
        std::size_t length = 0;
        unsigned byte = kMoreBit;
        for (unsigned shift = 0; (byte & kMoreBit) != 0; shift += kLengthBits) {
            byte = static_cast<unsigned char>(*mAt++);
            length |= static_cast<std::size_t>(byte & (kMoreBit - 1)) << shift;
        }
        const std::string_view cell(mAt, length);
        mAt += length;
        return cell;
    }

private:
    const char* mAt;
    const char* mEnd;
};

std::uint32_t Hash(std::string_view key) {
    const std::size_t hash = std::hash<std::string_view>()(key);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
}

} // namespace

ListModel::ListModel(QObject* parent) : QAbstractTableModel(parent) {}

void ListModel::AddColumn(std::string caption, int width) {
    const int column = static_cast<int>(mColumns.size());
    beginInsertColumns({}, column, column);
    mColumns.push_back({std::move(caption), width});
    endInsertColumns();
}

void ListModel::AddRow(std::string_view key, std::string_view text, Image icon) {
    if (!key.empty())
        EnterKey(key);
    mRows.push_back(mBytes.size());
    mBytes.push_back(static_cast<char>(icon));
    Append(key);
    Append(text);
    mLastRowCells = 1;
}

void ListModel::SetSubItem(int column, std::string_view text) {
    if (mRows.empty() || column < 1)
        Raise(Errors::kInvalidCall);
    if (column >= mLastRowCells) {
        for (; mLastRowCells < column; ++mLastRowCells)
            Append({});
        Append(text);
        mLastRowCells = column + 1;
        return;
    }
    // A cell that is written again: the row stands at the store's end, so its rest is written anew.
    CellReader cells(mBytes.data() + mRows.back() + 1, mBytes.data() + mBytes.size());
    std::vector<std::string> row;
    while (!cells.AtEnd())
        row.emplace_back(cells.Next());
    row.at(static_cast<std::size_t>(column) + 1) = text;
    mBytes.resize(mRows.back() + 1);
    for (const std::string& cell : row)
        Append(cell);
}

void ListModel::Append(std::string_view cell) {
    std::size_t length = cell.size();
    for (; length >= kMoreBit; length >>= kLengthBits)
        mBytes.push_back(static_cast<char>((length & (kMoreBit - 1)) | kMoreBit));
    mBytes.push_back(static_cast<char>(length));
    mBytes.insert(mBytes.end(), cell.begin(), cell.end());
}

void ListModel::EnterKey(std::string_view key) {
    if (mKeyCount * 4 >= mKeys.size() * 3)
        GrowKeys();
    const std::uint32_t hash = Hash(key);
    const std::size_t mask = mKeys.size() - 1;
    std::size_t slot = hash & mask;
    for (; mKeys[slot].row != 0; slot = (slot + 1) & mask)
        if (mKeys[slot].hash == hash && Key(mKeys[slot].row - 1) == key)
            Raise(Errors::kKeyNotUnique, std::string(key));
    mKeys[slot] = {hash, static_cast<std::uint32_t>(mRows.size() + 1)};
    ++mKeyCount;
}

void ListModel::GrowKeys() {
    std::vector<KeySlot> grown(std::max<std::size_t>(mKeys.size() * 2, 64));
    const std::size_t mask = grown.size() - 1;
    for (const KeySlot& entry : mKeys) {
        if (entry.row == 0)
            continue;
        std::size_t slot = entry.hash & mask;
        while (grown[slot].row != 0)
            slot = (slot + 1) & mask;
        grown[slot] = entry;
    }
    mKeys = std::move(grown);
}

void ListModel::Publish() {
    const int rows = static_cast<int>(mRows.size());
    if (rows == mShown)
        return;
    beginInsertRows({}, mShown, rows - 1);
    mShown = rows;
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
    endResetModel();
}

void ListModel::ForgetRows() {
    mShown = 0;
    mKeyCount = 0;
    mLastRowCells = 0;
    mBytes = {};
    mRows = {};
    mKeys = {};
}

std::string_view ListModel::Key(std::size_t row) const {
    return CellReader(mBytes.data() + mRows.at(row) + 1, nullptr).Next();
}

std::string_view ListModel::Text(std::size_t row, int column) const {
    const std::size_t end = row + 1 < mRows.size() ? mRows[row + 1] : mBytes.size();
    CellReader cells(mBytes.data() + mRows.at(row) + 1, mBytes.data() + end);
    cells.Next();
    for (; column > 0 && !cells.AtEnd(); --column)
        cells.Next();
    return cells.AtEnd() ? std::string_view() : cells.Next();
}

Image ListModel::Icon(std::size_t row) const {
    return static_cast<Image>(mBytes.at(mRows.at(row)));
}

std::size_t ListModel::MemoryUsed() const {
    return mBytes.capacity() + mRows.capacity() * sizeof(std::size_t) + mKeys.capacity() * sizeof(KeySlot);
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : mShown;
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
