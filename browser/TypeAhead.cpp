// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/TypeAhead.h"

#include "browser/ListModel.h"
#include "core/Controls.h"
#include "platform/text.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <algorithm>

namespace {

bool IsOneCharacterRepeated(const QString& text) {
    return std::all_of(text.begin(), text.end(), [&](QChar c) { return c == text.front(); });
}

class Prefix {
public:
    explicit Prefix(const QString& text)
        : mText(text),
          mBytes(text.toStdString()),
          mIsPlain(std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; })) {}

    bool Begins(std::string_view cell) const {
        if (mIsPlain)
            return EqualNoCase(cell.substr(0, mBytes.size()), mBytes);
        return Controls::Shown(cell).startsWith(mText, Qt::CaseInsensitive);
    }

private:
    QString mText;
    std::string mBytes;
    bool mIsPlain;
};

} // namespace

int TypeAhead::Find(const ListModel& list, int current, const QString& typed) {
    const int interval = QGuiApplication::styleHints()->keyboardInputInterval();
    if (!mSinceKey.isValid() || mSinceKey.elapsed() >= interval)
        mTyped.clear();
    mSinceKey.start();
    mTyped += typed;
    const int rows = list.rowCount();
    if (mTyped.isEmpty() || rows == 0)
        return -1;
    const bool walks = IsOneCharacterRepeated(mTyped);
    const Prefix prefix(walks ? mTyped.left(1) : mTyped);
    // A text that grows may still fit the row that it has led to.
    const int first = std::max(current, 0) + (walks && current >= 0 ? 1 : 0);
    for (int i = 0; i < rows; ++i) {
        const int row = (first + i) % rows;
        if (prefix.Begins(list.Text(static_cast<std::size_t>(row), 0)))
            return row;
    }
    return -1;
}
