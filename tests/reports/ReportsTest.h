// SPDX-License-Identifier: GPL-3.0-or-later
// The report windows over a small inventory, with everything around them in the test's hand.
#pragma once

#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "reports/ReportCommands.h"
#include "reports/ReportWindow.h"
#include "tests/support/Database.h"
#include "tests/support/FakeForm.h"
#include "tests/support/FakePrinting.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <QAction>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Acts on the report that is shown next, once all of it has been read; it must come while the object lives.
class NextReport {
public:
    explicit NextReport(std::function<void(ReportWindow&)> act) : mAct(std::move(act)) {
        mTimer.callOnTimeout([this] { Look(); });
        mTimer.start(0);
    }
    ~NextReport() { EXPECT_TRUE(mHasCome) << "no report came"; }
    NextReport(const NextReport&) = delete;
    NextReport& operator=(const NextReport&) = delete;

private:
    void Look() {
        auto* const window = static_cast<ReportWindow*>(FormRegistry::Instance().Find("frmAllReports"));
        if (window == nullptr || !window->Report || window->Report->RowCount() == 0 ||
            !window->Report->IsComplete())
            return;
        mHasCome = true;
        mTimer.stop();
        mAct(*window);
    }

    std::function<void(ReportWindow&)> mAct;
    QTimer mTimer;
    bool mHasCome = false;
};

/// A document of the machines' names.
constexpr const char* kNames =
    "title = 'Names'\n[table]\nname = 'Net'\nfields = [{name = 'COMPUTERNAME', type = 'text', width = 50}]\n"
    "[[detail.line]]\nobjects = [{field = '{Net.COMPUTERNAME}'}]";

class ReportsTest : public testing::Test {
protected:
    ReportsTest();
    ~ReportsTest() override;

    /// Runs statements of the engine's own SQL.
    static void Run(const std::string& statements) { RunSQL(*gConnection, statements); }

    template <typename Window = ReportWindow>
    static Window* Find(const char* name) {
        return static_cast<Window*>(FormRegistry::Instance().Find(name));
    }
    template <typename Control>
    static Control& ControlOf(QWidget& window, const char* name) {
        return *window.findChild<Control*>(name);
    }
    /// The menu item of a window, as a click runs it.
    static void Trigger(QWidget& window, const char* item) { ControlOf<QAction>(window, item).trigger(); }

    /// Lets the windows work until none waits for its report.
    static void Settle();
    /// What `field` holds in the report's rows, joined by "/"; "-" for Null.
    static std::string Values(const report::Report& report, const char* field);
    /// The report's fields that no column of `rows` has the name of, each with the column of its place,
    /// "Type=Kind "; and those of another type than their column, "Type! ".
    static std::string Unlike(const report::Report& report, ADODB::Recordset& rows);
    /// The texts of the report's first page, a line each.
    static std::string FirstPage(const report::Report& report);

    TemporaryFolder folder;
    QueuedPrompts prompts;
    FakePrinting printing;
    FakeForm form;
    ReportContext context{form, prompts, printing, folder.Path()};
    ReportCommands commands{context};
};
