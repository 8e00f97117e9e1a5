// SPDX-License-Identifier: GPL-3.0-or-later
// Printing on this machine: printers of its own CUPS through the desktop's dialogs, or a PDF file where no
// printer is installed. Settings made in a printer's dialog hold until the program ends.
#pragma once

#include "platform/report/Printing.h"

#include <memory>

class Prompts;
class QPrinter;

namespace report {

class SystemPrinting final : public Printing {
public:
    /// File names are asked for by `prompts`, which must outlive it.
    explicit SystemPrinting(Prompts& prompts);
    ~SystemPrinting() override;
    SystemPrinting(const SystemPrinting&) = delete;
    SystemPrinting& operator=(const SystemPrinting&) = delete;

    std::vector<Printer> Printers() override;
    Printer DefaultPrinter() override;
    Change ChangeDefault(const std::string& deviceName) override;
    bool AskForJob(QWidget* owner, const std::string& printerName, int pages, PrintJob& job) override;
    bool SetUp(QWidget* owner) override;
    void Print(const PrintJob& job, const PageFormat& format, const std::string& title, int pages,
               const std::function<void(int number, QPainter& painter)>& paint,
               const std::function<bool(int number)>& progress) override;

private:
    QPrinter& PrinterNamed(const std::string& name);

    Prompts& mPrompts;
    /// The printer that dialogs have set up; made at the first of them.
    std::unique_ptr<QPrinter> mPrinter;
};

} // namespace report
