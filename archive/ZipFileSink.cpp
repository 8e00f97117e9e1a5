// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/ZipFileSink.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

ZipFileSink::ZipFileSink(const ReplacedFile& target) : mFile(target.TemporaryPath(), O_RDWR | O_NOFOLLOW) {
    zip_error_init(&mError);
}

zip_source_t* ZipFileSink::Source(zip_error_t& error) {
    return zip_source_function_create(&ZipFileSink::Call, this, &error);
}

zip_int64_t ZipFileSink::Call(void* sink, void* data, zip_uint64_t length, zip_source_cmd_t command) {
    return static_cast<ZipFileSink*>(sink)->Answer(data, length, command);
}

zip_int64_t ZipFileSink::Answer(void* data, zip_uint64_t length, zip_source_cmd_t command) {
    switch (command) {
        case ZIP_SOURCE_SUPPORTS:
            // The library asks for the reading ones too, and calls none of them on a new archive.
            return zip_source_make_command_bitmap(
                ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL,
                ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_BEGIN_WRITE,
                ZIP_SOURCE_COMMIT_WRITE, ZIP_SOURCE_ROLLBACK_WRITE, ZIP_SOURCE_WRITE, ZIP_SOURCE_SEEK_WRITE,
                ZIP_SOURCE_TELL_WRITE, ZIP_SOURCE_REMOVE, -1);
        case ZIP_SOURCE_STAT:
            zip_stat_init(static_cast<zip_stat_t*>(data));
            return sizeof(zip_stat_t);
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&mError, data, length);
        case ZIP_SOURCE_OPEN:
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_FREE:
        case ZIP_SOURCE_BEGIN_WRITE:
        case ZIP_SOURCE_COMMIT_WRITE:
        case ZIP_SOURCE_ROLLBACK_WRITE:
        case ZIP_SOURCE_REMOVE:
            return 0;
        case ZIP_SOURCE_WRITE:
            return Write(data, length);
        case ZIP_SOURCE_SEEK_WRITE: {
            const auto* const place = ZIP_SOURCE_GET_ARGS(zip_source_args_seek_t, data, length, &mError);
            if (place == nullptr)
                return -1;
            return lseek(mFile.Number(), place->offset, place->whence) < 0 ? Checked(-1, ZIP_ER_SEEK) : 0;
        }
        case ZIP_SOURCE_TELL_WRITE:
            return Checked(lseek(mFile.Number(), 0, SEEK_CUR), ZIP_ER_TELL);
        default:
            zip_error_set(&mError, ZIP_ER_OPNOTSUPP, 0);
            return -1;
    }
}

zip_int64_t ZipFileSink::Write(const void* data, zip_uint64_t length) {
    const auto* const bytes = static_cast<const char*>(data);
    zip_uint64_t done = 0;
    while (done < length) {
        const ssize_t written = write(mFile.Number(), bytes + done, length - done);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return Checked(-1, ZIP_ER_WRITE);
        done += static_cast<zip_uint64_t>(written);
    }
    return static_cast<zip_int64_t>(length);
}

zip_int64_t ZipFileSink::Checked(zip_int64_t result, int failure) {
    if (result < 0)
        zip_error_set(&mError, failure, errno);
    return result;
}
