// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures of the main window. The image list of the tree and of the list (imlTree) is always the
// system's own; commands take the desktop theme's icon where its naming standard has one.
#pragma once

#include "browser/ImageKeys.h"

#include <QIcon>

#include <string_view>

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
