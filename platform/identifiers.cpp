// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/identifiers.h"

#include <sys/random.h>

#include <algorithm>
#include <chrono>
#include <cstring>

namespace {

/// Hands out random bytes from a buffer, so that a system call serves a few hundred identifiers.
class RandomBytes {
public:
    bool Take(std::uint8_t* target, std::size_t count) {
        if (mUsed + count > mBytes.size()) {
            // Requests up to 256 bytes are never cut short or interrupted.
            if (getrandom(mBytes.data(), mBytes.size(), 0) != static_cast<ssize_t>(mBytes.size()))
                return false;
            mUsed = 0;
        }
        std::memcpy(target, mBytes.data() + mUsed, count);
        mUsed += count;
        return true;
    }

private:
    std::array<std::uint8_t, 256> mBytes{};
    std::size_t mUsed = mBytes.size();
};

constexpr std::uint64_t kCountsPerMillisecond = 4096;

} // namespace

int CoCreateGuid(Identifier& identifier) {
    static RandomBytes random;
    static std::uint64_t last = 0;
    std::array<std::uint8_t, 8> tail{};
    if (!random.Take(tail.data(), tail.size()))
        return 1;
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    const auto milliseconds =
        static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count());
    // Time and count are one number that only grows, also when the clock is set back.
    last = std::max(last + 1, milliseconds * kCountsPerMillisecond);
    const std::uint64_t time = last / kCountsPerMillisecond;
    identifier.data1 = static_cast<std::uint32_t>(time >> 16U);
    identifier.data2 = static_cast<std::uint16_t>(time & 0xFFFFU);
    identifier.data3 = static_cast<std::uint16_t>(0x7000U | last % kCountsPerMillisecond);
    tail[0] = static_cast<std::uint8_t>(0x80U | (tail[0] & 0x3FU));
    identifier.data4 = tail;
    return 0;
}
