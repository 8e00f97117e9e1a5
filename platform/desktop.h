// SPDX-License-Identifier: GPL-3.0-or-later
// What the user's desktop opens with a program of its own choice: mail to an address, a page of the web, a
// document. Addresses are the system's own and never hold anything that a client PC has written; a document
// is opened only when the user asks for the path that is on show.
#pragma once

#include <string>

class Desktop {
public:
    virtual ~Desktop() = default;
    /// Opens an address with its scheme, "mailto:..." or "https://...", and does not wait. False where the
    /// desktop knows no program for it.
    virtual bool Open(const std::string& address) = 0;
    /// Opens the file `path` and does not wait. False where the desktop knows no program for it.
    virtual bool OpenFile(const std::string& path) = 0;
};

class SystemDesktop final : public Desktop {
public:
    bool Open(const std::string& address) override;
    bool OpenFile(const std::string& path) override;
};
