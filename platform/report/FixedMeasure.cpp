// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/Page.h"
#include "platform/text.h"

namespace report {

double FixedMeasure::Width(const TextStyle& style, std::string_view text) const {
    return static_cast<double>(CharacterCount(text)) * style.size * 0.6;
}

double FixedMeasure::LineHeight(const TextStyle& style) const {
    return style.size * 1.2;
}

double FixedMeasure::Ascent(const TextStyle& style) const {
    return style.size * 0.9;
}

} // namespace report
