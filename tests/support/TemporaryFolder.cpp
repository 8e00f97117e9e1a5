// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

TemporaryFolder::TemporaryFolder()
    : mPath((std::filesystem::temp_directory_path() / "velmora-test-XXXXXX").string()) {
    if (mkdtemp(mPath.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), mPath);
}

TemporaryFolder::~TemporaryFolder() {
    // What a test has locked away it may leave behind; that is no failure of the test.
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

std::string TemporaryFolder::Path(std::string_view name) const {
    return mPath + "/" + std::string(name);
}

std::string TemporaryFolder::WriteFile(std::string_view name, std::string_view bytes) const {
    std::string path = Path(name);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(file.flush().good()) << path;
    return path;
}

std::string TemporaryFolder::ReadFile(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    EXPECT_TRUE(file.is_open()) << "no file " << Path(name);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool TemporaryFolder::Exists(std::string_view name) const {
    return std::filesystem::exists(Path(name));
}

std::vector<std::string> TemporaryFolder::Names(std::string_view subfolder) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Path(subfolder)))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

unsigned TemporaryFolder::Rights(std::string_view name) const {
    struct stat status {};
    EXPECT_EQ(stat(Path(name).c_str(), &status), 0) << name;
    return status.st_mode & 0777U;
}
