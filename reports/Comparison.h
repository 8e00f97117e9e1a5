// SPDX-License-Identifier: GPL-3.0-or-later
// The comparison of each machine's original configuration with its current one: the statement that lines the
// two up, the colours of its report, and Fix Changes, which makes the present the new original.
#pragma once

#include "platform/adodb.h"
#include "platform/report/Report.h"

#include <string>
#include <vector>

/// A row for each machine and component, with the columns COMPUTERNAME, Type, Org and Cur. "Hard Disk Size"
/// is lopsided, and stays so: Org is the sum of the fixed drives alone, Cur that of all drives.
std::string ComparisonStatement();

namespace CRPCompare {

/// The format event of the detail section: colours the first four fields by the fourth, the row's label, and
/// makes the first three bold. A label that it does not know changes nothing.
void Section3_Format(std::vector<report::ObjectFormat>& fields);

} // namespace CRPCompare

/// For each machine of `comparison` with a row whose Org and Cur differ, copies <machine>.inf over
/// <machine>.org in `folder`; every file of that name takes the copy, however it is written. Rows with a Null
/// don't differ. A machine without the file is passed over, as is one whose name is no file's name: clients
/// choose the names, and must not reach out of the folder by them. Raises the recordset's errors, such as
/// 3265 where it has no such columns, and the files'; what is copied by then stays.
void FixChanges(ADODB::Recordset& comparison, const std::string& folder);
