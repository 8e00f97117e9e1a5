// SPDX-License-Identifier: GPL-3.0-or-later
// What the archive library writes to: a file that takes its name when it is whole. Left to itself the library
// would grow a file beside its target that a listing shows, and that anybody may read.
// Nothing here raises, since the library calls it; its own functions tell what failed.
#pragma once

#include "platform/Descriptor.h"
#include "platform/ReplacedFile.h"

#include <zip.h>

class ZipFileSink {
public:
    /// `target` must outlive it, and is committed by the caller when the library has closed its archive.
    explicit ZipFileSink(const ReplacedFile& target);
    ZipFileSink(const ZipFileSink&) = delete;
    ZipFileSink& operator=(const ZipFileSink&) = delete;

    /// For zip_open_from_source, which takes it over. The sink must outlive the archive.
    zip_source_t* Source(zip_error_t& error);

private:
    static zip_int64_t Call(void* sink, void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t Answer(void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t Write(const void* data, zip_uint64_t length);
    zip_int64_t Checked(zip_int64_t result, int failure);

    Descriptor mFile;
    zip_error_t mError{};
};
