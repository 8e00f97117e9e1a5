// SPDX-License-Identifier: GPL-3.0-or-later
// What the benchmarks share: taking a time, telling a ratio beside its limit, and a place for their files.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

/// Seconds that `work` takes.
template <class Work>
double Timed(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values);

/// Prints `ratio` beside its limit, the least where `isFloor`, else the most. Whether it holds.
bool Report(const char* what, double ratio, double limit, bool isFloor);

/// A temporary folder that goes with the object.
class Workplace {
public:
    explicit Workplace(const std::string& name);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    /// A folder within it, created if it is not there.
    std::string Folder(const std::string& name) const;
    /// An empty inventory database in the place of the last one.
    std::string NewDatabase() const;

private:
    std::filesystem::path mRoot;
};
