// SPDX-License-Identifier: GPL-3.0-or-later
// Archives as no packer would write them: entries are stored as they are, and say of themselves what a test
// wants them to.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct RawEntry {
    std::string name;
    std::string bytes;
    /// Kind and rights of the file, such as 0120777 for a link.
    unsigned mode = 0100644;
    /// Bit 0 says that it is encrypted.
    unsigned flags = 0;
    unsigned method = 0;
    /// What it says where that is not so.
    std::optional<std::uint32_t> checksum = {};
    std::optional<std::uint64_t> size = {};
    std::optional<std::uint64_t> packedSize = {};
};

/// The bytes of an archive, by the layout of PKWARE's APPNOTE 6.3, with 64-bit sizes.
std::string RawZip(const std::vector<RawEntry>& entries);
