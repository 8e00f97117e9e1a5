// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors.h"

#include <array>
#include <cerrno>
#include <system_error>

namespace {

struct Standing {
    int number;
    const char* description;
};

constexpr std::array kDescriptions = {
    Standing{Errors::kInvalidCall, "Invalid procedure call or argument"},
    Standing{Errors::kOverflow, "Overflow"},
    Standing{Errors::kOutOfMemory, "Out of memory"},
    Standing{Errors::kOutOfRange, "Index out of range"},
    Standing{Errors::kTypeMismatch, "Type mismatch"},
    Standing{Errors::kFileNotFound, "File not found"},
    Standing{Errors::kFileExists, "File already exists"},
    Standing{Errors::kDiskFull, "Disk full"},
    Standing{Errors::kPermissionDenied, "Permission denied"},
    Standing{Errors::kPathAccess, "Path or file can not be accessed"},
    Standing{Errors::kPathNotFound, "Path not found"},
    Standing{Errors::kNoObject, "There is no object here"},
    Standing{Errors::kInvalidNull, "Invalid use of Null"},
    Standing{Errors::kDuplicateKey, "The collection has this key already"},
    Standing{Errors::kPrinter, "Printer error"},
    Standing{Errors::kKeyNotUnique, "The key is not unique in its collection"},
    Standing{Errors::kNoCurrentRow, "There is no current row"},
    Standing{Errors::kNoSuchField, "There is no field of this name or position"},
    Standing{Errors::kRecordsetClosed, "The recordset is closed"},
    Standing{Errors::kConnectionClosed, "The connection is closed"},
};

int NumberOf(int errorCode) {
    switch (errorCode) {
        case ENOENT:
            return Errors::kFileNotFound;
        case ENOTDIR:
            return Errors::kPathNotFound;
        case EEXIST:
            return Errors::kFileExists;
        case ENOSPC:
        case EDQUOT:
            return Errors::kDiskFull;
        case EACCES:
        case EPERM:
        case EROFS:
            return Errors::kPermissionDenied;
        default:
            return Errors::kPathAccess;
    }
}

} // namespace

void Raise(int number, const std::string& detail) {
    std::string text;
    for (const Standing& standing : kDescriptions)
        if (standing.number == number)
            text = standing.description;
    if (!detail.empty())
        text += (text.empty() ? "" : ": ") + detail;
    throw RunTimeError(number, text);
}

void RaiseSystem(int errorCode, const std::string& path) {
    const int number = NumberOf(errorCode);
    // The system's own words tell more than the number's where several codes share it.
    if (number == Errors::kPathAccess)
        throw RunTimeError(number, std::generic_category().message(errorCode) + ": " + path);
    Raise(number, path);
}
