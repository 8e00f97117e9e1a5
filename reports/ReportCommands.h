// SPDX-License-Identifier: GPL-3.0-or-later
// The commands of the Report menu. The main window forwards its menu items to them. All but the custom
// reports leave the main window usable while their window is open.
#pragma once

#include "reports/ReportContext.h"

#include <string>
#include <string_view>

/// Sets the window's ConfID, if `value` is above -1, and shows the window, not modally.
template <typename Window>
void ShowConfigReport(Window& window, int value) {
    if (value > -1)
        window.ConfID = value;
    window.Show();
}

class ReportCommands {
public:
    explicit ReportCommands(ReportContext context);

    /// Shows the catalogue's report of a menu item in a fresh window, titled by the item's `caption`.
    void ShowReport(std::string_view menuItem, const std::string& caption);
    void mnuRepUserPCConfig();
    void mnuCompare();
    void mnuCompareMis();
    void mnuCustomReport();

private:
    ReportContext mContext;
};
