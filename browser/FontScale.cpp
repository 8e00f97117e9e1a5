// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/FontScale.h"

#include <QFontMetrics>

double FontScale(const QFontMetrics& metrics) {
    // Pixels at 96 to the inch.
    constexpr double kStandardLetter = 6;
    static const QString kAlphabet = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    return metrics.horizontalAdvance(kAlphabet) / (kStandardLetter * static_cast<double>(kAlphabet.size()));
}
