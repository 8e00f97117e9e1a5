// SPDX-License-Identifier: GPL-3.0-or-later
// Sizes are twips in the logic and in the settings store; widgets take device-independent pixels.
#pragma once

#include <cmath>

constexpr int kTwipsPerPixel = 15;

/// Whole pixels, rounded to the nearest.
inline int ToPixels(double twips) {
    return static_cast<int>(std::lround(twips / kTwipsPerPixel));
}

constexpr int ToTwips(int pixels) {
    return pixels * kTwipsPerPixel;
}
