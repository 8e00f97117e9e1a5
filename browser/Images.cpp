// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/Images.h"

#include "core/Controls.h"

#include <QString>

#include <array>

/// A static library's resources are linked in only when they are asked for by name, outside of any namespace.
static void LoadResources() {
    Q_INIT_RESOURCE(icons);
}

using Controls::Shown;

namespace {

constexpr std::array<std::string_view, 22> kKeys = {
    "",       "PC_1",    "PC_2",      "PC_3",  "PC_4",       "PC_CPU",       "PC_DEVICE", "PC_DRIVE",
    "PC_IO",  "PC_ODBC", "PC_OFFICE", "PC_OS", "PC_PRINTER", "PC_UNINSTALL", "PC_MAIN",   "Pr_No",
    "Pr_Yes", "OS",      "DRIVE",     "ODBC",  "PRINTER",    "UNINSTALL"};

QIcon OwnIcon(std::string_view name) {
    LoadResources();
    const QString file = QStringLiteral(":/icons/") + Shown(name) + QStringLiteral(".svg");
    QIcon icon(file);
    // Else the style blends the picture of a selected row into the row's own colour.
    icon.addFile(file, {}, QIcon::Selected);
    return icon;
}

} // namespace

Image AgeImage(int age) {
    return static_cast<Image>(static_cast<int>(Image::PC_1) + age - 1);
}

std::string_view ImageKey(Image image) {
    return kKeys.at(static_cast<std::size_t>(image));
}

const QIcon& TreeIcon(Image image) {
    static std::array<QIcon, kKeys.size()> icons;
    QIcon& icon = icons.at(static_cast<std::size_t>(image));
    if (image != Image::None && icon.isNull())
        icon = OwnIcon(ImageKey(image));
    return icon;
}

QIcon CommandIcon(std::string_view name) {
    return name.empty() ? QIcon() : QIcon::fromTheme(Shown(name), OwnIcon(name));
}

QIcon ProgramIcon() {
    return OwnIcon("velmora");
}
