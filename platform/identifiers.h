// SPDX-License-Identifier: GPL-3.0-or-later
// Fresh 128-bit identifiers. Later ones are greater than earlier ones of the same process, so that rows
// keyed by them append to an index instead of landing all over it.
#pragma once

#include <array>
#include <cstdint>

struct Identifier {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::array<std::uint8_t, 8> data4{};
};

/// Fills `identifier` by the layout of RFC 9562, version 7: milliseconds since 1970, a count within them,
/// random bits. Returns 0, or another number where the system has no random bits to give.
int CoCreateGuid(Identifier& identifier);
