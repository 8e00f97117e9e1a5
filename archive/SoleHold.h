// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps every other program from opening a database while it lives. It holds the file itself, so it stays
// good when the file gets another name or loses its last one.
#pragma once

#include "platform/Descriptor.h"

#include <string>

class SoleHold {
public:
    /// Raises error 70 where another program has the database at `path` open. This program must not: the
    /// locks of its own connection count, too. On a disk without locks it holds nothing.
    explicit SoleHold(const std::string& path);

private:
    bool mIsWritable;
    Descriptor mFile;
};
