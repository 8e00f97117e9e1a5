// SPDX-License-Identifier: GPL-3.0-or-later
// The process-wide values, one copy each. They are read and written at the edge, by windows and by the
// session; what does the work takes what it needs as arguments.
#pragma once

#include "platform/adodb.h"

#include <cstdint>
#include <memory>
#include <string>

class MainForm;

/// The one connection to the inventory database, made anew by each ConnectSinDatabase.
inline std::shared_ptr<ADODB::Connection> gConnection;
/// The shared recordset: every reader makes a new one in it.
inline std::shared_ptr<ADODB::Recordset> gRecordset;
/// Path of the database; empty when none is open.
inline std::string gDatabasePath;
inline std::string gDatabasePassword;
/// Last import as "yyyy-mm-dd"; "n/a" when the database has none; "N/A" when a machine has no logon date.
inline std::string gLastImportDate;
/// The signed-on logon user; empty without a logon.
inline std::string gCurrentUser;
/// The folder of the inventory files and that of the backups.
inline std::string gImportDir;
inline std::string gBackupDir;
/// The import time frame: unit (0 seconds, 1 minutes, 2 hours, 3 days) and count.
inline std::int16_t gImportTime = 0;
inline std::int16_t gImportTimeNum = 0;
/// Rows of Net at the last tree build.
inline std::int32_t gMachineCount = 0;
/// True asks the main window's activate handler to open the database when it next runs.
inline bool gFirstActivation = false;
/// The one main window; null before the start-up has made it.
inline MainForm* gMainForm = nullptr;
