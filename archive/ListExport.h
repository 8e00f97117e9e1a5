// SPDX-License-Identifier: GPL-3.0-or-later
// Writes what the main window's list shows to a file of comma-separated lines: the texts on display, in the
// order on display, of the selected rows or of all where none is selected.
// Each text stands in quotes. Quotes and line ends within a text are left as they are: the programs that
// read these files expect them so.
#pragma once

#include "archive/ExportFile.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

class ListExport {
public:
    explicit ListExport(ExportContext context) : mContext(std::move(context)) {}

    void mnuExport();

private:
    void Export();
    void Write(ExportFile& file, const std::vector<std::string>& captions);
    std::vector<std::size_t> Rows() const;

    ExportContext mContext;
};
