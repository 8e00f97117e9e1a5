// SPDX-License-Identifier: GPL-3.0-or-later
// The customers' own reports: a report document (.RPT) beside the program, and a settings file (.RNI) of the
// same name that tells its title, whether the group tree shows, and its statement:
//     |Name=Staff list|GroupTree=1|SQL=SELECT * FROM Net|
// Names of files are matched without regard to case.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace CustomReports {

/// The name with what stands behind its last point, the point included, replaced by `extension`, which brings
/// its own point; appended where there is none.
std::string ChangeFileExtension(const std::string& filename, const std::string& extension);

/// Whether the file can be opened for reading.
bool FileExists(const std::string& filename);

/// The report documents of a folder that have a settings file, in the order of the listing.
std::vector<std::string> Available(const std::string& folder);

/// Reads a settings file, which is UTF-8 or in the system's 8-bit code page. False where it can't be read or
/// lacks a field; the outputs mean something on true alone. `displayGroup` is the field's number, 0 for none.
bool GetReportSet(const std::string& filename, std::string& reportName, std::string& queryString,
                  std::int16_t& displayGroup);

} // namespace CustomReports
