// SPDX-License-Identifier: GPL-3.0-or-later
// The exports by format, each over a complete report. They return false when they were stopped; the caller
// then gives the file up.
#pragma once

#include "platform/ReplacedFile.h"
#include "platform/report/Exports.h"

namespace report {

bool WriteHTML(const Report& report, ReplacedFile& file, const ExportProgress& progress);
bool WriteCSV(const Report& report, ReplacedFile& file, const ExportProgress& progress);
bool WriteText(const Report& report, ReplacedFile& file, const ExportProgress& progress);
/// Writes to the file's temporary name.
bool WriteXLSX(const Report& report, ReplacedFile& file, const ExportProgress& progress);

} // namespace report
