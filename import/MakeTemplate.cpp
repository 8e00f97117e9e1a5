// SPDX-License-Identifier: GPL-3.0-or-later
// A tool of the build: writes the empty inventory database that its one argument names.
#include "import/Schema.h"
#include "platform/errors.h"

#include <cstdio>
#include <filesystem>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: MakeTemplate <file>\n", stderr);
        return 2;
    }
    try {
        std::filesystem::remove(argv[1]);
        CreateDatabase(argv[1]);
        // It holds nobody's details, and whoever runs the program must be able to copy it.
        using std::filesystem::perms;
        std::filesystem::permissions(
            argv[1], perms::owner_read | perms::owner_write | perms::group_read | perms::others_read);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", argv[1], failure.what());
        return 1;
    }
    return 0;
}
