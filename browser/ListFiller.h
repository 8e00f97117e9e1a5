// SPDX-License-Identifier: GPL-3.0-or-later
// Fills an empty list from the database by the definition of a category's list. A failure leaves the rows
// that were added before, the failing one with its cells up to the failure, and the recordset open; what is
// to be said about it is the caller's.
#pragma once

#include "browser/CategoryLists.h"
#include "browser/ListSink.h"
#include "platform/adodb.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

class ListFiller {
public:
    /// Called at every row with the number of machines that the rows so far are of, taking a machine's rows
    /// to follow one another.
    using Progress = std::function<void(std::int32_t machines)>;

    /// `recordset` receives the recordset that is read, a new one for each query. All must outlive the
    /// filler.
    ListFiller(ListSink& list, const std::shared_ptr<ADODB::Connection>& connection,
               std::shared_ptr<ADODB::Recordset>& recordset, Progress progress = {});

    /// `machine` is not looked at where the list is of all machines.
    void Fill(const ColumnList& definition, const std::string& machine, std::int16_t confID);
    void Fill(const ValueList& definition, const std::string& machine, std::int16_t confID);

private:
    std::shared_ptr<ADODB::Recordset> Open(const ListQuery& query, const std::string& machine,
                                           std::int16_t confID);
    void AddRow(const ColumnList& definition, const ADODB::FieldList& row);
    void AddLines(const ValueGroup& group, ADODB::Recordset& record, Image icon);
    void Step(std::string_view machine);

    ListSink& mList;
    const std::shared_ptr<ADODB::Connection>& mConnection;
    std::shared_ptr<ADODB::Recordset>& mRecordset;
    Progress mProgress;

    std::int32_t mMachines = 0;
    std::string mMachine;
    std::string mBuffer;
};
