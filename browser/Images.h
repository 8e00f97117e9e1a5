// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures of the main window. The image list of the tree and of the list (imlTree) is always the
// system's own; commands take the desktop theme's icon where its naming standard has one.
#pragma once

#include <QIcon>

#include <cstdint>
#include <string_view>

/// Keys of the image list imlTree. PC_1 to PC_4 tell how long ago a machine's user logged on.
enum class Image : std::uint8_t {
    None,
    PC_1,
    PC_2,
    PC_3,
    PC_4,
    PC_CPU,
    PC_DEVICE,
    PC_DRIVE,
    PC_IO,
    PC_ODBC,
    PC_OFFICE,
    PC_OS,
    PC_PRINTER,
    PC_UNINSTALL,
    PC_MAIN
};

/// The image of a machine of age 1 (logged on today) to 4 (more than a week ago).
Image AgeImage(int age);

/// "PC_CPU" for PC_CPU; empty for None.
std::string_view ImageKey(Image image);

/// Loaded at its first use and shared. An empty icon for None.
const QIcon& TreeIcon(Image image);

/// The icon of a command; an empty one for an empty name.
QIcon CommandIcon(std::string_view name);

/// The icon of the program.
QIcon ProgramIcon();
