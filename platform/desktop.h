// SPDX-License-Identifier: GPL-3.0-or-later
// What the user's desktop opens with a program of its own choice: mail to an address, a page of the web.
// Addresses are the system's own and never hold anything that a client PC has written.
#pragma once

#include <string>

class Desktop {
public:
    virtual ~Desktop() = default;
    /// Opens an address with its scheme, "mailto:..." or "https://...", and does not wait. False where the
    /// desktop knows no program for it.
    virtual bool Open(const std::string& address) = 0;
};

class SystemDesktop final : public Desktop {
public:
    bool Open(const std::string& address) override;
};
