// SPDX-License-Identifier: GPL-3.0-or-later
// A folder of a test's own, removed with all that it holds when the object goes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& Path() const { return mPath; }
    /// The path of `name` in the folder.
    std::string Path(std::string_view name) const;

    /// Writes a file, with the folders above it, and returns its path.
    std::string WriteFile(std::string_view name, std::string_view bytes) const;
    /// The bytes of a file; fails the test where there is none.
    std::string ReadFile(std::string_view name) const;
    bool Exists(std::string_view name) const;
    /// The names in the folder, or in one within it, sorted.
    std::vector<std::string> Names(std::string_view subfolder = {}) const;
    /// Who may do what with a file: the last nine bits of its mode.
    unsigned Rights(std::string_view name) const;

private:
    std::string mPath;
};
