// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/GroupModel.h"

#include "platform/errors.h"
#include "platform/report/FontMeasure.h"

#include <QLocale>

#include <algorithm>

namespace report {

namespace {

constexpr std::size_t kGroupsAtOnce = 4096;

QString Number(std::size_t number) {
    return QLocale().toString(static_cast<qulonglong>(number));
}

} // namespace

void GroupModel::Show(const Layout* layout, std::size_t levels) {
    beginResetModel();
    mLayout = layout;
    mLevels = levels;
    mOutermost.clear();
    mSeen = 0;
    mWithin.clear();
    endResetModel();
}

bool GroupModel::TakeUp(std::chrono::milliseconds slice, bool isFinal) {
    if (mLayout == nullptr || mLevels == 0)
        return false;
    const auto end = std::chrono::steady_clock::now() + slice;
    const std::size_t known = mLayout->GroupCount();
    const std::size_t shown = mOutermost.size();
    Numbers found;
    // Rows of a tree are counted by int.
    constexpr std::size_t kMostShown = 1U << 30U;
    while (mSeen < known && shown + found.size() < kMostShown) {
        if (mLevels == 1 || mLayout->GroupLevel(mSeen) == 0)
            found.push_back(static_cast<std::uint32_t>(mSeen));
        if (++mSeen % kGroupsAtOnce == 0 && std::chrono::steady_clock::now() >= end)
            break;
    }
    // What is within the last outermost group is not all known: it is looked at again the next time.
    if (!isFinal && !found.empty()) {
        mSeen = found.back();
        found.pop_back();
    }
    if (!found.empty()) {
        beginInsertRows({}, static_cast<int>(shown), static_cast<int>(shown + found.size() - 1));
        mOutermost.insert(mOutermost.end(), found.begin(), found.end());
        endInsertRows();
    }
    return mSeen < known;
}

const GroupModel::Numbers& GroupModel::Within(std::size_t number) const {
    const auto [entry, isNew] = mWithin.try_emplace(number);
    Numbers& groups = entry->second;
    if (!isNew || mLayout == nullptr)
        return groups;
    const std::size_t level = mLayout->GroupLevel(number);
    for (std::size_t i = number + 1; i < mLayout->GroupCount(); ++i) {
        const std::size_t other = mLayout->GroupLevel(i);
        if (other <= level)
            break;
        if (other == level + 1)
            groups.push_back(static_cast<std::uint32_t>(i));
    }
    return groups;
}

std::size_t GroupModel::RowOf(const Numbers& groups, std::size_t number) {
    const auto behind = std::upper_bound(groups.begin(), groups.end(), number);
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(behind - groups.begin() - 1, 0));
}

QModelIndex GroupModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column != 0 || row >= rowCount(parent))
        return {};
    const Numbers& groups = parent.isValid() ? Within(NumberOf(parent)) : mOutermost;
    return createIndex(row, column, static_cast<quintptr>(groups[static_cast<std::size_t>(row)]));
}

QModelIndex GroupModel::parent(const QModelIndex& child) const {
    if (!child.isValid() || mLayout == nullptr || mLevels < 2)
        return {};
    const std::size_t number = NumberOf(child);
    QModelIndex parent;
    // Down from the outermost group that holds it.
    for (const Numbers* groups = &mOutermost; !groups->empty();) {
        const std::size_t row = RowOf(*groups, number);
        const std::size_t holder = (*groups)[row];
        if (holder == number)
            return parent;
        parent = createIndex(static_cast<int>(row), 0, static_cast<quintptr>(holder));
        groups = &Within(holder);
    }
    return {};
}

int GroupModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid())
        return static_cast<int>(mOutermost.size());
    return hasChildren(parent) ? static_cast<int>(Within(NumberOf(parent)).size()) : 0;
}

int GroupModel::columnCount(const QModelIndex& /*parent*/) const {
    return 1;
}

bool GroupModel::hasChildren(const QModelIndex& parent) const {
    if (!parent.isValid())
        return !mOutermost.empty();
    return mLayout != nullptr && mLevels > 1 && mLayout->GroupLevel(NumberOf(parent)) + 1 < mLevels;
}

std::optional<GroupEntry> GroupModel::EntryAt(const QModelIndex& index) const {
    if (!index.isValid() || mLayout == nullptr)
        return std::nullopt;
    return mLayout->Group(NumberOf(index));
}

QModelIndex GroupModel::Holding(std::size_t row,
                                const std::function<bool(const QModelIndex&)>& isOpen) const {
    QModelIndex holder;
    for (const Numbers* groups = &mOutermost; mLayout != nullptr;) {
        const auto behind = std::upper_bound(groups->begin(), groups->end(), row,
                                             [this](std::size_t sought, std::uint32_t group) {
                                                 return sought < mLayout->GroupFirstRow(group);
                                             });
        if (behind == groups->begin())
            break;
        const auto place = behind - groups->begin() - 1;
        const std::uint32_t number = (*groups)[static_cast<std::size_t>(place)];
        holder = createIndex(static_cast<int>(place), 0, static_cast<quintptr>(number));
        if (!hasChildren(holder) || !isOpen(holder))
            break;
        groups = &Within(number);
    }
    return holder;
}

QVariant GroupModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    try {
        const std::optional<GroupEntry> entry = EntryAt(index);
        if (!entry)
            return {};
        QString title = ShownText(entry->title);
        if (title.trimmed().isEmpty())
            title = QString::fromLatin1(kNoName);
        if (role == Qt::DisplayRole)
            return title;
        // Plain text, whatever a title looks like.
        return QStringLiteral("<p>%1</p><p>%2 %3, from page %4</p>")
            .arg(title.toHtmlEscaped(), Number(entry->rowCount),
                 entry->rowCount == 1 ? QStringLiteral("row") : QStringLiteral("rows"),
                 Number(entry->page + 1));
    } catch (const RunTimeError& error) {
        return QString::fromStdString(error.description);
    }
}

} // namespace report
