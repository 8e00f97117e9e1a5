// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/report/LayoutTest.h"

#include <map>

const std::string kSize = ", size = 10";
const std::string kTitle = "[[report-header.line]]\nobjects = [{text = \"All programs\"" + kSize + "}]\n";
const std::string kCaption = "[[page-header.line]]\nobjects = [{text = \"Program\"" + kSize + "}]\n";
const std::string kDetail = "[[detail.line]]\nobjects = [{field = \"{Programs.Program}\"" + kSize + "}]\n";
const std::string kFooter =
    "[[page-footer.line]]\nobjects = [{special = \"page-number\", prefix = \"Page \", width = 50" + kSize +
    "}, {special = \"page-count\", prefix = \"of \", left = 50, width = 50" + kSize + "}]\n";

std::string Group(const std::string& field, const std::string& options, bool hasFooter,
                  const std::string& headerOptions) {
    std::string text = "[[group]]\nfield = \"{Programs." + field + "}\"\n" + options;
    if (options.find("order") == std::string::npos)
        text += "order = \"as-read\"\n";
    text += "[group.header]\n" + headerOptions + "[[group.header.line]]\nobjects = [{field = \"{Programs." +
            field + "}\", prefix = \"[\", suffix = \"]\"" + kSize + "}]\n";
    if (hasFooter)
        text += "[[group.footer.line]]\nobjects = [{count = true, suffix = \" in all\"" + kSize + "}]\n";
    return text;
}

void LayoutTest::Add(const std::string& machine, const std::string& program, double size) {
    connection->Execute("INSERT INTO Programs (Machine, Program, [Size]) VALUES ('" + machine + "', '" +
                        program + "', " + std::to_string(size) + ")");
}

std::unique_ptr<report::Layout> LayoutTest::Lay(report::Report& report) {
    report.Finish();
    auto layout = std::make_unique<report::Layout>(report, paper, measure);
    while (layout->Work(std::chrono::hours(1))) {
    }
    EXPECT_TRUE(layout->IsComplete());
    return layout;
}

std::string LayoutTest::Shown(const report::Page& page) {
    std::map<double, std::string> lines;
    for (const report::PlacedText& text : page.texts) {
        std::string& line = lines[text.baseline];
        line += (line.empty() ? "" : "|") + text.text;
    }
    std::string shown;
    for (const auto& [baseline, line] : lines)
        shown += line + "\n";
    return shown;
}

std::string LayoutTest::Laid(report::Report& report) {
    const auto layout = Lay(report);
    std::string shown;
    for (std::size_t page = 0; page < layout->PageCount(); ++page)
        shown += (page > 0 ? "=\n" : "") + Shown(layout->BuildPage(page));
    return shown;
}

report::Page LayoutTest::Build(report::Report& report, std::size_t page) {
    return Lay(report)->BuildPage(page);
}
