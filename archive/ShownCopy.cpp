// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/ShownCopy.h"

#include "core/LongWork.h"
#include "platform/Descriptor.h"
#include "platform/files.h"

#include <fcntl.h>

void ShownCopy(MainForm& form, const std::string& from, const std::function<void(std::string_view)>& write) {
    constexpr std::size_t kBlock = std::size_t{1} << 20U;
    ShownWork work(form);
    Descriptor file(from, O_RDONLY | O_NOFOLLOW);
    const auto length = static_cast<double>(FileLength(from));
    std::string block(kBlock, '\0');
    double done = 0;
    while (const std::size_t count = file.Read(block.data(), block.size())) {
        write(std::string_view(block).substr(0, count));
        done += static_cast<double>(count);
        work.Look(done, length);
    }
}
