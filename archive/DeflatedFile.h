// SPDX-License-Identifier: GPL-3.0-or-later
// A large file on its way into an archive: gives the archive library data that are compressed on all cores
// already, and which it takes as they are. Shows on the main window how far it has come.
// Nothing here raises while the library calls it; RaiseFailure tells what failed.
#pragma once

#include "archive/ParallelDeflate.h"
#include "platform/Descriptor.h"

#include <zip.h>

#include <exception>
#include <optional>
#include <string>

class ShownWork;

class DeflatedFile {
public:
    /// `work` must outlive it.
    DeflatedFile(const std::string& path, ShownWork& work);
    DeflatedFile(const DeflatedFile&) = delete;
    DeflatedFile& operator=(const DeflatedFile&) = delete;

    /// For zip_file_add, which takes it over. The file must outlive the archive.
    zip_source_t* Source(zip_error_t& error);

    /// Raises the failure that made the library give up, where it came from here.
    void RaiseFailure() const;

private:
    static zip_int64_t Call(void* file, void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t Answer(void* data, zip_uint64_t length, zip_source_cmd_t command);
    zip_int64_t Read(char* bytes, zip_uint64_t count);
    zip_int64_t Status(zip_stat_t& status) const;

    ShownWork& mWork;
    Descriptor mFile;
    /// Of the file as it was opened.
    std::uint64_t mLength;
    time_t mChanged;
    /// From the library's opening on.
    std::optional<ParallelDeflate> mDeflate;
    bool mIsAtEnd = false;
    std::exception_ptr mFailure;
    zip_error_t mError{};
};
