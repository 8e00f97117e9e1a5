// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/CaselessSearch.h"

#include "platform/text.h"

#include <algorithm>

namespace {

bool IsASCII(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

QString Decoded(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

CaselessSearch::CaselessSearch(std::string_view sought) : mFolded(LowerCase(sought)) {
    if (mFolded.empty())
        return;
    if (!IsASCII(sought))
        mBeyondASCII = Decoded(sought);
    const std::string first = mFolded.substr(0, 1);
    for (const std::string& form : {first, UpperCase(first)})
        mBegins.at(static_cast<unsigned char>(form.front())) = true;
}

bool CaselessSearch::IsIn(std::string_view text) const {
    if (mBeyondASCII.isEmpty())
        return IsBytesIn(text);
    return !IsASCII(text) && Decoded(text).contains(mBeyondASCII, Qt::CaseInsensitive);
}

bool CaselessSearch::IsBytesIn(std::string_view text) const {
    if (text.size() < mFolded.size())
        return false;
    const char* const last = text.data() + (text.size() - mFolded.size());
    for (const char* at = text.data(); at <= last; ++at)
        if (mFolded.empty() || (mBegins[static_cast<unsigned char>(*at)] &&
                                EqualNoCase(std::string_view(at, mFolded.size()), mFolded)))
            return true;
    return false;
}
