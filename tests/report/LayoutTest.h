// SPDX-License-Identifier: GPL-3.0-or-later
// Lays reports out on small pages and reads them back as text. In the tests' style a line is 12 points high
// and a character 6 wide: a page holds ten lines of forty characters.
#pragma once

#include "platform/report/Layout.h"
#include "tests/report/ReportTest.h"

#include <memory>
#include <string>

class LayoutTest : public ReportTest {
protected:
    void Add(const std::string& machine, const std::string& program, double size);

    /// Lays out all of it.
    std::unique_ptr<report::Layout> Lay(report::Report& report);
    /// The texts of a page from its top: a line each, "|" between texts on one baseline.
    static std::string Shown(const report::Page& page);
    /// All pages of a report, "=" between them.
    std::string Laid(report::Report& report);
    report::Page Build(report::Report& report, std::size_t page);

    report::PageFormat paper{244, 120, 0, 0, 0, 0};
    report::FixedMeasure measure;
};

// Pieces of documents.
extern const std::string kSize;
extern const std::string kTitle;
extern const std::string kCaption;
extern const std::string kDetail;
extern const std::string kFooter;

/// A group by a field, taken as it comes, with the field in brackets as its header and, where asked for, the
/// count of its rows as its footer.
std::string Group(const std::string& field, const std::string& options, bool hasFooter = false,
                  const std::string& headerOptions = {});
