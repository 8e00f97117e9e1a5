// SPDX-License-Identifier: GPL-3.0-or-later
// A viewer in a window of its own, over the small database of the report tests, with prompts and a printer
// that answer as they are told.
#pragma once

#include "platform/errors.h"
#include "platform/report/PageView.h"
#include "platform/report/Printing.h"
#include "platform/report/Viewer.h"
#include "tests/report/ReportTest.h"
#include "tests/support/QueuedPrompts.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A document of the table Programs with a group for each machine.
extern const char* const kByMachine;
/// One without groups, whose rows stay in the order in which they come.
extern const char* const kAsRead;

class FakePrinting final : public report::Printing {
public:
    std::vector<report::Printer> Printers() override { return {}; }
    report::Printer DefaultPrinter() override { return {}; }
    Change ChangeDefault(const std::string& deviceName) override;
    bool AskForJob(QWidget* owner, const std::string& printerName, int pages, report::PrintJob& job) override;
    bool SetUp(QWidget* owner) override { return owner != nullptr; }
    void Print(const report::PrintJob& job, const report::PageFormat& format, const std::string& title,
               int pages, const std::function<void(int number, QPainter& painter)>& paint,
               const std::function<bool(int number)>& progress) override;

    /// What the dialog answers, and what goes on while it is open.
    report::PrintJob answer;
    bool isCancelled = false;
    std::function<void()> meanwhile;
    std::optional<RunTimeError> failure;

    std::string askedPrinter;
    int askedPages = 0;
    std::string title;
    std::vector<int> painted;
};

class ViewerTest : public ReportTest {
protected:
    ViewerTest() { MakeViewer(); }

    void MakeViewer();
    /// Gives a report to the viewer, which begins with it.
    void View(std::unique_ptr<report::Report> report);
    /// Begins with `count` programs on each of `count` machines, as read: too much for a few slices.
    void ViewSquared(int count);
    /// Asks IsBusy to the end, as owners do.
    void Finish();
    /// Lets the viewer work by itself until it has nothing more to do.
    void WaitUntilIdle();
    /// A report of `count` programs by machine, complete.
    void Show(int count);

    template <class Part>
    Part* Find(const char* name) {
        return viewer->findChild<Part*>(name);
    }
    report::PageView* Pages() { return Find<report::PageView>("Pages"); }
    void Press(const char* action) { Find<QAction>(action)->trigger(); }
    std::string Status() { return Find<QLabel>("lblStatus")->text().toStdString(); }
    int PageNumber() { return Find<QLineEdit>("txtPage")->text().toInt(); }
    int PageCount() { return static_cast<int>(Pages()->PageCount()); }
    /// All text of a page from 1, which is gone to.
    std::string TextOfPage(int page);
    /// The line of the match that was found last.
    std::string RevealedText();

    QueuedPrompts prompts;
    FakePrinting printing;
    std::shared_ptr<report::Report> shown;
    std::unique_ptr<report::Viewer> viewer;
};
