// SPDX-License-Identifier: GPL-3.0-or-later
// Identifiers of device rows as text.
#pragma once

#include <string>

namespace Guid {

/// `count` identifiers joined by ";", each of exactly 36 characters: the four parts of the system's
/// identifier in upper-case hexadecimal, such as "1B4E28BA-2FA1-11D2-883F-0016D3CCA427". One that the system
/// can't give is left out.
std::string Create(int count);

} // namespace Guid
