// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/PingCommands.h"

#include "core/MainForm.h"
#include "platform/errors.h"
#include "platform/prompts.h"
#include "tools/Echo.h"
#include "tools/frmPing.h"

void PingCommands::mnuPing() {
    frmPing window(mContext);
    window.exec();
}

void PingCommands::mnuPingPrivate() {
    try {
        PingSelectedItem();
    } catch (const RunTimeError&) {
        // A ping that can not be tried has no result to tell.
        return;
    }
}

void PingCommands::PingSelectedItem() {
    const std::string key = mContext.form.SelectedNodeKey();
    if (key.find("?DEVNET") == std::string::npos)
        return;
    const std::size_t item = mContext.form.SelectedListItem();
    if (!mContext.form.IsListItemSelected(item))
        return;
    // The list of all machines begins with their names.
    const int column = key.find("ALL?") != std::string::npos ? 3 : 2;
    const std::string address = mContext.form.ListSubItem(item, column);
    if (!IsPingable(address)) {
        mContext.prompts.MsgBox("Invalid IP address : " + address, MsgBoxStyle::kCritical, "Can't ping");
        return;
    }
    // Without the user's input no other command, nor this one again, can start within the wait.
    const EchoResult echo = SendEcho(mContext.probes, address, QEventLoop::ExcludeUserInputEvents);
    if (echo.milliseconds) {
        mContext.prompts.MsgBox("Ping replied in " + std::to_string(*echo.milliseconds) + "ms from IP " +
                                    address + ". Tried (" + std::to_string(echo.rounds + 1) + " times)",
                                MsgBoxStyle::kOKOnly, "Ping Reply");
        return;
    }
    if (echo.isForbidden)
        mContext.form.StatusText(kEchoForbidden);
    mContext.prompts.MsgBox("Ping failed on IP " + address + "!", MsgBoxStyle::kOKOnly, "Ping Failed");
}
