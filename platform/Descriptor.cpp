// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Descriptor.h"

#include "platform/errors.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

Descriptor::Descriptor(const std::string& path, int flags, mode_t mode)
    : Descriptor(open(path.c_str(), flags | O_CLOEXEC, mode), path) {}

Descriptor::Descriptor(int number, std::string path) : mNumber(number), mPath(std::move(path)) {
    if (mNumber < 0)
        RaiseSystem(errno, mPath);
}

Descriptor::~Descriptor() {
    if (mNumber >= 0)
        close(mNumber);
}

void Descriptor::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(mNumber, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            RaiseSystem(errno, mPath);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

std::size_t Descriptor::Read(char* bytes, std::size_t count) {
    std::size_t total = 0;
    while (total < count) {
        const ssize_t got = read(mNumber, bytes + total, count - total);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            RaiseSystem(errno, mPath);
        if (got == 0)
            break;
        total += static_cast<std::size_t>(got);
    }
    return total;
}

void Descriptor::Close() {
    if (close(std::exchange(mNumber, -1)) != 0)
        RaiseSystem(errno, mPath);
}
