// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/SystemPrinting.h"

#include "platform/errors.h"
#include "platform/report/LocalPrinters.h"
#include "platform/report/PDFFile.h"
#include "platform/report/PDFJobDialog.h"

#include <QPainter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>

#include <algorithm>
#include <cerrno>

namespace report {

namespace {

constexpr double kPointsPerInch = 72;

[[noreturn]] void RaisePrinter(const std::string& text) {
    throw RunTimeError(Errors::kPrinter, text);
}

/// A landscape page is a portrait sheet that is turned: printers know no other.
QPageLayout LayoutOf(const PageFormat& format) {
    const bool isLandscape = format.width > format.height;
    const QSizeF sheet(std::min(format.width, format.height), std::max(format.width, format.height));
    return {QPageSize(sheet, QPageSize::Point, QString(), QPageSize::FuzzyMatch),
            isLandscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(), QPageLayout::Point};
}

void PrintOn(QPrinter& printer, const PaintedPages& pages) {
    QPainter painter;
    const auto raiseFailure = [&] {
        RaisePrinter("The printer could not be reached: " + printer.printerName().toStdString());
    };
    for (int i = 0; i < pages.count; ++i) {
        if (!pages.progress(pages.first + i)) {
            printer.abort();
            return;
        }
        if (!(i == 0 ? painter.begin(&printer) : printer.newPage()))
            raiseFailure();
        const double scale = printer.resolution() / kPointsPerInch;
        painter.setTransform(QTransform::fromScale(scale, scale));
        pages.paint(pages.first + i, painter);
    }
    if (!painter.end() || printer.printerState() == QPrinter::Error)
        raiseFailure();
}

} // namespace

SystemPrinting::SystemPrinting(Prompts& prompts) : mPrompts(prompts) {}
SystemPrinting::~SystemPrinting() = default;

std::vector<Printer> SystemPrinting::Printers() {
    return LocalPrinters();
}

Printer SystemPrinting::DefaultPrinter() {
    const std::vector<Printer> printers = LocalPrinters();
    if (printers.empty())
        throw RunTimeError(-1, "No printer is installed");
    const std::string name = DefaultPrinterName();
    const auto found = std::find_if(printers.begin(), printers.end(),
                                    [&name](const Printer& printer) { return printer.deviceName == name; });
    return found == printers.end() ? Printer() : *found;
}

Printing::Change SystemPrinting::ChangeDefault(const std::string& deviceName) {
    Change change;
    const std::vector<Printer> printers = LocalPrinters();
    change.isReached = std::any_of(printers.begin(), printers.end(), [&deviceName](const Printer& printer) {
        return printer.deviceName == deviceName;
    });
    if (!change.isReached) {
        change.errorNumber = printers.empty() ? ECONNREFUSED : ENOENT;
        return change;
    }
    try {
        SetUsersDefaultPrinter(deviceName);
        // The environment may name another one, which goes before the user's own.
        change.isChanged = DefaultPrinterName() == deviceName;
    } catch (const RunTimeError&) {
        return change; // the caller is told by isChanged
    }
    return change;
}

QPrinter& SystemPrinting::PrinterNamed(const std::string& name) {
    const std::vector<Printer> printers = LocalPrinters();
    std::string wanted = name.empty() ? DefaultPrinter().deviceName : name;
    // Without a default, the first is as good as any.
    if (wanted.empty() && !printers.empty())
        wanted = printers.front().deviceName;
    // The toolkit is not let loose where this machine has no printers: it would ask whatever server is named.
    if (std::none_of(printers.begin(), printers.end(),
                     [&wanted](const Printer& printer) { return printer.deviceName == wanted; }))
        RaisePrinter("There is no such printer: " + wanted);
    if (!mPrinter)
        mPrinter = std::make_unique<QPrinter>(QPrinter::HighResolution);
    if (mPrinter->printerName().toStdString() != wanted)
        mPrinter->setPrinterName(QString::fromStdString(wanted));
    return *mPrinter;
}

bool SystemPrinting::AskForJob(QWidget* owner, const std::string& printerName, int pages, PrintJob& job) {
    if (LocalPrinters().empty()) {
        // Not on the stack: it goes with its owner.
        const QPointer<PDFJobDialog> dialog = new PDFJobDialog(mPrompts, pages, owner);
        const bool isAccepted = dialog->Ask(job);
        delete dialog;
        return isAccepted;
    }
    QPrinter& printer = PrinterNamed(printerName);
    printer.setOutputFileName(QString());
    printer.setPageRanges({});
    printer.setFromTo(0, 0);
    const QPointer<QPrintDialog> dialog = new QPrintDialog(&printer, owner);
    dialog->setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                       QAbstractPrintDialog::PrintCollateCopies);
    dialog->setMinMax(1, pages);
    dialog->setFromTo(1, pages);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (dialog.isNull())
        return false;
    const bool isRange = dialog->printRange() == QAbstractPrintDialog::PageRange;
    const int from = dialog->fromPage();
    const int to = dialog->toPage();
    delete dialog;
    if (!isAccepted)
        return false;
    job.printerName = printer.printerName().toStdString();
    job.pdfPath = printer.outputFileName().toStdString();
    if (!job.pdfPath.empty())
        job.printerName.clear();
    job.firstPage = isRange ? std::max(1, from) : 1;
    job.lastPage = isRange ? to : 0;
    job.copies = printer.copyCount();
    return true;
}

bool SystemPrinting::SetUp(QWidget* owner) {
    if (LocalPrinters().empty())
        return false;
    const QPointer<QPrintDialog> dialog = new QPrintDialog(&PrinterNamed({}), owner);
    dialog->setOptions(QAbstractPrintDialog::PrintCollateCopies);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    delete dialog;
    return isAccepted;
}

void SystemPrinting::Print(const PrintJob& job, const PageFormat& format, const std::string& title, int pages,
                           const std::function<void(int number, QPainter& painter)>& paint,
                           const std::function<bool(int number)>& progress) {
    const PageRange range = PagesOf(job, pages);
    const PaintedPages painted{format, title, range.first - 1, range.Count(), paint, progress};
    if (!job.pdfPath.empty()) {
        WritePDF(job.pdfPath, painted);
        return;
    }
    QPrinter& printer = PrinterNamed(job.printerName);
    printer.setDocName(QString::fromStdString(title));
    printer.setCreator(QStringLiteral("Velmora"));
    printer.setFullPage(true);
    printer.setPageLayout(LayoutOf(format));
    printer.setCopyCount(std::max(1, job.copies));
    PrintOn(printer, painted);
}

} // namespace report
