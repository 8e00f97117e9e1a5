// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/Exports.h"

#include "platform/report/ExportTables.h"
#include "platform/report/ExportWriters.h"

#include <chrono>

namespace report {

namespace {

bool WriteAs(ExportFormat format, const Report& report, ReplacedFile& file, const ExportProgress& progress) {
    switch (format) {
        case ExportFormat::HTML:
            return WriteHTML(report, file, progress);
        case ExportFormat::CSV:
            return WriteCSV(report, file, progress);
        case ExportFormat::Text:
            return WriteText(report, file, progress);
        case ExportFormat::XLSX:
            return WriteXLSX(report, file, progress);
    }
    return false;
}

} // namespace

bool Export(Report& report, ExportFormat format, const std::string& path, const ExportProgress& progress) {
    using namespace std::chrono_literals;
    // A file that can not be made is told of before a long reading.
    ReplacedFile file(path);
    do {
        if (!GoesOn(progress, 0))
            return false;
    } while (report.Work(50ms));
    if (!WriteAs(format, report, file, progress))
        return false;
    file.Commit();
    return true;
}

} // namespace report
