// SPDX-License-Identifier: GPL-3.0-or-later
// The exports by format, each over a complete report. They return false when they were stopped; the caller
// then gives the file up.
#pragma once

#include "platform/ReplacedFile.h"
#include "platform/report/Exports.h"

#include <cstddef>

namespace report {

bool WriteHTML(const Report& report, ReplacedFile& file, const ExportProgress& progress);
bool WriteCSV(const Report& report, ReplacedFile& file, const ExportProgress& progress);
bool WriteText(const Report& report, ReplacedFile& file, const ExportProgress& progress);
/// Rows of a workbook's sheet below its captions; what is more goes on in a further sheet.
constexpr std::size_t kSheetRows = 1048575;
/// Writes to the file's temporary name.
bool WriteXLSX(const Report& report, ReplacedFile& file, const ExportProgress& progress,
               std::size_t sheetRows = kSheetRows);

} // namespace report
