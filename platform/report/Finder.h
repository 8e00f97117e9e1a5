// SPDX-License-Identifier: GPL-3.0-or-later
// Looks for a text in the pages of a report, page by page from where the reader is, around the report's end
// and back. It works in slices between events, so it can be stopped, and windows stay alive.
#pragma once

#include "platform/report/PageStore.h"

#include <QObject>
#include <QTimer>

#include <optional>

namespace report {

struct Search {
    QString sought;
    bool isForward = true;
    std::size_t pageCount = 0;
    /// Where it begins: behind, or before, a match, else at the beginning, or end, of a page.
    std::size_t page = 0;
    std::optional<TextRange> match;
};

class Finder final : public QObject {
    Q_OBJECT

public:
    /// `measure` must outlive it.
    Finder(const FontMeasure& measure, QObject* parent);

    /// Takes pages from `build` from now on; ends a search.
    void Source(BuildPage build);
    void Begin(const Search& search);
    void Stop();
    bool IsAtWork() const { return mTimer.isActive(); }

signals:
    /// The search is over: it has found, has found nothing, or could not read a page.
    void Found(std::size_t page, const report::TextRange& match, bool hasWrapped);
    void FoundNothing();
    void Failed(int number, const QString& description);
    /// Pages looked at, of how many.
    void Moved(std::size_t done, std::size_t total);

private:
    void Slice();
    /// Looks at the next page; true when the search is over.
    bool LookAtPage();

    const FontMeasure& mMeasure;
    BuildPage mBuild;
    Search mSearch;
    /// Pages looked at; the first is looked at again at the end, for what stands on the other side.
    std::size_t mDone = 0;
    QTimer mTimer;
};

} // namespace report
