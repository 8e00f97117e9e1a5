// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a list, held as bytes in one store and turned into toolkit texts only when they are painted:
// a list of every device of every machine has a million of them. Rows are appended only; those that were
// added since the last Publish are not seen by the views yet, so that a list can be filled while its window
// repaints.
#pragma once

#include "browser/Images.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct ListColumnHeader {
    std::string caption;
    /// Twips.
    int width;
};

class ListModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ListModel(QObject* parent = nullptr);

    void AddColumn(std::string caption, int width);
    /// Adds a row with the text of its first column. Raises error 35602 where another row has the same key;
    /// an empty key is none.
    void AddRow(std::string_view key, std::string_view text, Image icon);
    /// The text of column `column`, from 1, of the row added last.
    void SetSubItem(int column, std::string_view text);
    /// Shows the rows added so far.
    void Publish();
    /// Forgets the rows and gives their memory back.
    void ClearItems();
    /// Forgets the columns, and the rows with them.
    void ClearColumns();

    std::size_t Rows() const { return mRows.size(); }
    const std::vector<ListColumnHeader>& Columns() const { return mColumns; }
    std::string_view Key(std::size_t row) const;
    /// Empty for a sub-item that was never set.
    std::string_view Text(std::size_t row, int column) const;
    Image Icon(std::size_t row) const;
    /// Bytes that the rows take, with what is reserved.
    std::size_t MemoryUsed() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct KeySlot {
        std::uint32_t hash;
        /// Row number plus one; 0 marks a free slot.
        std::uint32_t row;
    };
    void Append(std::string_view cell);
    void EnterKey(std::string_view key);
    void GrowKeys();
    void ForgetRows();

    std::vector<ListColumnHeader> mColumns;
    /// Row after row: the icon's number, then the key and each cell as its length and its bytes.
    std::vector<char> mBytes;
    /// Where each row begins in mBytes.
    std::vector<std::size_t> mRows;
    /// Hash set of the rows that have a key, by open addressing; its size is a power of two.
    std::vector<KeySlot> mKeys;
    std::size_t mKeyCount = 0;
    int mLastRowCells = 0;
    int mShown = 0;
};

/// Text for a tool tip, escaped where the toolkit would take it for markup.
QString PlainToolTip(const QString& text);
