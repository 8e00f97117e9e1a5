// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/InventoryFiles.h"

#include "platform/Descriptor.h"
#include "platform/ReplacedFile.h"
#include "platform/errors.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

bool IsFileName(std::string_view machine) {
    return !machine.empty() && machine.front() != '.' &&
           machine.find_first_of(std::string_view("/\\\0", 3)) == std::string_view::npos;
}

void CopyInventoryFile(const std::string& source, const std::string& target) {
    // Not to wait for a writer, should it be a pipe.
    Descriptor from(source, O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
    struct stat status {};
    if (fstat(from.Number(), &status) != 0)
        RaiseSystem(errno, source);
    if (!S_ISREG(status.st_mode))
        Raise(Errors::kPathAccess, source);
    ReplacedFile to(target, ReplacedFile::Rights::Usual, ReplacedFile::Links::Replace);
    std::string block(std::size_t{1} << 16U, '\0');
    while (const std::size_t count = from.Read(block.data(), block.size()))
        to.Write(std::string_view(block).substr(0, count));
    to.Commit();
}
