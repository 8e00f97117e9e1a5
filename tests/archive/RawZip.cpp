// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/archive/RawZip.h"

namespace {

std::string Number(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i) & 0xFFU);
    return text;
}

std::uint32_t Checksum(const std::string& bytes) {
    std::uint32_t sum = ~0U;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1U ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~sum;
}

} // namespace

std::string RawZip(const std::vector<RawEntry>& entries) {
    constexpr std::uint32_t kInExtra = 0xFFFFFFFFU;
    std::string local;
    std::string central;
    for (const RawEntry& entry : entries) {
        const std::string head = Number(45, 2) + Number(entry.flags, 2) + Number(entry.method, 2) +
                                 Number(0, 4) + Number(entry.checksum.value_or(Checksum(entry.bytes)), 4) +
                                 Number(kInExtra, 4) + Number(kInExtra, 4) + Number(entry.name.size(), 2) +
                                 Number(20, 2);
        const std::string extra = Number(1, 2) + Number(16, 2) +
                                  Number(entry.size.value_or(entry.bytes.size()), 8) +
                                  Number(entry.packedSize.value_or(entry.bytes.size()), 8);
        // Made on the system whose kinds of files the mode tells.
        central += "PK\1\2" + Number(3 << 8, 2) + head + Number(0, 6) +
                   Number(std::uint64_t{entry.mode} << 16U, 4) + Number(local.size(), 4) + entry.name + extra;
        local += "PK\3\4" + head + entry.name + extra + entry.bytes;
    }
    return local + central + "PK\5\6" + Number(0, 4) + Number(entries.size(), 2) + Number(entries.size(), 2) +
           Number(central.size(), 4) + Number(local.size(), 4) + Number(0, 2);
}
