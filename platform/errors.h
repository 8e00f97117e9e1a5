// SPDX-License-Identifier: GPL-3.0-or-later
// The one exception of the system, and the numbers it carries. A command catches it in one place and
// shows the box that its own texts ask for; where no handler exists, the application shows a
// "Run-time error" box and ends with status 1. Other failures of the database carry negative numbers.
#pragma once

#include <exception>
#include <string>
#include <utility>

struct RunTimeError final : std::exception {
    RunTimeError(int errorNumber, std::string text) : number(errorNumber), description(std::move(text)) {}
    const char* what() const noexcept override { return description.c_str(); }

    int number;
    std::string description;
};

namespace Errors {
constexpr int kInvalidCall = 5;
constexpr int kOverflow = 6;
constexpr int kOutOfMemory = 7;
constexpr int kOutOfRange = 9;
constexpr int kTypeMismatch = 13;
constexpr int kFileNotFound = 53;
constexpr int kFileExists = 58;
constexpr int kDiskFull = 61;
constexpr int kPermissionDenied = 70;
constexpr int kPathAccess = 75;
constexpr int kPathNotFound = 76;
constexpr int kNoObject = 91;
constexpr int kInvalidNull = 94;
constexpr int kDuplicateKey = 457;
constexpr int kPrinter = 482;
constexpr int kKeyNotUnique = 35602;
constexpr int kNoCurrentRow = 3021;
constexpr int kNoSuchField = 3265;
constexpr int kRecordsetClosed = 3704;
constexpr int kConnectionClosed = 3709;
/// What the database engine refuses for reasons of its own.
constexpr int kDatabase = -1;
} // namespace Errors

/// Throws the RunTimeError of `number` with its standing description; `detail`, such as a path, is appended
/// behind a colon.
[[noreturn]] void Raise(int number, const std::string& detail = {});

/// Throws the RunTimeError that stands for the system's error code `errorCode` (an errno value) on `path`.
[[noreturn]] void RaiseSystem(int errorCode, const std::string& path);
