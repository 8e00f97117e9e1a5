// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Admin.h"

#include "core/version.h"
#include "platform/codepage.h"
#include "platform/errors.h"
#include "platform/text.h"

#include <algorithm>

namespace {

std::string ShiftReversed(std::string_view text, int step) {
    constexpr int kHighestCode = 255;
    std::string codes = CodePage::System().Encode(text);
    std::reverse(codes.begin(), codes.end());
    std::string shifted;
    shifted.reserve(codes.size());
    for (const char code : codes) {
        const int next = static_cast<unsigned char>(code) + step;
        if (next < 0 || next > kHighestCode)
            Raise(Errors::kInvalidCall);
        shifted += static_cast<char>(next);
    }
    return CodePage::System().Decode(shifted);
}

} // namespace

namespace Admin {

std::string ScrambleText(std::string_view text) {
    return ShiftReversed(text, 1);
}

std::string UnscrambleText(std::string_view text) {
    return ShiftReversed(text, -1);
}

std::string GetShortPath(std::string_view path) {
    constexpr std::size_t kLongest = 164;
    return std::string(FirstCharacters(path, kLongest));
}

std::string VersionText() {
    return std::to_string(kVersionMajor) + "." + FormatNumber(kVersionMinor, "00");
}

std::string LongVersionText() {
    return std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "." +
           std::to_string(kVersionRevision);
}

} // namespace Admin
