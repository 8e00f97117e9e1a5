// SPDX-License-Identifier: GPL-3.0-or-later
// The selection of a list that is filtered. A selected row that a filter hides is not selected, since no
// command may act on what is out of sight; but it comes back selected when it is shown again, unless another
// selection has been made meanwhile. The same holds for the current row.
#pragma once

#include <QItemSelectionModel>

#include <cstddef>
#include <optional>
#include <vector>

class ListModel;

class ListSelection final : public QItemSelectionModel {
public:
    ListSelection(ListModel& model, QObject* parent);

    /// Rows by the numbers under which the model stores them.
    struct Rows {
        /// Empty where none is selected.
        std::vector<bool> areSelected;
        std::optional<std::size_t> current;
    };
    /// What is selected and what would be without the filter.
    Rows Kept() const;
    /// Selects of `rows` those that are shown, and keeps the others. Called after a filter, which has reset
    /// the selection.
    void Restore(Rows rows);
    /// Whether a selected row is hidden.
    bool HasHidden() const { return !mHidden.areSelected.empty(); }

    using QItemSelectionModel::select;
    void select(const QItemSelection& selection, SelectionFlags command) override;
    void reset() override;

private:
    QItemSelection Take(std::vector<bool>& areSelected) const;

    ListModel& mModel;
    Rows mHidden;
};
