// SPDX-License-Identifier: GPL-3.0-or-later
// An open file of the system that closes itself, and whole reads and writes on it. Everything raises the
// error that the system gives, with the path that the caller knows the file by.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>

class Descriptor {
public:
    /// Opens `path`; `mode` counts where `flags` make the file.
    Descriptor(const std::string& path, int flags, mode_t mode = 0);
    /// Takes over an open file.
    Descriptor(int number, std::string path);
    ~Descriptor();
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return mNumber; }

    void Write(std::string_view bytes);
    /// Reads up to `count` bytes; fewer only at the file's end.
    std::size_t Read(char* bytes, std::size_t count);
    /// For a file that was written: some file systems tell only here that the disk is full.
    void Close();

private:
    int mNumber;
    std::string mPath;
};
