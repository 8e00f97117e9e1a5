// SPDX-License-Identifier: GPL-3.0-or-later
// The system's widths are meant for a dialog font of 8 points. They are kept as they are; what is shown of
// them grows and shrinks with the font in use, so that a column holds as many characters in any.
#pragma once

class QFontMetrics;

/// The average width of a font's letters, as a part of that of the standard font's. Letters are measured as
/// dialog units have it: the whole alphabet in both cases.
double FontScale(const QFontMetrics& metrics);
