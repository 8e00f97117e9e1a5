// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/DrillDown.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<std::string_view, 6> kNodeSuffixes = {"?MAIN", "?CPU", "?DRV", "?MSO", "?OS", "?IO"};
/// "?DEVDRV" is known, though no list makes it and no node bears it.
constexpr std::array<std::string_view, 9> kManyRowCategories = {
    "?UNI", "?DEV", "?DEVMB", "?DRVDETAIL", "?DEVNET", "?DEVDRV", "?PRN", "?DEVDISP", "?ODB"};
constexpr std::string_view kManyRows = "?MULTI?";

template <std::size_t Count>
bool Holds(const std::array<std::string_view, Count>& texts, std::string_view text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

} // namespace

DrillDown DrillDownFrom(std::string_view rowKey) {
    const std::size_t question = rowKey.find('?');
    if (question == std::string_view::npos)
        return {DrillKind::Nothing, {}};
    if (Holds(kNodeSuffixes, rowKey.substr(question)))
        return {DrillKind::Node, std::string(rowKey)};
    const std::size_t manyRows = rowKey.find(kManyRows);
    if (manyRows == std::string_view::npos)
        return {DrillKind::UnknownKey, std::string(rowKey)};
    // The category begins with the mark's last "?".
    const std::size_t begin = manyRows + kManyRows.size() - 1;
    const std::size_t end = rowKey.find('?', begin + 1);
    if (end == std::string_view::npos)
        return {DrillKind::Nothing, {}};
    const std::string_view category = rowKey.substr(begin, end - begin);
    if (!Holds(kManyRowCategories, category))
        return {DrillKind::UnknownKey, std::string(rowKey)};
    return {DrillKind::Node, std::string(rowKey.substr(0, question)).append(category)};
}
