// SPDX-License-Identifier: GPL-3.0-or-later
// The text of an inventory file. Sections, keys, fields and their order are a contract with the
// console, which reads fields by position and sections by searching for their headers.
#pragma once

#include "collector/Sources.h"
#include "collector/Surroundings.h"

#include <string>

namespace collector {

/// The whole file of the machine named `machine`, in the locale's 8-bit code page with CR LF line ends.
std::string InventoryText(const std::string& machine, const Sources& sources,
                          const Surroundings& surroundings);

} // namespace collector
