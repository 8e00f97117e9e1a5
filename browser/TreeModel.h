// SPDX-License-Identifier: GPL-3.0-or-later
// The navigation tree's nodes, computed from the list of machines: fourteen nodes a machine, none of which
// exists as an object. Root MAIN, below it the branch ALL and a branch per machine, below each the same
// categories. An index's internal id packs the branch's row (ALL is 0) and the place within the branch.
#pragma once

#include "browser/Images.h"

#include <QAbstractItemModel>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct Machine {
    /// As the database has it, untrimmed.
    std::string name;
    /// 1 to 4, see AgeScale.
    int age;
};

class TreeModel final : public QAbstractItemModel {
    Q_OBJECT
public:
    explicit TreeModel(QObject* parent = nullptr);

    /// No nodes at all, as while no database is open.
    void Clear();
    /// The root alone, bearing `text`.
    void ShowRoot(const std::string& text);
    /// Adds ALL and the machines below the root; called once after ShowRoot.
    void ShowMachines(std::vector<Machine> machines);

    const std::vector<Machine>& Machines() const { return mMachines; }
    QModelIndex Root() const;

    /// "MAIN", "ALL", "ALL?CPU", "PC1?MAIN", "PC1?CPU". Empty for an invalid index.
    std::string Key(const QModelIndex& node) const;
    std::string Text(const QModelIndex& node) const;
    /// The first node in the order of building whose key is `key`; where there is none, the first whose
    /// machine's name differs in case alone, since a machine's files need not agree on it; else invalid.
    QModelIndex Find(std::string_view key) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& node, int role) const override;

private:
    struct Place {
        std::size_t branch;
        /// 0 for the branch itself, else the category's position plus one.
        int node;
    };
    static bool IsRoot(const QModelIndex& node);
    static Place PlaceOf(const QModelIndex& node);
    QModelIndex NodeAt(std::size_t branch, int node) const;
    Image ImageOf(const QModelIndex& node) const;
    std::size_t FindMachine(std::string_view name) const;

    bool mHasRoot = false;
    bool mHasBranches = false;
    std::string mRootText;
    std::vector<Machine> mMachines;
    /// The first machine of each name, and of each name in lower case; each filled by the first search that
    /// needs it after a build.
    mutable std::unordered_map<std::string_view, std::size_t> mByName;
    mutable std::unordered_map<std::string, std::size_t> mByLowerCase;
};
