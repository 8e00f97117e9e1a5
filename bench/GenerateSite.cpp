// SPDX-License-Identifier: GPL-3.0-or-later
// generate_site <folder> <machines> [seed]: fills a folder with the inventory files of a synthetic site.
#include "bench/Site.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: generate_site <folder> <machines> [seed]\n", stderr);
        return 2;
    }
    try {
        SiteSize size;
        size.machines = std::atoi(argv[2]);
        size.personalPercent = 10;
        if (argc > 3)
            size.seed = static_cast<std::uint32_t>(std::strtoul(argv[3], nullptr, 10));
        std::filesystem::create_directories(argv[1]);
        WriteSite(argv[1], size);
        std::printf("%d machines in %s\n", size.machines, argv[1]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    return 0;
}
