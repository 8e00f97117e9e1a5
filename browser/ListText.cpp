// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListText.h"

#include "browser/ListModel.h"

std::string HeadingLine(const ListModel& items) {
    std::string line;
    for (const ListColumnHeader& column : items.Columns())
        line += column.caption + "\t";
    return line + "\r\n";
}

QString RowLine(const ListModel& items, std::size_t row) {
    std::string text;
    const int columns = static_cast<int>(items.Columns().size());
    for (int column = 0; column < columns; ++column) {
        if (column > 0)
            text += '\t';
        text += items.Text(row, column);
    }
    return QString::fromStdString(text + "\r\n");
}
