// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/ReportData.h"

#include "platform/Aside.h"
#include "platform/errors.h"
#include "platform/text.h"

#include <utility>

namespace report {

namespace {

const ADODB::Field* FindColumn(const ADODB::FieldList& columns, std::string_view name, std::size_t position) {
    for (std::size_t i = 0; i < columns.Count(); ++i)
        if (EqualNoCase(columns.Item(i).Name(), name))
            return &columns.Item(i);
    return position < columns.Count() ? &columns.Item(position) : nullptr;
}

} // namespace

void Report::Data::Pour(std::shared_ptr<ADODB::Recordset> source) {
    StopWatching();
    recordset = std::move(source);
    Restart();
}

void Report::Data::Restart() {
    StopWatching();
    rows.Clear();
    order.clear();
    sorting = RowOrder(document.groups);
    joined = JoinIndex();
    failure = nullptr;
    mHasStarted = false;
    isRead = recordset == nullptr;
    if (!isRead)
        Watch();
}

void Report::Data::Bind() {
    const ADODB::FieldList& columns = recordset->Fields();
    mBindings.clear();
    for (std::size_t i = 0; i < document.fields.size(); ++i) {
        const FieldDefinition& field = document.fields[i];
        const ADODB::Field* const column = FindColumn(columns, field.name, i);
        mBindings.push_back({column, column != nullptr && column->Type() == ADODB::kTypeFlag &&
                                         field.type == FieldDefinition::Type::Text});
    }
    mRow.assign(mBindings.size(), {});
}

void Report::Data::Keep(const Row& row) {
    if (const std::optional<Formula>& condition = selection ? selection : document.selection;
        condition && !condition->IsTrue(row))
        return;
    rows.Append(row);
    if (sorting.IsSorting())
        sorting.Add(row);
    if (joinField)
        joined.Add(row[*joinField]);
}

void Report::Data::Read(Clock::time_point end) {
    if (isRead)
        return;
    StopWatching();
    try {
        if (!mHasStarted) {
            Bind();
            // Going back would run the query again, so only who has moved is sent back.
            if (!recordset->IsAtStart())
                recordset->MoveFirst();
            mHasStarted = true;
            // To sort the rows is one long step of the engine.
            RunAside([this] { recordset->EndOfFile(); }, wait);
        }
        while (!recordset->EndOfFile()) {
            for (std::size_t i = 0; i < mBindings.size(); ++i) {
                const Binding& binding = mBindings[i];
                if (binding.column == nullptr)
                    continue;
                if (binding.isFlagAsText && !binding.column->IsNull())
                    mRow[i] = std::string(binding.column->Text());
                else
                    binding.column->Read(mRow[i]);
            }
            Keep(mRow);
            recordset->MoveNext();
            // The selection decides how long a row takes.
            if (Clock::now() >= end)
                return Watch();
        }
    } catch (...) {
        EndReading();
        throw;
    }
    EndReading();
}

void Report::Data::EndReading() {
    StopWatching();
    if (std::exchange(isRead, true))
        return;
    order = sorting.Take();
    joined.Close(order);
}

void Report::Data::RaiseKeptFailure() {
    if (failure)
        std::rethrow_exception(std::exchange(failure, nullptr));
}

void Report::Data::Watch() {
    recordset->OnInterference([this] {
        mIsWatching = false;
        // Who closes or writes must not be stopped by what a report can not read.
        try {
            Read(Clock::time_point::max());
        } catch (...) {
            failure = std::current_exception();
        }
    });
    mIsWatching = true;
}

void Report::Data::StopWatching() {
    if (std::exchange(mIsWatching, false))
        recordset->OnInterference({});
}

} // namespace report
