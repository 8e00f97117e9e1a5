// SPDX-License-Identifier: GPL-3.0-or-later
// The printers of this machine's own CUPS, and which one is the user's default. A print server elsewhere is
// never asked: where the user's settings name one, there are no printers.
#pragma once

#include "platform/report/Printing.h"

#include <string>
#include <string_view>
#include <vector>

namespace report {

/// Whether a CUPS server's name means this machine: the path of a local socket, or a name of the loopback.
bool IsLocalServer(std::string_view name);

/// Whether the print server that the user's settings name is this machine's.
bool HasLocalServer();

/// The printers in the server's order; none where the server is elsewhere, or is not running. The device's
/// address is the printer's port.
std::vector<Printer> LocalPrinters();

/// The name of the default printer: the environment's, the user's, the server's; empty where there is none.
std::string DefaultPrinterName();

/// `options`, a user's file of printer options, with `name` made the default; each printer keeps its options.
std::string WithDefaultPrinter(std::string_view options, std::string_view name);

/// Makes `name` the default in the file of printer options of the user's own folder. Raises the file's error.
void SetUsersDefaultPrinter(const std::string& name);

} // namespace report
