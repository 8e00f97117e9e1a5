// SPDX-License-Identifier: GPL-3.0-or-later
// A variable of the environment as a test sets it; when the object goes, it is again what it was.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::string& value) : mName(std::move(name)) {
        if (const char* const before = std::getenv(mName.c_str()))
            mBefore = before;
        setenv(mName.c_str(), value.c_str(), 1);
    }
    ~EnvironmentVariable() { mBefore ? setenv(mName.c_str(), mBefore->c_str(), 1) : unsetenv(mName.c_str()); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

private:
    std::string mName;
    std::optional<std::string> mBefore;
};
