// SPDX-License-Identifier: GPL-3.0-or-later
// Writes a complete report's rows to files of other programs. Every format streams: no report is held as a
// whole. Files are written beside their target under a temporary name and take its place at the end, so a
// full disk leaves nothing half-written under the chosen name.
#pragma once

#include "platform/report/Report.h"

#include <functional>
#include <string>

namespace report {

enum class ExportFormat { HTML, CSV, Text, XLSX };

/// Called now and then with the share done, 0 to 1; false stops the export, which leaves no file.
using ExportProgress = std::function<bool(double share)>;

/// Writes `report`, reading what is left of its data first. HTML and padded text follow the document: title,
/// groups, columns. CSV and XLSX hold a row per record with one column per field that the document shows,
/// numbers as numbers; the groups of a document that shows these alone, and subreports, follow as tables
/// (sheets) of their own. Returns false when it was stopped. Raises errors 61, 70, 75, 76 for the file.
bool Export(Report& report, ExportFormat format, const std::string& path, const ExportProgress& progress);

} // namespace report
