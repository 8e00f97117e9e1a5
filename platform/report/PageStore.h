// SPDX-License-Identifier: GPL-3.0-or-later
// The pages on show, with a few around them: a page is worked out when it is first asked for, and forgotten
// when others have been. A page that can not be worked out says so on its paper, since it is asked for while
// a window is painted.
#pragma once

#include "platform/report/PageText.h"

#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace report {

using BuildPage = std::function<Page(std::size_t number)>;

class PageStore {
public:
    /// `measure` must outlive it.
    explicit PageStore(const FontMeasure& measure) : mMeasure(measure) {}

    /// Takes pages from `build` from now on, and forgets those it has.
    void Source(BuildPage build);
    /// Page `number` from 0. Never raises.
    std::shared_ptr<const PageText> At(std::size_t number);
    void Forget() { mPages.clear(); }
    void Forget(std::size_t number);

private:
    Page Build(std::size_t number) const;

    const FontMeasure& mMeasure;
    BuildPage mBuild;
    /// The latest first.
    std::list<std::pair<std::size_t, std::shared_ptr<const PageText>>> mPages;
};

} // namespace report
