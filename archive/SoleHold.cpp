// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/SoleHold.h"

#include "platform/errors.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

SoleHold::SoleHold(const std::string& path)
    : mIsWritable(access(path.c_str(), W_OK) == 0), mFile(path, mIsWritable ? O_RDWR : O_RDONLY) {
    // Where the engine has its locks: https://www.sqlite.org/fileformat.html#the_lock_byte_page
    struct flock lock {};
    lock.l_type = mIsWritable ? F_WRLCK : F_RDLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0x40000000;
    lock.l_len = 512;
    // Disks without locks have none to look at.
    if (fcntl(mFile.Number(), F_OFD_SETLK, &lock) != 0 && (errno == EAGAIN || errno == EACCES))
        Raise(Errors::kPermissionDenied, path);
}
