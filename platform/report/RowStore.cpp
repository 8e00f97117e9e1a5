// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/RowStore.h"

#include "platform/errors.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string_view>

namespace report {

namespace {

/// Rows lie in blocks of about this size. The file is read by whole blocks where rows are read in turn.
constexpr std::size_t kBlockBytes = 8192;
/// Blocks of the file that are kept after reading; a block has one place among them.
constexpr std::size_t kCachedBlocks = 64;

// A row is its values. A value begins with a number whose two lowest bits are its kind.
enum : unsigned { kNull = 0, kWhole = 1, kReal = 2, kText = 3 };

/// Whole numbers up to here keep their exact value and take few bytes.
constexpr double kMostWhole = 9007199254740992.0;

void PutNumber(std::string& bytes, std::uint64_t number) {
    for (; number >= 0x80; number >>= 7)
        bytes += static_cast<char>(number | 0x80);
    bytes += static_cast<char>(number);
}

std::uint64_t TakeNumber(const char*& from) {
    std::uint64_t number = 0;
    for (int shift = 0;; shift += 7) {
        const auto byte = static_cast<unsigned char>(*from++);
        number |= static_cast<std::uint64_t>(byte & 0x7FU) << shift;
        if (byte < 0x80)
            return number;
    }
}

bool IsWhole(double number) {
    return number == std::trunc(number) && std::abs(number) < kMostWhole &&
           std::bit_cast<std::uint64_t>(number) != std::bit_cast<std::uint64_t>(-0.0);
}

void PutValue(std::string& bytes, const ADODB::Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        PutNumber(bytes, (std::uint64_t{text->size()} << 2) | kText);
        bytes += *text;
    } else if (const auto* number = std::get_if<double>(&value)) {
        if (IsWhole(*number)) {
            // The sign goes to the lowest bit, so that small negative numbers are short too.
            const auto whole = static_cast<std::int64_t>(*number);
            const auto folded =
                (static_cast<std::uint64_t>(whole) << 1) ^ (whole < 0 ? ~std::uint64_t{0} : 0);
            PutNumber(bytes, (folded << 2) | kWhole);
        } else {
            PutNumber(bytes, kReal);
            std::array<char, sizeof(double)> raw;
            std::memcpy(raw.data(), number, raw.size());
            bytes.append(raw.data(), raw.size());
        }
    } else {
        PutNumber(bytes, kNull);
    }
}

void TakeValue(const char*& from, ADODB::Value& value) {
    const std::uint64_t head = TakeNumber(from);
    switch (head & 3) {
        case kWhole: {
            const std::uint64_t folded = head >> 2;
            const std::uint64_t whole = (folded >> 1) ^ ((folded & 1) != 0 ? ~std::uint64_t{0} : 0);
            value = static_cast<double>(static_cast<std::int64_t>(whole));
            break;
        }
        case kReal: {
            double number = 0;
            std::memcpy(&number, from, sizeof number);
            from += sizeof number;
            value = number;
            break;
        }
        case kText: {
            auto* const text = std::get_if<std::string>(&value);
            (text != nullptr ? *text : value.emplace<std::string>()).assign(from, head >> 2);
            from += head >> 2;
            break;
        }
        default:
            value = std::monostate();
    }
}

/// A file without a name, which goes with the object.
class TemporaryFile {
public:
    TemporaryFile() = default;
    ~TemporaryFile() { Close(); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    std::uint64_t Append(std::string_view bytes) {
        if (mHandle < 0)
            Open();
        const std::uint64_t place = mLength;
        while (!bytes.empty()) {
            const ssize_t written = pwrite(mHandle, bytes.data(), bytes.size(), static_cast<off_t>(mLength));
            if (written < 0 && errno == EINTR)
                continue;
            // Past a limit on the length of files there is no more room than on a full disk.
            if (written <= 0)
                RaiseSystem(written == 0 || errno == EFBIG ? ENOSPC : errno, mFolder);
            mLength += static_cast<std::uint64_t>(written);
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        return place;
    }

    void Read(std::uint64_t place, char* bytes, std::size_t length) const {
        while (length > 0) {
            const ssize_t taken = pread(mHandle, bytes, length, static_cast<off_t>(place));
            if (taken < 0 && errno == EINTR)
                continue;
            if (taken <= 0)
                RaiseSystem(taken < 0 ? errno : EIO, mFolder);
            place += static_cast<std::uint64_t>(taken);
            bytes += taken;
            length -= static_cast<std::size_t>(taken);
        }
    }

    void Close() {
        if (mHandle >= 0)
            close(mHandle);
        mHandle = -1;
        mLength = 0;
    }

private:
    void Open() {
        std::error_code failure;
        mFolder = std::filesystem::temp_directory_path(failure).string();
        if (failure)
            RaiseSystem(failure.value(), mFolder);
        std::string path = mFolder + "/report-XXXXXX";
        // The file is the owner's alone, as mkostemp makes it.
        mHandle = mkostemp(path.data(), O_CLOEXEC);
        if (mHandle < 0)
            RaiseSystem(errno, mFolder);
        unlink(path.c_str());
    }

    std::string mFolder;
    int mHandle = -1;
    std::uint64_t mLength = 0;
};

} // namespace

struct RowStore::Implementation {
    struct Block {
        std::size_t firstRow = 0;
        std::size_t length = 0;
        std::unique_ptr<char[]> bytes;
        /// Where it lies in the file, once its bytes went there.
        std::uint64_t place = 0;
    };
    struct CachedBlock {
        std::size_t number = SIZE_MAX;
        std::string bytes;
    };

