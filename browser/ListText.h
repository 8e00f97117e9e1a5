// SPDX-License-Identifier: GPL-3.0-or-later
// A list as text for the clipboard: cells apart by tabs, lines ended by CR LF. A spreadsheet takes it as it
// is.
#pragma once

#include <QString>

#include <cstddef>
#include <string>

class ListModel;

/// Every caption is followed by a tab, the last one too; of a row's texts the last is not.
std::string HeadingLine(const ListModel& items);
QString RowLine(const ListModel& items, std::size_t row);
