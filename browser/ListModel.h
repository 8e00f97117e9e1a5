// SPDX-License-Identifier: GPL-3.0-or-later
// A list as its views see it: the columns, and of the rows those that are shown, in the order shown. Rows are
// appended only; those that were added since the last Publish are not seen by the views yet, so that a list
// can be filled while its window repaints. A row's number is its place in what is shown: it changes with
// Sort and Filter, and a row that is filtered out has none.
#pragma once

#include "browser/ListRows.h"
#include "browser/ListSink.h"
#include "browser/Progress.h"

#include <QAbstractTableModel>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct ListColumnHeader {
    std::string caption;
    /// Twips.
    int width;
};

class ListModel final : public QAbstractTableModel, public ListSink {
    Q_OBJECT
public:
    explicit ListModel(QObject* parent = nullptr);

    void AddColumn(std::string_view caption, int width) override;
    void AddRow(std::string_view key, std::string_view text, Image icon) override;
    void AddCountedRow(std::string_view machine, std::string_view keyEnd, std::string_view text,
                       Image icon) override;
    void SetSubItem(int column, std::string_view text) override;
    /// Shows the rows added so far.
    void Publish();
    /// Forgets the rows and gives their memory back. The next ones are sorted and filtered as these were.
    void ClearItems();
    /// Forgets the columns, the rows with them and the order: a new list begins in the order of its query.
    /// The filter stays.
    void ClearColumns();

    /// Puts the rows in the order of a column's texts, see RowsInOrder; the selection stays with its rows.
    /// A column below 0 brings back the order in which the rows were added.
    void Sort(int column, Qt::SortOrder order, const Progress& progress = {});
    /// Leaves the rows of which any cell holds `text` without regard to case; an empty text leaves all.
    /// Where `text` holds the text before, only the rows that are left are looked at, and what was found
    /// for a text that is taken up again at its end is still known, so that a filter keeps up with typing
    /// and deleting. Views lose their selection.
    void Filter(const std::string& text, const Progress& progress = {});

    std::size_t Rows() const;
    /// Without regard to the filter.
    std::size_t AllRows() const { return mPublished; }
    /// A row's number in the order in which they were added, which neither Sort nor Filter changes, and the
    /// place among those shown of a row that is shown.
    std::size_t Stored(std::size_t row) const;
    std::size_t PlaceOf(std::size_t stored) const;
    const std::vector<ListColumnHeader>& Columns() const { return mColumns; }
    std::string Key(std::size_t row) const { return mRows.Key(Stored(row)); }
    /// Empty for a sub-item that was never set.
    std::string_view Text(std::size_t row, int column) const { return mRows.Text(Stored(row), column); }
    Image Icon(std::size_t row) const { return mRows.Icon(Stored(row)); }
    /// Bytes that the rows take, with what is reserved.
    std::size_t MemoryUsed() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    using RowNumbers = std::vector<std::uint32_t>;
    /// The rows left by a filter's text, in the order shown.
    struct Filtered {
        std::string text;
        RowNumbers rows;
    };

    const RowNumbers* RowsOf(std::size_t filters) const;
    const RowNumbers* ShownRows() const { return RowsOf(mFiltered.size()); }
    std::vector<bool> LeftBy(std::size_t filters) const;
    RowNumbers RowsThat(const std::vector<bool>& isLeft, const RowNumbers* rows) const;
    std::size_t FiltersFor(const std::string& text) const;
    std::optional<Filtered> Narrowed(const std::string& text, std::size_t filters,
                                     const Progress& progress) const;
    RowNumbers Ordered(int column, Qt::SortOrder order, const Progress& progress) const;
    void Rearrange(RowNumbers order);
    void ForgetRows();

    std::vector<ListColumnHeader> mColumns;
    ListRows mRows;
    /// Rows that the views know of or that the filter keeps from them.
    std::size_t mPublished = 0;
    /// Below 0 in the order in which they were added.
    int mSortColumn = -1;
    Qt::SortOrder mSortOrder = Qt::AscendingOrder;
    /// All rows as sorted; empty where they are not.
    RowNumbers mOrder;
    std::string mFilter;
    /// Each of them within the one before; the last one is shown. Texts that leave no row out have none.
    std::vector<Filtered> mFiltered;
};

/// Text for a tool tip, escaped where the toolkit would take it for markup.
QString PlainToolTip(const QString& text);
