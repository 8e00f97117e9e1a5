// SPDX-License-Identifier: GPL-3.0-or-later
// Printers that a test sets, and dialogs that answer by themselves. Who includes it links mova_report_viewer.
#pragma once

#include "platform/errors.h"
#include "platform/report/Printing.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
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
    bool AskForJob(QWidget* owner, const std::string& printerName, int pages,
                   report::PrintJob& job) override {
        EXPECT_NE(owner, nullptr);
        askedPrinter = printerName;
        askedPages = pages;
        job = answer;
        if (meanwhile)
            meanwhile();
        return isAccepted;
    }
    bool SetUp(QWidget* /*owner*/) override {
        ++setUps;
        return isAccepted;
    }
    void Print(const report::PrintJob& job, const report::PageFormat& format, const std::string& name,
               int pages, const std::function<void(int, QPainter&)>& paint,
               const std::function<bool(int)>& progress) override {
        title = name;
        if (failure)
            throw RunTimeError(*failure);
        QImage paper(static_cast<int>(format.width), static_cast<int>(format.height), QImage::Format_RGB32);
        QPainter painter(&paper);
        const int last = job.lastPage == 0 ? pages : job.lastPage;
        for (int number = job.firstPage - 1; number < last && progress(number); ++number) {
            paint(number, painter);
            painted.push_back(number);
        }
    }

    std::vector<report::Printer> printers;
    std::size_t defaultPrinter = 0;
    bool isAccepted = true;
    /// The job that the dialog gives, and what goes on while it is open.
    report::PrintJob answer;
    std::function<void()> meanwhile;
    /// Raised by printing.
    std::optional<RunTimeError> failure;
    /// What ChangeDefault answers.
    Change change{true, true, 0};

    /// What was asked for, in order.
    std::vector<std::string> changes;
    int setUps = 0;
    /// Of the last job, but of all of them the pages.
    std::string askedPrinter;
    int askedPages = 0;
    std::string title;
    std::vector<int> painted;
};
