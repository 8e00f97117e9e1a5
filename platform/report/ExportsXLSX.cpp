// SPDX-License-Identifier: GPL-3.0-or-later
// Workbooks. The library writes each sheet through a file without a name in the target's folder, so memory
// stays small. It does not look whether these files took all that was written; a full disk would leave a
// workbook that no program opens. So they are watched here, and the finished workbook is read once.
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/report/ExportTables.h"
#include "platform/report/ExportText.h"
#include "platform/report/ExportWriters.h"
#include "platform/text.h"

#include <xlsxwriter.h>
#include <zip.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <future>
#include <memory>
#include <set>

namespace report {

namespace {

constexpr std::size_t kSheetName = 31;
/// Of the progress, until the workbook is packed.
constexpr double kRowsShare = 0.6;
constexpr std::string_view kSheetEnd = "</worksheet>";

/// Names for sheets: at most 31 UTF-16 units without []:*?/\ or an apostrophe at either end, each but once.
class SheetNames {
public:
    std::string Next(const std::string& title) {
        std::string base;
        for (const char c : title)
            base += static_cast<unsigned char>(c) < 0x20 ||
                            std::string_view("[]:*?/\\'").find(c) != std::string_view::npos
                        ? ' '
                        : c;
        base = WorkbookText(base);
        // "History" is the one name that spreadsheets keep for themselves.
        if (base.find_first_not_of(' ') == std::string::npos || EqualNoCase(base, "History"))
            base = "Report " + base;
        std::string name(FirstUnits(base, kSheetName));
        for (int number = 2; !mTaken.insert(LowerCase(name)).second; ++number) {
            const std::string suffix = " (" + std::to_string(number) + ")";
            name = std::string(FirstUnits(base, kSheetName - suffix.size())) + suffix;
        }
        return name;
    }

private:
    std::set<std::string> mTaken;
};

class Workbook {
public:
    Workbook(const ReplacedFile& file, const std::string& title, std::size_t sheetRows)
        : mPath(file.TemporaryPath()),
          mTarget(file.Path()),
          mFolder(FolderOf(mPath)),
          mTitle(WorkbookText(title)),
          mSheetRows(sheetRows) {
        lxw_workbook_options options{};
        options.constant_memory = 1;
        options.tmpdir = mFolder.empty() ? nullptr : mFolder.data();
        options.use_zip64 = 1;
        mBook.reset(workbook_new_opt(mPath.c_str(), &options));
        if (!mBook)
            Raise(Errors::kOutOfMemory);
        lxw_doc_properties properties{};
        properties.title = mTitle.data();
        workbook_set_properties(mBook.get(), &properties);
        mBold = workbook_add_format(mBook.get());
        format_set_bold(mBold);
    }

    void BeginSheet(const ExportTable& table) {
        errno = 0;
        mSheet = workbook_add_worksheet(mBook.get(), mNames.Next(table.Title()).c_str());
        if (mSheet == nullptr)
            RaiseSystem(errno == 0 ? ENOSPC : errno, mTarget);
        ++mSheetCount;
        mRow = 0;
        lxw_col_t column = 0;
        for (const ExportColumn& definition : table.Columns()) {
            const std::string caption = WorkbookText(definition.name);
            const int width = std::clamp(definition.width, static_cast<int>(CharacterCount(caption)) + 4, 50);
            worksheet_set_column(mSheet, column, column, width, nullptr);
            worksheet_write_string(mSheet, 0, column++, caption.c_str(), mBold);
        }
        worksheet_freeze_panes(mSheet, 1, 0);
    }

    void Add(const ExportTable& table, const Row& values) {
        if (mRow == mSheetRows) {
            EndSheet(table);
            BeginSheet(table);
        }
        ++mRow;
        for (std::size_t column = 0; column < values.size(); ++column)
            AddCell(static_cast<lxw_col_t>(column), values[column], table.Columns()[column].isFlag);
        constexpr lxw_row_t kRowsBetweenLooks = 1024;
        if (mRow % kRowsBetweenLooks == 0)
            Look();
    }

    void EndSheet(const ExportTable& table) {
        if (!table.Columns().empty())
            worksheet_autofilter(mSheet, 0, 0, mRow, static_cast<lxw_col_t>(table.Columns().size() - 1));
        Look();
    }