    std::size_t memoryLimit = 0;
    std::size_t memoryUsed = 0;
    std::vector<Block> blocks;
    /// Where each row begins within its block.
    std::vector<std::uint16_t> starts;
    /// The last block, which still grows, and its first row.
    std::string open;
    std::size_t openRow = 0;
    std::string encoded;
    TemporaryFile file;

    mutable std::array<CachedBlock, kCachedBlocks> cache;
    mutable std::size_t lastRead = SIZE_MAX;
    mutable std::string alone;

    void CloseBlock() {
        Block block;
        block.firstRow = openRow;
        block.length = open.size();
        if (memoryUsed + open.size() <= memoryLimit) {
            block.bytes = std::make_unique_for_overwrite<char[]>(open.size());
            std::memcpy(block.bytes.get(), open.data(), open.size());
            memoryUsed += open.size();
        } else {
            block.place = file.Append(open);
        }
        blocks.push_back(std::move(block));
        open.clear();
        openRow = starts.size();
    }

    std::string_view BytesOf(std::size_t row) const {
        if (row >= openRow) {
            const std::size_t end = row + 1 == starts.size() ? open.size() : starts[row + 1];
            return std::string_view(open).substr(starts[row], end - starts[row]);
        }
        const auto behind =
            std::upper_bound(blocks.begin(), blocks.end(), row,
                             [](std::size_t sought, const Block& other) { return sought < other.firstRow; });
        const Block& block = *std::prev(behind);
        const std::size_t nextBlock = behind == blocks.end() ? openRow : behind->firstRow;
        const std::size_t end = row + 1 == nextBlock ? block.length : starts[row + 1];
        const std::size_t length = end - starts[row];
        if (block.bytes)
            return {block.bytes.get() + starts[row], length};
        const auto number = static_cast<std::size_t>(behind - blocks.begin()) - 1;
        CachedBlock& cached = cache[number % kCachedBlocks];
        if (cached.number != number) {
            // Where rows are read at random, the next one hardly lies in the same block.
            if (row != lastRead + 1) {
                alone.resize(length);
                file.Read(block.place + starts[row], alone.data(), length);
                return alone;
            }
            cached.number = SIZE_MAX;
            cached.bytes.resize(block.length);
            file.Read(block.place, cached.bytes.data(), block.length);
            cached.number = number;
        }
        return std::string_view(cached.bytes).substr(starts[row], length);
    }
};

RowStore::RowStore(std::size_t memoryLimit) : mThis(std::make_unique<Implementation>()) {
    mThis->memoryLimit = memoryLimit;
}

RowStore::~RowStore() = default;

void RowStore::Append(std::span<const ADODB::Value> row) {
    Implementation& self = *mThis;
    self.encoded.clear();
    for (const ADODB::Value& value : row)
        PutValue(self.encoded, value);
    if (!self.open.empty() && self.open.size() + self.encoded.size() > kBlockBytes)
        self.CloseBlock();
    self.starts.push_back(static_cast<std::uint16_t>(self.open.size()));
    self.open += self.encoded;
}

std::size_t RowStore::Count() const {
    return mThis->starts.size();
}

void RowStore::Read(std::size_t index, Row& row) const {
    const Implementation& self = *mThis;
    if (index >= Count())
        Raise(Errors::kOutOfRange, std::to_string(index));
    const std::string_view bytes = self.BytesOf(index);
    const char* from = bytes.data();
    const char* const end = from + bytes.size();
    std::size_t position = 0;
    for (; from < end; ++position) {
        if (position == row.size())
            row.emplace_back();
        TakeValue(from, row[position]);
    }
    row.resize(position);
    self.lastRead = index;
}

void RowStore::Clear() {
    const std::size_t memoryLimit = mThis->memoryLimit;
    mThis = std::make_unique<Implementation>();
    mThis->memoryLimit = memoryLimit;
}

} // namespace report
