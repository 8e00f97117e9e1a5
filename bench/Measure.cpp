// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/Measure.h"

#include "import/Schema.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

bool Report(const char* what, double ratio, double limit, bool isFloor) {
    const bool holds = isFloor ? ratio >= limit : ratio <= limit;
    std::printf("%-58s %6.2f  (limit: at %s %.2f)  %s\n", what, ratio, isFloor ? "least" : "most", limit,
                holds ? "holds" : "MISSED");
    std::fflush(stdout);
    return holds;
}

Workplace::Workplace(const std::string& name)
    : mRoot(std::filesystem::temp_directory_path() / (name + "-" + std::to_string(getpid()))) {
    std::filesystem::create_directories(mRoot);
}

Workplace::~Workplace() {
    std::filesystem::remove_all(mRoot);
}

std::string Workplace::Folder(const std::string& name) const {
    std::filesystem::create_directories(mRoot / name);
    return mRoot / name;
}

std::string Workplace::NewDatabase() const {
    const std::string path = mRoot / "bench.mdb";
    for (const char* suffix : {"", "-wal", "-shm"})
        std::filesystem::remove(path + suffix);
    CreateDatabase(path);
    return path;
}
