// SPDX-License-Identifier: GPL-3.0-or-later
// The canned reports as data: which menu item shows which document, fed by which statement. A report that is
// added here only needs its document and its menu item. Captions stand in the menu alone.
#pragma once

#include <span>
#include <string>
#include <string_view>

struct CatalogueRow {
    std::string_view menuItem;
    /// The report class, which names its document.
    std::string_view reportClass;
    bool displayGroupTree;
    /// Whether the number of the configuration on display stands between the statement's two pieces.
    bool usesConfID;
    std::string_view before;
    std::string_view after = {};
};

/// In the order of the menu.
std::span<const CatalogueRow> Catalogue();

/// The row of a menu item. Raises error 5 where it has none.
const CatalogueRow& CatalogueReport(std::string_view menuItem);

/// What a report calls a configuration, on its ConfigurationLine.
std::string ConfigurationName(int confID);

/// The complete statement of a report for a configuration.
std::string Statement(const CatalogueRow& row, int confID);
