// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/Report.h"

#include "platform/errors.h"
#include "platform/files.h"
#include "platform/report/ReportData.h"

#include <algorithm>
#include <utility>

namespace report {

namespace {

[[noreturn]] void RaiseMalformed(const std::string& name, const std::string& cause) {
    throw RunTimeError(kMalformed, name + ": " + cause);
}

template <class Visit>
void ForEachObject(Document& document, const Visit& visit) {
    for (Section& section : document.sections)
        for (Line& line : section.lines)
            for (ObjectDefinition& object : line.objects)
                visit(object);
}

} // namespace

void Table::SetDataSource(std::shared_ptr<ADODB::Recordset> recordset, int kind) {
    if (kind != kDataRecordset)
        Raise(Errors::kInvalidCall, "the kind of data " + std::to_string(kind));
    if (recordset == nullptr)
        Raise(Errors::kNoObject);
    if (!recordset->IsOpen())
        Raise(Errors::kRecordsetClosed);
    mReport.mData->Pour(std::move(recordset));
    ++mReport.mGeneration;
}

Report& ReportObject::OpenSubreport() const {
    if (Kind() != report::Kind::Subreport)
        Raise(Errors::kInvalidCall, Name());
    return mReport->Subreport(*mDefinition);
}

Report::Report(Document document)
    : mDocument(std::move(document)), mTable(*this), mData(std::make_unique<Data>(mDocument)) {}

Report::Report(std::string_view text, const std::string& name, const DocumentSource& documents)
    : Report(ParseDocument(text, name)) {
    LoadSubreports(name, documents);
}

Report::~Report() = default;

void Report::LoadSubreports(const std::string& name, const DocumentSource& documents) {
    ForEachObject(mDocument, [&](ObjectDefinition& object) {
        if (object.kind != Kind::Subreport)
            return;
        if (!documents)
            Raise(Errors::kFileNotFound, object.documentName);
        Document child = ParseDocument(documents(object.documentName), object.documentName);
        ForEachObject(child, [&](const ObjectDefinition& inner) {
            if (inner.kind == Kind::Subreport)
                RaiseMalformed(name, "the subreport " + object.name + " has a subreport itself");
        });
        const auto field = FindField(object.childReference, child.tableName, child.fields);
        if (!field)
            RaiseMalformed(name, "the subreport " + object.name + " has no field " + object.childReference);
        object.childField = *field;
        std::unique_ptr<Report> report(new Report(std::move(child)));
        report->mData->joinField = field;
        mData->subreports[object.name] = std::move(report);
    });
}

std::shared_ptr<Report> Report::OpenFile(const std::string& path) {
    return std::make_shared<Report>(ReadFile(path), FileNameOf(path), [&](const std::string& name) {
        // A name with a folder in it is none of a document.
        if (name != FileNameOf(name))
            Raise(Errors::kFileNotFound, name);
        const std::string folder = path == FileNameOf(path) ? "." : FolderOf(path);
        for (const std::string& candidate : {name, name + ".rpt"})
            if (const std::optional<std::string> found = FindFile(folder, candidate))
                return ReadFile(*found);
        Raise(Errors::kFileNotFound, name);
    });
}

Table& Report::DatabaseTable(int number) {
    if (number != 1)
        Raise(Errors::kOutOfRange, std::to_string(number));
    return mTable;
}

int Report::SectionCount() const {
    return static_cast<int>(mDocument.sections.size());
}

int Report::ObjectCount(int section) const {
    if (section < 1 || section > SectionCount())
        Raise(Errors::kOutOfRange, std::to_string(section));
    std::size_t count = 0;
    for (const Line& line : mDocument.sections[static_cast<std::size_t>(section) - 1].lines)
        count += line.objects.size();
    return static_cast<int>(count);
}

ReportObject Report::Object(int section, int object) {
    if (object < 1 || object > ObjectCount(section))
        Raise(Errors::kOutOfRange, std::to_string(object));
    auto place = static_cast<std::size_t>(object) - 1;
    for (const Line& line : mDocument.sections[static_cast<std::size_t>(section) - 1].lines) {
        if (place < line.objects.size())
            return {*this, line.objects[place]};
        place -= line.objects.size();
    }
    Raise(Errors::kOutOfRange, std::to_string(object));
}

void Report::SetText(const std::string& objectName, const std::string& text) {
    bool isFound = false;
    ForEachObject(mDocument, [&](ObjectDefinition& object) {
        if (object.kind == Kind::Text && object.name == objectName) {
            object.text = text;
            isFound = true;
        }
    });
    if (!isFound)
        Raise(Errors::kOutOfRange, objectName);
}

const std::string& Report::Text(const ObjectDefinition& object) const {
    return object.text;
}

void Report::RecordSelectionFormula(const std::string& text, TextComparison comparison) {
    if (text.empty())
        mData->selection.reset();
    else
        mData->selection.emplace(text, mDocument.tableName, mDocument.fields, mDocument.formulas, comparison);
}

void Report::OnFormat(const std::string& sectionName, FormatEvent event) {
    if (std::none_of(mDocument.sections.begin(), mDocument.sections.end(),
                     [&](const Section& section) { return section.name == sectionName; }))
        Raise(Errors::kOutOfRange, sectionName);
    mData->events[sectionName] = std::move(event);
}

const FormatEvent* Report::EventOf(const Section& section) const {
    const auto found = mData->events.find(section.name);
    return found == mData->events.end() || !found->second ? nullptr : &found->second;
}

void Report::SelectPrinter(const std::string& /*driver*/, const std::string& printer,
                           const std::string& /*port*/) {
    // The printer's name alone tells printers apart here.
    mPrinterName = printer;
}

bool Report::Work(std::chrono::milliseconds slice) {
    const auto end = Data::Clock::now() + slice;
    // Rows of the main report can be laid out only with those of its subreports.
    for (const auto& [name, report] : mData->subreports) {
        report->mData->RaiseKeptFailure();
        report->mData->Read(end);
    }
    mData->RaiseKeptFailure();
    mData->Read(end);
    return !IsComplete();
}

bool Report::IsComplete() const {
    return mData->IsComplete() && std::all_of(mData->subreports.begin(), mData->subreports.end(),
                                              [](const auto& entry) { return entry.second->IsComplete(); });
}

void Report::Finish() {
    while (Work(std::chrono::hours(1))) {
    }
}

void Report::WhileSearching(const std::function<void()>& wait) {
    mData->wait = wait;
    for (const auto& [name, report] : mData->subreports)
        report->WhileSearching(wait);
}

void Report::Stop() {
    if (IsComplete())
        return;
    for (const auto& [name, report] : mData->subreports)
        report->mData->EndReading();
    mData->EndReading();
    ++mGeneration;
}

void Report::RefreshOn(std::function<std::shared_ptr<ADODB::Connection>()> connection) {
    mData->refreshConnection = std::move(connection);
}

void Report::Refresh() {
    const auto open = [this](const Data& data) {
        if (data.recordset == nullptr || data.recordset->IsOpen())
            return;
        const auto connection = mData->refreshConnection ? mData->refreshConnection() : nullptr;
        if (!connection || !connection->IsOpen())
            Raise(Errors::kRecordsetClosed);
        data.recordset->ActiveConnection(connection);
        data.recordset->Open();
    };
    open(*mData);
    for (const auto& [name, report] : mData->subreports)
        open(*report->mData);
    for (const auto& [name, report] : mData->subreports)
        report->mData->Restart();
    mData->Restart();
    ++mGeneration;
}

std::size_t Report::RowCount() const {
    for (const auto& [name, report] : mData->subreports)
        if (!report->mData->isRead)
            return 0;
    return mData->sorting.IsSorting() && !mData->isRead ? 0 : mData->rows.Count();
}

std::size_t Report::RowsRead() const {
    return mData->rows.Count();
}

void Report::ReadRow(std::size_t index, Row& row) const {
    if (mData->order.empty())
        return mData->rows.Read(index, row);
    if (index >= mData->order.size())
        Raise(Errors::kOutOfRange, std::to_string(index));
    mData->rows.Read(mData->order[index], row);
}

std::vector<std::size_t> Report::RowsJoinedTo(const ObjectDefinition& subreport,
                                              const ADODB::Value& value) const {
    const std::span<const std::uint32_t> rows = Subreport(subreport).mData->joined.Find(value);
    return {rows.begin(), rows.end()};
}

Report& Report::Subreport(const ObjectDefinition& object) const {
    const auto found = mData->subreports.find(object.name);
    if (found == mData->subreports.end())
        Raise(Errors::kInvalidCall, object.name);
    return *found->second;
}

std::string Report::ObjectText(const ObjectDefinition& object, const Row& row) const {
    if (object.kind == Kind::Text)
        return object.text;
    if (object.kind != Kind::Field)
        return {};
    std::string text;
    if (object.source.kind == Source::Kind::Field) {
        if (object.source.index < row.size())
            text = FormatValue(object.format, row[object.source.index],
                               mDocument.fields[object.source.index].IsFlag());
    } else if (object.source.kind == Source::Kind::Formula) {
        const Formula& formula = mDocument.formulas[object.source.index].formula;
        text = FormatValue(object.format, formula.Evaluate(row), formula.IsFlag());
    }
    return text.empty() ? text : object.prefix + text + object.suffix;
}

} // namespace report
