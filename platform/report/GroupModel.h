// SPDX-License-Identifier: GPL-3.0-or-later
// The groups of a report as a tree. There is no object to a node: a node is the group's number, its title is
// read when it is shown, and the branches within a group are looked for when it is opened. Groups are taken
// up as the layout finds them; the outermost one that may still grow waits until the layout goes on.
#pragma once

#include "platform/report/Layout.h"

#include <QAbstractItemModel>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

namespace report {

class GroupModel final : public QAbstractItemModel {
    Q_OBJECT

public:
    using QAbstractItemModel::QAbstractItemModel;

    /// Shows the groups of `layout`, which must live until another is shown; null for none. `levels` is how
    /// many groups the document nests.
    void Show(const Layout* layout, std::size_t levels);
    /// Takes up groups found since, for at most `slice`; true while there are more. `isFinal` says that the
    /// layout finds no others.
    bool TakeUp(std::chrono::milliseconds slice, bool isFinal);

    /// Nothing for no node. Raises what reading the group's first row raises.
    std::optional<GroupEntry> EntryAt(const QModelIndex& index) const;
    /// The group that holds `row`: the innermost of those that are on show, which `isOpen` tells of what they
    /// are in. No node where no group does.
    QModelIndex Holding(std::size_t row, const std::function<bool(const QModelIndex&)>& isOpen) const;

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    bool hasChildren(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    using Numbers = std::vector<std::uint32_t>;

    std::size_t NumberOf(const QModelIndex& index) const {
        return static_cast<std::size_t>(index.internalId());
    }
    /// The groups right within group `number`.
    const Numbers& Within(std::size_t number) const;
    /// The group of `groups` that is, or holds, group `number`: the last that does not come behind it.
    static std::size_t RowOf(const Numbers& groups, std::size_t number);

    const Layout* mLayout = nullptr;
    std::size_t mLevels = 0;
    Numbers mOutermost;
    /// Groups looked at so far.
    std::size_t mSeen = 0;
    mutable std::unordered_map<std::size_t, Numbers> mWithin;
};

} // namespace report
