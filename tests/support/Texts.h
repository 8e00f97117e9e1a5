// SPDX-License-Identifier: GPL-3.0-or-later
// Texts that nobody would write by hand.
#pragma once

#include <random>
#include <string>
#include <string_view>

/// `piece`, `count` times.
inline std::string Repeated(std::string_view piece, int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += piece;
    return text;
}

/// `text` after one to three faults by chance: a byte has another value or some are lost, or a number or a
/// stretch of `other` stands in between. A short `other` mostly stays whole.
inline std::string Damaged(std::mt19937& random, std::string text, std::string_view other) {
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    for (std::size_t faults = 1 + below(3); faults > 0; --faults) {
        const std::size_t place = below(text.size() + 1);
        switch (below(4)) {
            case 0:
                text.replace(place, 1, 1, static_cast<char>(random()));
                break;
            case 1:
                text.erase(place, 1 + below(8));
                break;
            case 2:
                text.insert(place, std::to_string(random()));
                break;
            default:
                text.insert(place, other.substr(other.size() > 8 ? below(other.size()) : 0, 1 + below(40)));
        }
    }
    return text;
}