    /// Packs the workbook. That can not be stopped, so it goes on beside, while `progress` is told every now
    /// and then; false where it asked to stop.
    bool Close(const ExportProgress& progress) {
        using namespace std::chrono_literals;
        std::future<void> packing = std::async(std::launch::async, [this] { Pack(); });
        bool goesOn = true;
        while (packing.wait_for(50ms) != std::future_status::ready)
            goesOn = goesOn && GoesOn(progress, kRowsShare);
        packing.get();
        return goesOn;
    }

private:
    struct FreeBook {
        void operator()(lxw_workbook* book) const { lxw_workbook_free(book); }
    };

    void AddCell(lxw_col_t column, const ADODB::Value& value, bool isFlag) {
        const auto* const number = std::get_if<double>(&value);
        if (number != nullptr && isFlag)
            worksheet_write_boolean(mSheet, mRow, column, *number != 0 ? 1 : 0, nullptr);
        else if (number != nullptr && std::isfinite(*number))
            worksheet_write_number(mSheet, mRow, column, *number, nullptr);
        else if (const std::string text = WorkbookText(FormatValue(Format(), value, isFlag)); !text.empty())
            worksheet_write_string(mSheet, mRow, column, text.c_str(), nullptr);
    }

    void Pack() {
        errno = 0;
        if (workbook_close(mBook.release()) != LXW_NO_ERROR)
            RaiseSystem(errno == 0 ? ENOSPC : errno, mTarget);
        for (int number = 1; number <= mSheetCount; ++number)
            Check("xl/worksheets/sheet" + std::to_string(number) + ".xml");
    }

    /// Raises the error of the sheet's file, if it had one.
    void Look() {
        errno = 0;
        if (std::fflush(mSheet->optimize_tmpfile) != 0 || std::ferror(mSheet->optimize_tmpfile) != 0)
            RaiseSystem(errno == 0 ? ENOSPC : errno, mTarget);
    }

    /// Reads a sheet of the finished workbook, whose checksum is compared on the way, up to its end.
    void Check(const std::string& entry) const {
        struct Discard {
            void operator()(zip_t* archive) const { zip_discard(archive); }
        };
        struct CloseEntry {
            void operator()(zip_file_t* file) const { zip_fclose(file); }
        };
        const std::unique_ptr<zip_t, Discard> archive(zip_open(mPath.c_str(), ZIP_RDONLY, nullptr));
        const std::unique_ptr<zip_file_t, CloseEntry> file(
            archive ? zip_fopen(archive.get(), entry.c_str(), 0) : nullptr);
        std::string tail;
        std::array<char, std::size_t{64} << 10U> block{};
        zip_int64_t count = file ? 1 : 0;
        while (count > 0) {
            count = zip_fread(file.get(), block.data(), block.size());
            if (count > 0)
                tail.append(block.data(), static_cast<std::size_t>(count));
            if (tail.size() > kSheetEnd.size())
                tail.erase(0, tail.size() - kSheetEnd.size());
        }
        if (count < 0 || tail != kSheetEnd)
            RaiseSystem(ENOSPC, mTarget);
    }

    std::string mPath;
    /// The name that the user knows it by.
    std::string mTarget;
    std::string mFolder;
    std::string mTitle;
    std::size_t mSheetRows;
    std::unique_ptr<lxw_workbook, FreeBook> mBook;
    lxw_format* mBold = nullptr;
    lxw_worksheet* mSheet = nullptr;
    SheetNames mNames;
    int mSheetCount = 0;
    lxw_row_t mRow = 0;
};

} // namespace

bool WriteXLSX(const Report& report, ReplacedFile& file, const ExportProgress& progress,
               std::size_t sheetRows) {
    static_assert(kSheetRows == LXW_ROW_MAX - 1);
    const std::vector<ExportTable> tables = ExportTable::Of(report);
    const auto count = static_cast<double>(tables.size());
    Workbook book(file, report.Definition().title, sheetRows);
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const auto number = static_cast<double>(i);
        ExportSteps steps(progress, kRowsShare * number / count, kRowsShare * (number + 1) / count,
                          tables[i].StepCount());
        book.BeginSheet(tables[i]);
        tables[i].ForEachRow(steps, [&](const Row& values) { book.Add(tables[i], values); });
        if (steps.IsStopped())
            return false;
        book.EndSheet(tables[i]);
    }
    return book.Close(progress);
}

} // namespace report
