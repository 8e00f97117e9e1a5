// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/CaselessSearch.h"

#include "core/Controls.h"
#include "platform/codepage.h"
#include "platform/text.h"

#include <algorithm>

CaselessSearch::CaselessSearch(std::string_view sought) : mFolded(LowerCase(sought)) {
    if (!IsASCII(sought))
        mBeyondASCII = Controls::Shown(sought);
    const std::string first = mFolded.substr(0, 1);
    mBeginnings = UpperCase(first);
    if (mBeginnings != first)
        mBeginnings += first;
}

bool CaselessSearch::IsIn(std::string_view text) const {
    if (mBeyondASCII.isEmpty())
        return IsBytesIn(text);
    return !IsASCII(text) && Controls::Shown(text).contains(mBeyondASCII, Qt::CaseInsensitive);
}

bool CaselessSearch::IsBytesIn(std::string_view text) const {
    if (text.size() < mFolded.size())
        return false;
    // The places where the sought text could begin; the library looks for one byte much faster than a loop.
    const std::string_view begins = text.substr(0, text.size() - mFolded.size() + 1);
    for (const char first : mBeginnings)
        for (std::size_t at = begins.find(first); at != std::string_view::npos;
             at = begins.find(first, at + 1))
            if (EqualNoCase(text.substr(at, mFolded.size()), mFolded))
                return true;
    return mFolded.empty();
}
