// SPDX-License-Identifier: GPL-3.0-or-later
// A desktop that only notes what it is asked to open.
#pragma once

#include "platform/desktop.h"

#include <string>
#include <vector>

class FakeDesktop final : public Desktop {
public:
    bool Open(const std::string& address) override {
        opened.push_back(address);
        return hasPrograms;
    }
    bool OpenFile(const std::string& path) override { return Open(path); }

    std::vector<std::string> opened;
    bool hasPrograms = true;
};
