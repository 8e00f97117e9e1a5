// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that ping: all machines, in a window, and the address that is selected in a list of network
// cards. The main window forwards its menu items to them. The addresses are those of the database; nothing is
// discovered.
#pragma once

class EchoProbes;
class MainForm;
class Prompts;

/// What the commands work with. All of it outlives them.
struct PingContext {
    MainForm& form;
    Prompts& prompts;
    EchoProbes& probes;
};

class PingCommands {
public:
    explicit PingCommands(const PingContext& context) : mContext(context) {}

    /// Shows the window that pings every address, until it is closed.
    void mnuPing();
    /// Pings the address of the list's selected item and tells the result in a box. Does nothing in another
    /// category, and where nothing is selected. Ends silently where it fails.
    void mnuPingPrivate();

private:
    void PingSelectedItem();

    PingContext mContext;
};
