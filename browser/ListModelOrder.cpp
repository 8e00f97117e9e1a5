// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListModel.h"

#include <algorithm>
#include <map>
namespace {
struct Saved {
    std::vector<char> bytes;
    std::vector<std::size_t> rows;
};
std::map<const ListModel*, Saved> gSaved;
} // namespace
void ListModel::Sort(int column, Qt::SortOrder order) {
    std::vector<std::pair<std::string, std::vector<char>>> all;
    for (std::size_t r = 0; r < mRows.size(); ++r) {
        const std::size_t end = r + 1 < mRows.size() ? mRows[r + 1] : mBytes.size();
        all.emplace_back(std::string(Text(r, column)),
                         std::vector<char>(mBytes.begin() + static_cast<long>(mRows[r]),
                                           mBytes.begin() + static_cast<long>(end)));
    }
    std::stable_sort(all.begin(), all.end(), [&](auto& a, auto& b) {
        return order == Qt::AscendingOrder ? a.first < b.first : b.first < a.first;
    });
    beginResetModel();
    mBytes.clear();
    mRows.clear();
    for (auto& r : all) {
        mRows.push_back(mBytes.size());
        mBytes.insert(mBytes.end(), r.second.begin(), r.second.end());
    }
    endResetModel();
}
void ListModel::Filter(const std::string& text) {
    beginResetModel();
    if (gSaved.count(this) != 0 && !mRows.empty()) {
        mBytes = gSaved[this].bytes;
        mRows = gSaved[this].rows;
    }
    gSaved.erase(this);
    if (!text.empty()) {
        gSaved[this] = {mBytes, mRows};
        std::vector<char> bytes;
        std::vector<std::size_t> rows;
        for (std::size_t r = 0; r < mRows.size(); ++r) {
            const std::size_t end = r + 1 < mRows.size() ? mRows[r + 1] : mBytes.size();
            bool has = false;
            for (int c = 0; c < columnCount(); ++c)
                has |= Text(r, c).find(text) != std::string_view::npos;
            if (!has)
                continue;
            rows.push_back(bytes.size());
            bytes.insert(bytes.end(), mBytes.begin() + static_cast<long>(mRows[r]),
                         mBytes.begin() + static_cast<long>(end));
        }
        mBytes = bytes;
        mRows = rows;
    }
    mShown = static_cast<int>(mRows.size());
    endResetModel();
}
