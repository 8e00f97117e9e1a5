// SPDX-License-Identifier: GPL-3.0-or-later
// Printers and print dialogs, behind one interface so that tests need neither. The real one asks the desktop
// and CUPS; where no printer is installed, printing goes to a PDF file.
#pragma once

#include "platform/report/Page.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

class QPainter;
class QWidget;

namespace report {

struct Printer {
    std::string deviceName;
    std::string driverName;
    std::string port;
};

/// What the user chose in a print dialog. Pages count from 1; a last page of 0 means all.
struct PrintJob {
    /// Empty: to the file `pdfPath`.
    std::string printerName;
    std::string pdfPath;
    int firstPage = 1;
    int lastPage = 0;
    int copies = 1;
};

struct PageRange {
    int first = 1;
    int last = 1;

    int Count() const { return last - first + 1; }
};

/// Those pages of a job, from 1, that a report of `pages` pages has.
inline PageRange PagesOf(const PrintJob& job, int pages) {
    const int first = std::clamp(job.firstPage, 1, std::max(pages, 1));
    return {first, job.lastPage == 0 ? pages : std::clamp(job.lastPage, first, std::max(pages, first))};
}

class Printing {
public:
    virtual ~Printing() = default;

    /// Installed printers in the system's order.
    virtual std::vector<Printer> Printers() = 0;
    /// The user's default printer; all empty where it is none of those installed. Raises error -1 where none
    /// is installed.
    virtual Printer DefaultPrinter() = 0;
    struct Change {
        bool isReached = false;
        /// Whether it is the default now: the environment may name another one.
        bool isChanged = false;
        /// The system's last error number where it was not reached.
        int errorNumber = 0;
    };
    /// Makes a printer the user's own default, in their own settings; the system's is left alone.
    virtual Change ChangeDefault(const std::string& deviceName) = 0;

    /// The print dialog, with `printerName` chosen; false on cancel. `pages` is what the report has.
    virtual bool AskForJob(QWidget* owner, const std::string& printerName, int pages, PrintJob& job) = 0;
    /// The printer's own set-up dialog; its answers hold for the jobs of this program, but
    /// for paper and orientation, which each job takes from its report.
    virtual bool SetUp(QWidget* owner) = 0;
    /// Runs a job: `paint` draws page `number` from 0 with a painter scaled to points. `progress` is asked
    /// before each page; false ends the job. Raises errors of the printer or file.
    virtual void Print(const PrintJob& job, const PageFormat& format, const std::string& title, int pages,
                       const std::function<void(int number, QPainter& painter)>& paint,
                       const std::function<bool(int number)>& progress) = 0;
};

} // namespace report
