// SPDX-License-Identifier: GPL-3.0-or-later
// Compresses bytes on all cores into one raw deflate stream: https://www.rfc-editor.org/rfc/rfc1951. Its
// blocks are compressed apart, each with the 32 KB before it as dictionary, and end at a whole byte (a "sync
// flush"), so that one behind the other they are a stream as any reader expects it.
// The threads do nothing but compress; reading, waiting and giving out is the caller's thread's.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

class ParallelDeflate {
public:
    /// Reads up to `count` bytes; fewer only at the end.
    using Input = std::function<std::size_t(char* bytes, std::size_t count)>;

    static constexpr std::size_t kBlock = std::size_t{256} << 10U;

    /// `wait` is called between blocks, and about 50 times a second while one is waited for. Where the system
    /// gives no threads, the caller's own compresses.
    ParallelDeflate(Input input, std::function<void()> wait);
    /// Ends the threads, at the latest when each has finished its block.
    ~ParallelDeflate();
    ParallelDeflate(const ParallelDeflate&) = delete;
    ParallelDeflate& operator=(const ParallelDeflate&) = delete;

    /// Gives out up to `count` bytes of the stream; fewer only at its end. Raises error 7 where memory is
    /// short, and what `input` raises.
    std::size_t Read(char* bytes, std::size_t count);

    /// The bytes of input that have been given out, and their CRC-32.
    std::uint64_t Length() const { return mLength; }
    std::uint32_t Checksum() const { return mChecksum; }

private:
    enum class State { Waiting, Packed, Failed };
    struct Block {
        /// Behind its dictionary.
        std::string bytes;
        std::size_t dictionary = 0;
        bool isLast = false;
        std::string packed;
        std::size_t packedLength = 0;
        std::uint32_t checksum = 0;
        State state = State::Waiting;
    };
    class Stream;

    void Fill();
    void WaitFor(const Block& block);
    void Work();

    Input mInput;
    std::function<void()> mWait;
    /// A ring: `mCount` blocks from `mFirst` on are in use.
    std::vector<Block> mBlocks;
    std::size_t mFirst = 0;
    std::size_t mCount = 0;
    /// The dictionary of the next block.
    std::string mBefore;
    bool mIsAtEnd = false;
    /// Of the first block.
    std::size_t mGivenOut = 0;
    std::uint64_t mLength = 0;
    std::uint32_t mChecksum = 0;

    /// Guards what follows, and the state of each block.
    std::mutex mMutex;
    std::condition_variable mHasWork;
    std::condition_variable mHasPacked;
    std::deque<Block*> mWaiting;
    bool mIsEnding = false;
    std::vector<std::thread> mThreads;
};
