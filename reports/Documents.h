// SPDX-License-Identifier: GPL-3.0-or-later
// The report documents that are built into the program: one for each report class, and those of its
// subreports. They stand as `.rpt` files in reports/documents.
#pragma once

#include "platform/report/Report.h"

#include <memory>
#include <string>

/// The text of the document `name`, such as "CRPRAM" or "SubPC". Raises error 53 where there is none.
std::string DocumentText(const std::string& name);

/// A new report of the class `name`, without data. Raises error 53 where there is none.
std::shared_ptr<report::Report> MakeReport(const std::string& name);
