// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/ReportIcons.h"

#include <QString>

/// The pictures are in a library, which the program's start does not initialise. Outside of any namespace, as
/// the toolkit asks.
static void LoadPictures() {
    Q_INIT_RESOURCE(report_icons);
}

namespace report {

QIcon ReportIcon(const char* name) {
    LoadPictures(); // again does nothing
    const QString standard = QString::fromLatin1(name);
    if (standard.isEmpty())
        return {};
    return QIcon::fromTheme(standard, QIcon(QStringLiteral(":/report/icons/%1.svg").arg(standard)));
}

} // namespace report
