// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListFiller.h"

#include <array>
#include <charconv>
#include <utility>

namespace {

constexpr int kValueWidth = 3000;

} // namespace

ListFiller::ListFiller(ListSink& list, const std::shared_ptr<ADODB::Connection>& connection,
                       std::shared_ptr<ADODB::Recordset>& recordset, Progress progress)
    : mList(list), mConnection(connection), mRecordset(recordset), mProgress(std::move(progress)) {}

std::shared_ptr<ADODB::Recordset> ListFiller::Open(const ListQuery& query, const std::string& machine,
                                                   std::int16_t confID) {
    mRecordset = std::make_shared<ADODB::Recordset>();
    mRecordset->Open(StatementText(query, machine, confID), mConnection);
    return mRecordset;
}

void ListFiller::Fill(const ColumnList& definition, const std::string& machine, std::int16_t confID) {
    for (const ListColumn& column : definition.columns)
        mList.AddColumn(column.caption, column.width);
    const std::shared_ptr<ADODB::Recordset> rows = Open(definition.query, machine, confID);
    for (; !rows->EndOfFile(); rows->MoveNext())
        AddRow(definition, rows->Fields());
    rows->Close();
}

void ListFiller::AddRow(const ColumnList& definition, const ADODB::FieldList& row) {
    MakeKey(definition, row);
    Step(row.Item(definition.machinePosition).Text());
    const ListColumn& first = definition.columns.front();
    const std::string_view text = DisplayText(first.rule, row.Item(first.position), mBuffer);
    if (definition.key == RowKey::Counted)
        mList.AddCountedRow(mKey, text, definition.icon);
    else
        mList.AddRow(mKey, text, definition.icon);
    int subItem = 0;
    for (const ListColumn& column : definition.columns.subspan(1))
        mList.SetSubItem(++subItem, DisplayText(column.rule, row.Item(column.position), mBuffer));
}

void ListFiller::MakeKey(const ColumnList& definition, const ADODB::FieldList& row) {
    mKey.clear();
    switch (definition.key) {
        case RowKey::None:
            break;
        case RowKey::Machine:
            mKey += row.Item(definition.machinePosition).Text();
            mKey += definition.keyEnd;
            break;
        case RowKey::Counted: {
            mKey += row.Item(definition.machinePosition).Text();
            mKey += definition.keyEnd;
            std::array<char, 12> digits;
            const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), mCounter++);
            mKey.append(digits.data(), end.ptr);
            break;
        }
        case RowKey::Device:
            mKey += "DEV_";
            mKey += row.Item(std::size_t{0}).Text();
            mKey += '_';
            mKey += row.Item(std::size_t{1}).Text();
            break;
    }
}

void ListFiller::Step(std::string_view machine) {
    if (!mProgress)
        return;
    if (machine != mMachine || mMachines == 0) {
        mMachine = machine;
        ++mMachines;
    }
    mProgress(mMachines);
}

void ListFiller::Fill(const ValueList& definition, const std::string& machine, std::int16_t confID) {
    mList.AddColumn("Description", kValueWidth);
    mList.AddColumn("Value", kValueWidth);
    for (const ValueGroup& group : definition.groups) {
        const std::shared_ptr<ADODB::Recordset> record = Open(group.query, machine, confID);
        AddLines(group, *record, definition.icon);
        record->Close();
    }
}

void ListFiller::AddLines(const ValueGroup& group, ADODB::Recordset& record, Image icon) {
    const bool isEmpty = record.EndOfFile();
    if (isEmpty && group.withoutRecord == WithoutRecord::NoLines)
        return;
    for (const ListLine& line : group.lines) {
        mList.AddRow({}, line.description, icon);
        mList.SetSubItem(1, isEmpty ? std::string_view()
                                    : DisplayText(line.rule, record.Fields().Item(line.position), mBuffer));
    }
}
