// SPDX-License-Identifier: GPL-3.0-or-later
// The viewer's icons: the desktop theme's by their standard names, the program's own where it has none.
#pragma once

#include <QIcon>

namespace report {

/// The icon of a standard name, such as "document-print"; none for an empty name.
QIcon ReportIcon(const char* name);

} // namespace report
