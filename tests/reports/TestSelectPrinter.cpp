// SPDX-License-Identifier: GPL-3.0-or-later
// The printer chooser, opened from a report window as a person opens it.
#include "reports/frmAllReports.h"
#include "reports/frmSelectPrinter.h"
#include "tests/reports/ReportsTest.h"
#include "tests/support/Windows.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SelectPrinterTest : public ReportsTest {
protected:
    SelectPrinterTest() {
        printing.printers = {{"Laser", "drv1", "lpt1"}, {"Laser", "drv1", "lpt2"}, {"Ink", "drv2", "usb"}};
        report = new frmAllReports(context);
        report->Report = std::make_shared<report::Report>(kNames, "Names.rpt");
    }

    /// Opens the chooser, and acts on it while it is open.
    void Choose(const std::function<void(frmSelectPrinter& chooser, QListWidget& list)>& act) {
        const NextDialog answer([&](QDialog& dialog) {
            act(static_cast<frmSelectPrinter&>(dialog), ControlOf<QListWidget>(dialog, "LSTPrinters"));
        });
        Trigger(*report, "mnuPrinter");
    }
    static void Press(QWidget& chooser, const char* button) {
        QTest::mouseClick(&ControlOf<QPushButton>(chooser, button), Qt::LeftButton);
    }
    static void ClickLine(QListWidget& list, int line) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(line)).center());
    }

    frmAllReports* report;
};

TEST_F(SelectPrinterTest, AClickTakesEffectAtOnceAndCancelKeepsTheReportsPrinter) {
    printing.defaultPrinter = 1;
    Choose([&](frmSelectPrinter& chooser, QListWidget& list) {
        EXPECT_EQ(list.item(0)->text(), "Laser on lpt1");
        EXPECT_EQ(list.currentRow(), 1) << "the port tells it from its namesake";
        EXPECT_THAT(printing.changes, ElementsAre("Laser")) << "the selection at the start counts as a click";
        EXPECT_TRUE(ControlOf<QLabel>(chooser, "lblHint").text().contains("default printer at once"));
        ClickLine(list, 2);
        Press(chooser, "Command1");
    });
    EXPECT_THAT(printing.changes, ElementsAre("Laser", "Ink"));
    EXPECT_EQ(report->Report->PrinterName(), "") << "no OK yet";

    Choose([&](frmSelectPrinter& chooser, QListWidget& list) {
        EXPECT_EQ(list.currentRow(), 2) << "hidden, not unloaded";
        QTest::keyClick(&list, Qt::Key_Up);
        QTest::keyClick(&chooser, Qt::Key_Return);
    });
    EXPECT_EQ(report->Report->PrinterName(), "Laser");
    const auto& chooser = *Find<frmSelectPrinter>("frmSelectPrinter");
    EXPECT_EQ(chooser.PrinterPort, "lpt2");
    EXPECT_EQ(chooser.DriverName, "drv1");

    Choose([&](frmSelectPrinter& window, QListWidget& list) {
        ClickLine(list, 2);
        ClickLine(list, 2);
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    EXPECT_THAT(printing.changes, ElementsAre("Laser", "Ink", "Laser", "Ink", "Ink"));
    EXPECT_EQ(report->Report->PrinterName(), "Laser") << "of the last OK";
}

TEST_F(SelectPrinterTest, WithoutADefaultOrAPrinterNothingIsChosen) {
    printing.defaultPrinter = printing.printers.size();
    Choose([&](frmSelectPrinter& chooser, QListWidget& list) {
        EXPECT_TRUE(Eventually([&] { return list.hasFocus(); }));
        EXPECT_THAT(list.selectedItems(), IsEmpty());
        Press(chooser, "cmdOK");
    });
    FormRegistry::Instance().Unload("frmSelectPrinter");
    printing.printers.clear();
    Choose([&](frmSelectPrinter& chooser, QListWidget& list) {
        EXPECT_EQ(list.count(), 0);
        EXPECT_FALSE(ControlOf<QPushButton>(chooser, "BTNSetup").isEnabled());
        Press(chooser, "cmdOK");
    });
    EXPECT_THAT(printing.changes, IsEmpty()) << "to look at the list changes nothing";
    EXPECT_EQ(report->Report->PrinterName(), "");
}

TEST_F(SelectPrinterTest, AFailedChangeIsToldAndTheWindowStays) {
    Choose([&](frmSelectPrinter& chooser, QListWidget& list) {
        printing.change = {false, false, 111};
        prompts.Expect(Box("", "Could not access printer to change default printer.", MsgBoxStyle::kOKOnly));
        prompts.Expect(Box("", "errval= 111", MsgBoxStyle::kOKOnly));
        ClickLine(list, 1);
        printing.change = {true, false, 0};
        prompts.Expect(Box("", "Could not change default printer.", MsgBoxStyle::kOKOnly));
        ClickLine(list, 2);
        EXPECT_TRUE(chooser.isVisible());
        Press(chooser, "BTNSetup");
        EXPECT_EQ(printing.setUps, 1);
        Press(chooser, "cmdOK");
    });
    EXPECT_EQ(report->Report->PrinterName(), "Ink");
}

} // namespace
