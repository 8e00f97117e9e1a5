// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/TreeModel.h"

#include "browser/Categories.h"
#include "core/Controls.h"
#include "platform/text.h"

#include <array>
#include <utility>

namespace {

constexpr quintptr kRootId = ~quintptr{0};
constexpr unsigned kNodeBits = 4;
constexpr quintptr kNodeMask = (quintptr{1} << kNodeBits) - 1;
static_assert(kCategories.size() < kNodeMask);
constexpr std::string_view kAll = "ALL";

/// Number of categories right below `parent` that stand before `position`: its row, or, for the end of the
/// table, how many there are.
constexpr int RowsBefore(int parent, std::size_t position) {
    int rows = 0;
    for (std::size_t i = 0; i < position; ++i)
        if (kCategories.at(i).parent == parent)
            ++rows;
    return rows;
}

constexpr int Children(int parent) {
    return RowsBefore(parent, kCategories.size());
}

constexpr int ChildAt(int parent, int row) {
    for (std::size_t i = 0; i < kCategories.size(); ++i)
        if (kCategories.at(i).parent == parent && row-- == 0)
            return static_cast<int>(i);
    return -1;
}

const Category& CategoryOf(int node) {
    return kCategories.at(static_cast<std::size_t>(node - 1));
}

} // namespace

TreeModel::TreeModel(QObject* parent) : QAbstractItemModel(parent) {}

void TreeModel::Clear() {
    beginResetModel();
    mHasRoot = false;
    mHasBranches = false;
    mByName.clear();
    mByLowerCase.clear();
    mMachines.clear();
    mMachines.shrink_to_fit();
    endResetModel();
}

void TreeModel::ShowRoot(const std::string& text) {
    Clear();
    beginInsertRows({}, 0, 0);
    mRootText = text;
    mHasRoot = true;
    endInsertRows();
}

void TreeModel::ShowMachines(std::vector<Machine> machines) {
    beginInsertRows(Root(), 0, static_cast<int>(machines.size()));
    mMachines = std::move(machines);
    mHasBranches = true;
    endInsertRows();
}

QModelIndex TreeModel::Root() const {
    return mHasRoot ? createIndex(0, 0, kRootId) : QModelIndex();
}

std::string TreeModel::Key(const QModelIndex& node) const {
    if (!node.isValid())
        return {};
    if (IsRoot(node))
        return "MAIN";
    const Place place = PlaceOf(node);
    std::string key(place.branch == 0 ? kAll : std::string_view(mMachines.at(place.branch - 1).name));
    if (place.node > 0)
        key += CategoryOf(place.node).suffix;
    else if (place.branch > 0)
        key += kMachineSuffix;
    return key;
}

std::string TreeModel::Text(const QModelIndex& node) const {
    if (!node.isValid())
        return {};
    if (IsRoot(node))
        return mRootText;
    const Place place = PlaceOf(node);
    if (place.node > 0)
        return std::string(CategoryOf(place.node).text);
    return place.branch == 0 ? std::string(kAll) : mMachines.at(place.branch - 1).name;
}

QModelIndex TreeModel::Find(std::string_view key) const {
    if (key == "MAIN")
        return Root();
    if (!mHasBranches)
        return {};
    if (key == kAll)
        return NodeAt(0, 0);
    // No suffix holds a second "?", while a machine's name may hold any number.
    const std::size_t question = key.rfind('?');
    if (question == std::string_view::npos)
        return {};
    const std::string_view name = key.substr(0, question);
    const std::string_view suffix = key.substr(question);
    const int category = FindCategory(suffix);
    if (category < 0 && suffix != kMachineSuffix)
        return {};
    // A machine may be named ALL as well; the branch of all machines was built first.
    if (category >= 0 && name == kAll)
        return NodeAt(0, category + 1);
    const std::size_t machine = FindMachine(name);
    return machine < mMachines.size() ? NodeAt(machine + 1, category + 1) : QModelIndex();
}

std::size_t TreeModel::FindMachine(std::string_view name) const {
    if (mByName.empty()) {
        mByName.reserve(mMachines.size());
        for (std::size_t i = 0; i < mMachines.size(); ++i)
            mByName.emplace(mMachines[i].name, i);
    }
    if (const auto exact = mByName.find(name); exact != mByName.end())
        return exact->second;
    if (mByLowerCase.empty())
        for (std::size_t i = 0; i < mMachines.size(); ++i)
            mByLowerCase.emplace(LowerCase(mMachines[i].name), i);
    const auto found = mByLowerCase.find(LowerCase(name));
    return found == mByLowerCase.end() ? mMachines.size() : found->second;
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent))
        return {};
    if (!parent.isValid())
        return Root();
    if (IsRoot(parent))
        return NodeAt(static_cast<std::size_t>(row), 0);
    const Place place = PlaceOf(parent);
    return NodeAt(place.branch, ChildAt(place.node - 1, row) + 1);
}

QModelIndex TreeModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || IsRoot(child))
        return {};
    const Place place = PlaceOf(child);
    if (place.node == 0)
        return Root();
    return NodeAt(place.branch, CategoryOf(place.node).parent + 1);
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid())
        return mHasRoot ? 1 : 0;
    if (parent.column() != 0)
        return 0;
    if (IsRoot(parent))
        return mHasBranches ? static_cast<int>(mMachines.size()) + 1 : 0;
    return Children(PlaceOf(parent).node - 1);
}

int TreeModel::columnCount(const QModelIndex& /*parent*/) const {
    return 1;
}

bool TreeModel::hasChildren(const QModelIndex& parent) const {
    return rowCount(parent) > 0;
}

QVariant TreeModel::data(const QModelIndex& node, int role) const {
    if (!node.isValid())
        return {};
    switch (role) {
        case Qt::DisplayRole:
            return Controls::Shown(Text(node));
        case Qt::DecorationRole:
            return TreeIcon(ImageOf(node));
        default:
            return {};
    }
}

bool TreeModel::IsRoot(const QModelIndex& node) {
    return node.internalId() == kRootId;
}

TreeModel::Place TreeModel::PlaceOf(const QModelIndex& node) {
    return {static_cast<std::size_t>(node.internalId() >> kNodeBits),
            static_cast<int>(node.internalId() & kNodeMask)};
}

QModelIndex TreeModel::NodeAt(std::size_t branch, int node) const {
    const quintptr id = (branch << kNodeBits) | static_cast<quintptr>(node);
    if (node == 0)
        return createIndex(static_cast<int>(branch), 0, id);
    return createIndex(RowsBefore(CategoryOf(node).parent, static_cast<std::size_t>(node - 1)), 0, id);
}

Image TreeModel::ImageOf(const QModelIndex& node) const {
    if (IsRoot(node))
        return Image::PC_MAIN;
    const Place place = PlaceOf(node);
    if (place.node > 0)
        return CategoryOf(place.node).image;
    return place.branch == 0 ? Image::PC_MAIN : AgeImage(mMachines.at(place.branch - 1).age);
}
