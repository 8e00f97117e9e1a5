// SPDX-License-Identifier: GPL-3.0-or-later
// Writes all that the database knows of one machine, or of all, to one file: fifteen labelled sections, each
// the result of one query. Full Export writes comma-separated lines, Export To Text padded columns. They
// differ in a few texts as well, and are meant to.
// Rows go from the query to the file one by one; both may hold a whole site.
#pragma once

#include "archive/ExportFile.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

/// A text of `count` blanks, valid until the next call.
std::string_view spaces(std::size_t count);

class MachineDump {
public:
    explicit MachineDump(ExportContext context) : mContext(std::move(context)) {}

    void mnuPopFullExport();
    void mnuPopTxtlExport();

    /// Each writes the rows of `statement`, which it opens in gRecordset: a line of the columns' names, a
    /// line a row, an empty line. Text that reads as a date is written "yyyy-mm-dd", whatever its column.
    /// Raises what the database or the file refuses.
    void DumpSectionCsv(const std::string& statement, ExportFile& file);
    /// Pads by the columns' defined sizes, in characters. The padding is the absolute difference and three
    /// blanks: a value that is longer than its column is followed by more of them, not by fewer.
    void DumpSectionText(const std::string& statement, ExportFile& file);

private:
    struct Variant;
    struct Section;

    void Export(const Variant& variant);
    void WriteSection(const Variant& variant, const Section& section, const std::string& machine,
                      ExportFile& file);

    ExportContext mContext;
};
