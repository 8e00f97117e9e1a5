// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/DeflatedFile.h"

#include "core/LongWork.h"
#include "platform/errors.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <new>

DeflatedFile::DeflatedFile(const std::string& path, ShownWork& work)
    : mWork(work), mFile(path, O_RDONLY | O_NONBLOCK) {
    struct stat status {};
    if (fstat(mFile.Number(), &status) != 0)
        RaiseSystem(errno, path);
    mLength = static_cast<std::uint64_t>(status.st_size);
    mChanged = status.st_mtime;
    zip_error_init(&mError);
}

zip_source_t* DeflatedFile::Source(zip_error_t& error) {
    return zip_source_function_create(&DeflatedFile::Call, this, &error);
}

void DeflatedFile::RaiseFailure() const {
    if (mFailure)
        std::rethrow_exception(mFailure);
}

zip_int64_t DeflatedFile::Call(void* file, void* data, zip_uint64_t length, zip_source_cmd_t command) {
    auto& self = *static_cast<DeflatedFile*>(file);
    try {
        return self.Answer(data, length, command);
    } catch (const RunTimeError&) {
        self.mFailure = std::current_exception();
    } catch (const std::bad_alloc&) {
        self.mFailure = std::make_exception_ptr(RunTimeError(Errors::kOutOfMemory, "Out of memory"));
    }
    zip_error_set(&self.mError, ZIP_ER_INTERNAL, 0);
    return -1;
}

zip_int64_t DeflatedFile::Answer(void* data, zip_uint64_t length, zip_source_cmd_t command) {
    switch (command) {
        case ZIP_SOURCE_SUPPORTS:
            return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                                  ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
        case ZIP_SOURCE_OPEN:
            mDeflate.emplace([this](char* bytes, std::size_t count) { return mFile.Read(bytes, count); },
                             [this] {
                                 mWork.Look(static_cast<double>(mDeflate->Length()),
                                            static_cast<double>(mLength));
                             });
            return 0;
        case ZIP_SOURCE_READ:
            return Read(static_cast<char*>(data), length);
        case ZIP_SOURCE_STAT:
            return Status(*static_cast<zip_stat_t*>(data));
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&mError, data, length);
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_FREE:
            return 0;
        default:
            zip_error_set(&mError, ZIP_ER_OPNOTSUPP, 0);
            return -1;
    }
}

zip_int64_t DeflatedFile::Read(char* bytes, zip_uint64_t count) {
    const std::size_t given = mDeflate->Read(bytes, count);
    mIsAtEnd = given < count;
    return static_cast<zip_int64_t>(given);
}

/// The library asks before it reads, for the size, and again when it has closed, for the checksum as well.
zip_int64_t DeflatedFile::Status(zip_stat_t& status) const {
    zip_stat_init(&status);
    status.valid = ZIP_STAT_COMP_METHOD | ZIP_STAT_SIZE | ZIP_STAT_MTIME;
    status.comp_method = ZIP_CM_DEFLATE;
    status.size = mIsAtEnd ? mDeflate->Length() : mLength;
    status.mtime = mChanged;
    if (mIsAtEnd) {
        status.valid |= ZIP_STAT_CRC;
        status.crc = mDeflate->Checksum();
    }
    return sizeof(zip_stat_t);
}
