// SPDX-License-Identifier: GPL-3.0-or-later
// Keys of the image lists: imlTree, which the tree and the list share, and from Pr_No on ImgDevice, that of
// the properties. Apart from the pictures themselves, so that what only names an image needs no toolkit.
#pragma once

#include <cstdint>

/// PC_1 to PC_4 tell how long ago a machine's user logged on.
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
    PC_MAIN,
    Pr_No,
    Pr_Yes,
    OS,
    DRIVE,
    ODBC,
    PRINTER,
    UNINSTALL
};
