// SPDX-License-Identifier: GPL-3.0-or-later
// What the report windows and commands work with. All of it outlives them.
#pragma once

#include <string>

class MainForm;
class Prompts;
namespace report {
class Printing;
}

struct ReportContext {
    MainForm& form;
    Prompts& prompts;
    report::Printing& printing;
    /// The folder of the program, in which customers put their own reports.
    std::string programFolder;
};
