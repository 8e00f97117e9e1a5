// SPDX-License-Identifier: GPL-3.0-or-later
// Comma-separated values by RFC 4180 in UTF-8, with the mark at the front by which spreadsheets know it.
#include "platform/report/ExportTables.h"
#include "platform/report/ExportText.h"
#include "platform/report/ExportWriters.h"

namespace report {

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnd = "\r\n";

void WriteHeader(const ExportTable& table, ReplacedFile& file) {
    std::string line;
    for (const ExportColumn& column : table.Columns()) {
        if (&column != &table.Columns().front())
            line += ',';
        AppendCSV(line, column.name);
    }
    file.Write(line.append(kLineEnd));
}

void AppendValue(std::string& line, const ADODB::Value& value, bool isFlag) {
    if (std::holds_alternative<std::string>(value))
        AppendCSV(line, std::get<std::string>(value));
    else
        line += FormatValue(Format(), value, isFlag);
}

} // namespace

bool WriteCSV(const Report& report, ReplacedFile& file, const ExportProgress& progress) {
    const std::vector<ExportTable> tables = ExportTable::Of(report);
    const auto count = static_cast<double>(tables.size());
    file.Write(kMark);
    std::string line;
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const ExportTable& table = tables[i];
        const auto number = static_cast<double>(i);
        if (i > 0) {
            // A line without a value parts the tables, and the title tells which one begins.
            line = kLineEnd;
            AppendCSV(line, table.Title());
            file.Write(line.append(kLineEnd));
        }
        WriteHeader(table, file);
        ExportSteps steps(progress, number / count, (number + 1) / count, table.StepCount());
        table.ForEachRow(steps, [&](const Row& values) {
            line.clear();
            for (std::size_t column = 0; column < values.size(); ++column) {
                if (column > 0)
                    line += ',';
                AppendValue(line, values[column], table.Columns()[column].isFlag);
            }
            file.Write(line.append(kLineEnd));
        });
        if (steps.IsStopped())
            return false;
    }
    return true;
}

} // namespace report
