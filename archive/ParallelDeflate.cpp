// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/ParallelDeflate.h"

#include "platform/errors.h"

#include <zlib.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

namespace {

constexpr std::size_t kDictionary = std::size_t{32} << 10U;
/// The calling thread could not read fast enough for more.
constexpr unsigned kMostThreads = 32;
/// More than the library's own bound for a block of bytes that can not be compressed, and its end.
constexpr std::size_t kMostPacked =
    ParallelDeflate::kBlock + ParallelDeflate::kBlock / 8 + ParallelDeflate::kBlock / 64 + 64;

Bytef* Bytes(std::string& text, std::size_t from = 0) {
    return reinterpret_cast<Bytef*>(text.data() + from);
}

} // namespace

/// The library's memory for one thread.
class ParallelDeflate::Stream {
public:
    Stream() {
        mIsReady =
            deflateInit2(&mStream, kLevel, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) == Z_OK;
    }
    ~Stream() {
        if (mIsReady)
            deflateEnd(&mStream);
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    State Pack(Block& block) {
        if (!mIsReady || deflateReset(&mStream) != Z_OK)
            return State::Failed;
        const auto length = static_cast<uInt>(block.bytes.size() - block.dictionary);
        Bytef* const bytes = Bytes(block.bytes, block.dictionary);
        if (block.dictionary > 0 &&
            deflateSetDictionary(&mStream, Bytes(block.bytes), static_cast<uInt>(block.dictionary)) != Z_OK)
            return State::Failed;
        mStream.next_in = bytes;
        mStream.avail_in = length;
        mStream.next_out = Bytes(block.packed);
        mStream.avail_out = static_cast<uInt>(block.packed.size());
        const int result = deflate(&mStream, block.isLast ? Z_FINISH : Z_SYNC_FLUSH);
        if (result != (block.isLast ? Z_STREAM_END : Z_OK) || mStream.avail_out == 0)
            return State::Failed;
        block.packedLength = block.packed.size() - mStream.avail_out;
        block.checksum = static_cast<std::uint32_t>(crc32(0, bytes, length));
        return State::Packed;
    }

private:
    /// As the archive library compresses smaller files.
    static constexpr int kLevel = Z_BEST_COMPRESSION;

    z_stream mStream{};
    bool mIsReady;
};

ParallelDeflate::ParallelDeflate(Input input, std::function<void()> wait)
    : mInput(std::move(input)), mWait(std::move(wait)) {
    const unsigned threads = std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads);
    // Two for each thread, so that none waits for the caller's, and one that is being given out.
    mBlocks.resize(2 * threads + 1);
    for (Block& block : mBlocks)
        block.packed.resize(kMostPacked);
    mThreads.reserve(threads);
    try {
        // On one core a second thread would gain nothing.
        while (threads > 1 && mThreads.size() < threads)
            mThreads.emplace_back([this] { Work(); });
    } catch (const std::exception&) {
        // The system gives no more; those that run are enough.
        return;
    }
}

ParallelDeflate::~ParallelDeflate() {
    {
        const std::lock_guard lock(mMutex);
        mIsEnding = true;
    }
    mHasWork.notify_all();
    for (std::thread& thread : mThreads)
        thread.join();
}

std::size_t ParallelDeflate::Read(char* bytes, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        Fill();
        if (mCount == 0)
            break;
        const Block& block = mBlocks[mFirst];
        WaitFor(block);
        const std::size_t taken = std::min(count - done, block.packedLength - mGivenOut);
        std::copy_n(block.packed.data() + mGivenOut, taken, bytes + done);
        done += taken;
        mGivenOut += taken;
        if (mGivenOut < block.packedLength)
            continue;
        const std::size_t length = block.bytes.size() - block.dictionary;
        mChecksum = static_cast<std::uint32_t>(
            crc32_combine(mChecksum, block.checksum, static_cast<z_off_t>(length)));
        mLength += length;
        mGivenOut = 0;
        mFirst = (mFirst + 1) % mBlocks.size();
        --mCount;
    }
    return done;
}

/// Reads blocks until all are in use.
void ParallelDeflate::Fill() {
    while (!mIsAtEnd && mCount < mBlocks.size()) {
        Block& block = mBlocks[(mFirst + mCount) % mBlocks.size()];
        block.bytes = mBefore;
        block.dictionary = mBefore.size();
        block.bytes.resize(block.dictionary + kBlock);
        const std::size_t length = mInput(block.bytes.data() + block.dictionary, kBlock);
        block.bytes.resize(block.dictionary + length);
        // When the input ends exactly at a block's end, an empty last block ends the stream.
        block.isLast = mIsAtEnd = length < kBlock;
        mBefore.assign(block.bytes, block.bytes.size() - std::min(block.bytes.size(), kDictionary));
        {
            const std::lock_guard lock(mMutex);
            block.state = State::Waiting;
            mWaiting.push_back(&block);
        }
        ++mCount;
        mHasWork.notify_one();
        mWait();
    }
}

void ParallelDeflate::WaitFor(const Block& block) {
    constexpr std::chrono::milliseconds kWait{20};
    std::unique_lock lock(mMutex);
    if (mThreads.empty() && block.state == State::Waiting) {
        Block& own = *mWaiting.front();
        mWaiting.pop_front();
        own.state = Stream().Pack(own);
    }
    while (!mHasPacked.wait_for(lock, kWait, [&] { return block.state != State::Waiting; })) {
        lock.unlock();
        mWait();
        lock.lock();
    }
    if (block.state == State::Failed)
        Raise(Errors::kOutOfMemory);
}

/// What a thread does until the end. Nothing here raises.
void ParallelDeflate::Work() {
    Stream stream;
    std::unique_lock lock(mMutex);
    for (;;) {
        mHasWork.wait(lock, [this] { return mIsEnding || !mWaiting.empty(); });
        if (mIsEnding)
            return;
        Block& block = *mWaiting.front();
        mWaiting.pop_front();
        lock.unlock();
        const State state = stream.Pack(block);
        lock.lock();
        block.state = state;
        mHasPacked.notify_one();
    }
}
