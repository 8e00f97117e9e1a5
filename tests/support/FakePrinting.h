// SPDX-License-Identifier: GPL-3.0-or-later
// Printers that a test sets, and dialogs that answer by themselves. Who includes it links mova_report_viewer.
#pragma once

#include "platform/errors.h"
#include "platform/report/Printing.h"

#include <string>
#include <vector>

class FakePrinting final : public report::Printing {
public:
    std::vector<report::Printer> Printers() override { return printers; }
    report::Printer DefaultPrinter() override {
        if (printers.empty())
            throw RunTimeError(Errors::kDatabase, "no printer is installed");
        return defaultPrinter < printers.size() ? printers[defaultPrinter] : report::Printer();
    }
    Change ChangeDefault(const std::string& deviceName) override {
        changes.push_back(deviceName);
        return change;
    }
    bool AskForJob(QWidget* /*owner*/, const std::string& printerName, int /*pages*/,
                   report::PrintJob& job) override {
        askedFor.push_back(printerName);
        job.printerName = printerName;
        return isAccepted;
    }
    bool SetUp(QWidget* /*owner*/) override {
        ++setUps;
        return isAccepted;
    }
    void Print(const report::PrintJob& job, const report::PageFormat& /*format*/,
               const std::string& /*title*/, int pages, const std::function<void(int, QPainter&)>& /*paint*/,
               const std::function<bool(int)>& /*progress*/) override {
        printed.push_back(job.printerName + ": " + std::to_string(pages));
    }

    std::vector<report::Printer> printers;
    std::size_t defaultPrinter = 0;
    bool isAccepted = true;
    /// What ChangeDefault answers.
    Change change{true, true, 0};

    /// What was asked for, in order.
    std::vector<std::string> changes;
    std::vector<std::string> askedFor;
    std::vector<std::string> printed;
    int setUps = 0;
};
