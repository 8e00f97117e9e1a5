// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ListFiller.h"

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
    const std::string_view machine = row.Item(definition.machinePosition).Text();
    if (mProgress)
        Step(machine);
    const ListColumn& first = definition.columns.front();
    // A name that is there shows as it is under the rules of these columns; it need not be read again.
    const std::string_view text = first.position == definition.machinePosition && !machine.empty()
                                      ? machine
                                      : DisplayText(first.rule, row.Item(first.position), mBuffer);
    switch (definition.key) {
        case RowKey::None:
            mList.AddRow({}, text, definition.icon);
            break;
        case RowKey::Machine:
            mList.AddRow(std::string(machine) + std::string(definition.keyEnd), text, definition.icon);
            break;
        case RowKey::Counted:
            mList.AddCountedRow(machine, definition.keyEnd, text, definition.icon);
            break;
        case RowKey::Device:
            mList.AddRow("DEV_" + std::string(row.Item(std::size_t{0}).Text()) + "_" + std::string(machine),
                         text, definition.icon);
            break;
    }
    int subItem = 0;
    for (const ListColumn& column : definition.columns.subspan(1))
        mList.SetSubItem(++subItem, DisplayText(column.rule, row.Item(column.position), mBuffer));
}

void ListFiller::Step(std::string_view machine) {
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
