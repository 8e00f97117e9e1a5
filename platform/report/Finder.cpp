// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/Finder.h"

#include "platform/errors.h"

#include <algorithm>
#include <chrono>

namespace report {

namespace {

constexpr std::chrono::milliseconds kSlice{30};

} // namespace

Finder::Finder(const FontMeasure& measure, QObject* parent) : QObject(parent), mMeasure(measure) {
    mTimer.setInterval(0);
    connect(&mTimer, &QTimer::timeout, this, &Finder::Slice);
}

void Finder::Source(BuildPage build) {
    Stop();
    mBuild = std::move(build);
}

void Finder::Begin(const Search& search) {
    mSearch = search;
    mDone = 0;
    mTimer.start();
}

void Finder::Stop() {
    mTimer.stop();
}

void Finder::Slice() {
    const auto end = std::chrono::steady_clock::now() + kSlice;
    try {
        while (std::chrono::steady_clock::now() < end)
            if (LookAtPage())
                return;
    } catch (const RunTimeError& error) {
        Stop();
        emit Failed(error.number, QString::fromStdString(error.description));
        return;
    }
    emit Moved(mDone, mSearch.pageCount);
}

bool Finder::LookAtPage() {
    const std::size_t count = mSearch.pageCount;
    if (mDone > count || count == 0 || !mBuild) {
        Stop();
        emit FoundNothing();
        return true;
    }
    const std::size_t page =
        mSearch.isForward ? (mSearch.page + mDone) % count : (mSearch.page + 2 * count - mDone) % count;
    const bool isFirst = mDone == 0;
    const bool hasWrapped =
        mDone == count || (!isFirst && (page < mSearch.page) == mSearch.isForward && page != mSearch.page);
    ++mDone;
    std::vector<TextRange> matches = PageText(mBuild(page), mMeasure).Find(mSearch.sought);
    if (isFirst && mSearch.match) {
        const TextRange& from = *mSearch.match;
        std::erase_if(matches, [&](const TextRange& match) {
            return mSearch.isForward ? !(from.first < match.first) : !(match.first < from.first);
        });
    }
    if (matches.empty())
        return false;
    Stop();
    emit Found(page, mSearch.isForward ? matches.front() : matches.back(), hasWrapped);
    return true;
}

} // namespace report
