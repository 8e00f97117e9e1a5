// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListSelection.h"

#include "browser/ListModel.h"

#include <algorithm>
#include <utility>

ListSelection::ListSelection(ListModel& model, QObject* parent)
    : QItemSelectionModel(&model, parent), mModel(model) {}

ListSelection::Rows ListSelection::Kept() const {
    Rows rows = mHidden;
    if (hasSelection())
        rows.areSelected.resize(mModel.AllRows());
    for (const QItemSelectionRange& range : selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.areSelected[mModel.Stored(static_cast<std::size_t>(row))] = true;
    if (currentIndex().isValid())
        rows.current = mModel.Stored(static_cast<std::size_t>(currentIndex().row()));
    return rows;
}

void ListSelection::Restore(Rows rows) {
    const QItemSelection shown = Take(rows.areSelected);
    if (!shown.isEmpty())
        select(shown, Select);
    if (rows.current)
        if (const std::size_t place = mModel.PlaceOf(*rows.current); place < mModel.Rows()) {
            setCurrentIndex(mModel.index(static_cast<int>(place), 0), NoUpdate);
            rows.current.reset();
        }
    mHidden = std::move(rows);
}

/// The rows of `areSelected` that are shown, by ranges: a million that stand together are a single one. They
/// are taken out of `areSelected`.
QItemSelection ListSelection::Take(std::vector<bool>& areSelected) const {
    QItemSelection shown;
    if (areSelected.empty())
        return shown;
    const std::size_t rows = mModel.Rows();
    const int lastColumn = mModel.columnCount() - 1;
    for (std::size_t row = 0; row < rows; ++row) {
        const std::size_t first = row;
        for (; row < rows && areSelected[mModel.Stored(row)]; ++row)
            areSelected[mModel.Stored(row)] = false;
        if (row > first)
            shown.emplace_back(mModel.index(static_cast<int>(first), 0),
                               mModel.index(static_cast<int>(row) - 1, lastColumn));
    }
    if (std::find(areSelected.begin(), areSelected.end(), true) == areSelected.end())
        areSelected = {};
    return shown;
}

void ListSelection::select(const QItemSelection& selection, SelectionFlags command) {
    if ((command & Clear) != 0)
        mHidden = {};
    QItemSelectionModel::select(selection, command);
}

void ListSelection::reset() {
    mHidden = {};
    QItemSelectionModel::reset();
}
