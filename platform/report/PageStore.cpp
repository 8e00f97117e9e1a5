// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PageStore.h"

#include "platform/errors.h"

#include <algorithm>

namespace report {

namespace {

/// More than stand on a screen at 25 %.
constexpr std::size_t kMostPages = 64;

} // namespace

void PageStore::Source(BuildPage build) {
    mBuild = std::move(build);
    Forget();
}

std::shared_ptr<const PageText> PageStore::At(std::size_t number) {
    const auto found = std::find_if(mPages.begin(), mPages.end(),
                                    [number](const auto& page) { return page.first == number; });
    if (found != mPages.end()) {
        mPages.splice(mPages.begin(), mPages, found);
        return mPages.front().second;
    }
    mPages.emplace_front(number, std::make_shared<PageText>(Build(number), mMeasure));
    if (mPages.size() > kMostPages)
        mPages.pop_back();
    return mPages.front().second;
}

void PageStore::Forget(std::size_t number) {
    mPages.remove_if([number](const auto& page) { return page.first == number; });
}

Page PageStore::Build(std::size_t number) const {
    if (!mBuild)
        return {};
    try {
        return mBuild(number);
    } catch (const RunTimeError& error) {
        PlacedText text;
        text.left = text.top = 42;
        text.width = 500;
        text.height = mMeasure.LineHeight(text.style);
        text.baseline = text.top + mMeasure.Ascent(text.style);
        text.text = "This page can not be shown. " + error.description;
        Page page;
        page.texts.push_back(std::move(text));
        return page;
    }
}

} // namespace report
