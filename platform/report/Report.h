// SPDX-License-Identifier: GPL-3.0-or-later
// A report at run time: a document, the data poured into it, and what callers set before it is shown. It
// draws nothing and shows no message; viewer, printer and exporters take it from here.
//
// Data comes from an open recordset, read in slices by Work and kept by the report. Before the recordset's
// connection is written to or closed, or the recordset is moved by somebody else, the report reads the rest
// at once: what is on show is whole.
#pragma once

#include "platform/adodb.h"
#include "platform/report/Document.h"
#include "platform/report/RowStore.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace report {

class Report;

/// Yields the text of a document by its name; raises error 53 where there is none.
using DocumentSource = std::function<std::string(const std::string& name)>;

/// The only kind of data that a table takes: an open recordset.
constexpr int kDataRecordset = 3;

/// The first table of a report.
class Table {
public:
    /// Pours `recordset` into the table. Each field is bound to the recordset's column of its name, without
    /// regard to case; a field that has none takes the column at its own position, and is empty where there
    /// is none either. Raises error 5 for another kind, 3704 for a closed recordset.
    void SetDataSource(std::shared_ptr<ADODB::Recordset> recordset, int kind = kDataRecordset);

private:
    friend class Report;
    explicit Table(Report& report) : mReport(report) {}
    Report& mReport;
};

/// A field or text object as the format event of a section sees it.
class ObjectFormat {
public:
    ObjectFormat(std::string name, std::string value, TextStyle& style)
        : mName(std::move(name)), mValue(std::move(value)), mStyle(style) {}
    const std::string& Name() const { return mName; }
    /// What the object shows in this row.
    const std::string& Value() const { return mValue; }
    void TextColor(std::uint32_t color) { mStyle.color = color; }
    void Bold(bool isBold) { mStyle.isBold = isBold; }

private:
    std::string mName;
    std::string mValue;
    TextStyle& mStyle;
};

/// Called for each row as its section is laid out, with the section's field and text objects in order. May be
/// called again for the same row: it must depend on the row alone.
using FormatEvent = std::function<void(std::vector<ObjectFormat>& objects)>;

/// An object of a section, as a walk over a report meets it.
class ReportObject {
public:
    report::Kind Kind() const { return mDefinition->kind; }
    const std::string& Name() const { return mDefinition->name; }
    /// The report of a subreport object; made at its first opening, one for all rows. Raises error 5 for any
    /// other kind of object.
    Report& OpenSubreport() const;

private:
    friend class Report;
    ReportObject(Report& report, const ObjectDefinition& definition)
        : mReport(&report), mDefinition(&definition) {}
    Report* mReport;
    const ObjectDefinition* mDefinition;
};

class Report {
public:
    /// A report of the document `text`; `name` stands in errors. Raises as ParseDocument does, also for its
    /// subreports, which `documents` yields; subreports of subreports are refused.
    Report(std::string_view text, const std::string& name, const DocumentSource& documents = {});
    ~Report();
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    /// A report of a document file; documents of subreports stand beside it. Raises the file's error, or
    /// ParseDocument's with the file's name.
    static std::shared_ptr<Report> OpenFile(const std::string& path);

    const Document& Definition() const { return mDocument; }

    /// Table `number` from 1. Raises error 9 for any but the first.
    Table& DatabaseTable(int number);

    /// Sections and their objects, each from 1. Raises error 9 where there is none.
    int SectionCount() const;
    int ObjectCount(int section) const;
    ReportObject Object(int section, int object);

    /// Sets the text of a text object, by its exact name. Raises error 9 where the report has none.
    void SetText(const std::string& objectName, const std::string& text);
    /// The text of a text object as it stands now.
    const std::string& Text(const ObjectDefinition& object) const;

    /// Shows only the rows for which `text` is true, in the place of the document's own selection, which an
    /// empty text brings back. Raises as Formula does. Set before the first Work; later it holds from the
    /// next Refresh on.
    void RecordSelectionFormula(const std::string& text, TextComparison comparison = TextComparison::NoCase);

    /// Sets the format event of the section of that name. Raises error 9 where there is none.
    void OnFormat(const std::string& sectionName, FormatEvent event);
    /// Null where none is set.
    const FormatEvent* EventOf(const Section& section) const;

    /// The printer to print on: driver name, printer name, port. All empty for the default one.
    void SelectPrinter(const std::string& driver, const std::string& printer, const std::string& port);
    const std::string& PrinterName() const { return mPrinterName; }

    /// Reads rows for at most `slice`; true while there are more. Without data the report is complete and
    /// empty. Subreports are read with it. Raises what the recordset raises.
    bool Work(std::chrono::milliseconds slice);
    /// Whether all rows are read, and sorted where a group asks for it. Not while a failure waits to be
    /// raised by Work or Finish: the recordset was disturbed, and its rest could not be read.
    bool IsComplete() const;
    /// Reads all that is left.
    void Finish();
    /// Searches and sorts for the first row aside, with `wait` called meanwhile; see Aside.h.
    void WhileSearching(const std::function<void()>& wait);
    /// Gives up reading: what is read so far is all there is.
    void Stop();
    /// What Refresh opens a recordset on whose own connection is closed.
    void RefreshOn(std::function<std::shared_ptr<ADODB::Connection>()> connection);
    /// Reads the data again from its recordset; raises error 3704 where that is closed, and there is no open
    /// connection to open it on.
    void Refresh();
    /// Counts up with each Refresh, SetDataSource and Stop, so that who shows the report lays it out again.
    int Generation() const { return mGeneration; }

    /// The selected rows in the order of the report. Rows are known as they are read, unless a group sorts:
    /// then none is before all are read. None is before those of the subreports are.
    std::size_t RowCount() const;
    /// Selected rows taken from the recordset so far, also while they wait to be sorted.
    std::size_t RowsRead() const;
    /// Row `index` of RowCount into `row`, its values in the order of the fields. Raises error 9 where there
    /// is none, and what a store on a failing disk raises.
    void ReadRow(std::size_t index, Row& row) const;
    /// Rows of a subreport that belong to a value of the main row's join field.
    std::vector<std::size_t> RowsJoinedTo(const ObjectDefinition& subreport, const ADODB::Value& value) const;

    /// The subreport of an object of this report.
    Report& Subreport(const ObjectDefinition& object) const;

    /// What an object shows for `row`, before any wrapping; page numbers and summaries are the layout's.
    std::string ObjectText(const ObjectDefinition& object, const Row& row) const;

private:
    friend class Table;
    struct Data;
    explicit Report(Document document);
    void LoadSubreports(const std::string& name, const DocumentSource& documents);
    Document mDocument;
    Table mTable;
    std::unique_ptr<Data> mData;
    std::string mPrinterName;
    int mGeneration = 0;
};

} // namespace report
