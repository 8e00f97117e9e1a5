// SPDX-License-Identifier: GPL-3.0-or-later
// Puts the rows of a list in the order of one column's texts. The order is that of texts, for numbers and
// sizes too, without regard to case, see SortKeys.
#pragma once

#include "browser/ListRows.h"
#include "browser/Progress.h"

#include <cstdint>
#include <vector>

/// Row numbers of all rows in the order of `column`. Rows with equal texts stand in the order in which they
/// were added, in both directions.
std::vector<std::uint32_t> RowsInOrder(const ListRows& rows, int column, bool isDescending,
                                       const Progress& progress = {});
