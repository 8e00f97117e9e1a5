// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the row whose first column begins with what is being typed, without regard to case. Letters that
// follow each other quickly make one text; the same letter again and again walks the rows that begin with it.
// It compares the stored bytes where it can, so that a key is answered at once among a million rows.
#pragma once

#include <QElapsedTimer>
#include <QString>

class ListModel;

class TypeAhead {
public:
    /// The row that `typed` leads to from row `current` (-1 for none), or -1 where no row begins so. The
    /// search goes on at the first row behind the last.
    int Find(const ListModel& list, int current, const QString& typed);

private:
    QString mTyped;
    QElapsedTimer mSinceKey;
};
