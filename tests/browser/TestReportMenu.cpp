// SPDX-License-Identifier: GPL-3.0-or-later
// The Report menu, from its items to the windows that they open.
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "reports/Catalogue.h"
#include "tests/browser/InventorySample.h"
#include "tests/browser/MainWindowTest.h"

#include <QTimer>

namespace {

class ReportMenuTest : public MainWindowTest {
protected:
    ReportMenuTest() {
        MakeDatabase({});
        LoadAndShow();
        RunSQL(*gConnection, kInventorySample);
    }
    ~ReportMenuTest() override {
        FormRegistry::Instance().UnloadOthers(form.get());
        QTest::qWait(1);
    }
    /// The title of a loaded window; empty where there is none.
    static std::string TitleOf(const char* name) {
        const QWidget* const window = FormRegistry::Instance().Find(name);
        return window == nullptr ? "" : window->windowTitle().toStdString();
    }
};

TEST_F(ReportMenuTest, EachItemOpensItsReportUnderItsOwnCaption) {
    const Question noData = Box("No data to display",
                                "There's no data to display on the report. Please select some other "
                                "criteria range for the report.");
    prompts.Expect(noData);
    prompts.Expect(noData);
    for (const CatalogueRow& row : Catalogue()) {
        QAction& item = Action(std::string(row.menuItem).c_str());
        item.trigger();
        EXPECT_EQ(TitleOf("frmAllReports"), item.text().toStdString());
        QTest::qWait(1);
        EXPECT_TRUE(QTest::qWaitFor([] { return !FormRegistry::Instance().IsLoaded("frmCompiling"); }));
        // The sample's drives are named otherwise.
        const bool hasRows = row.menuItem != "mnuRepNetDrives" && row.menuItem != "mnuRepFixedDrive";
        EXPECT_EQ(FormRegistry::Instance().IsLoaded("frmAllReports"), hasRows) << row.menuItem;
        EXPECT_TRUE(form->isEnabled() && QApplication::activeModalWidget() == nullptr);
    }
}

TEST_F(ReportMenuTest, TheOtherItemsHaveWindowsOfTheirOwn) {
    Action("mnuRepUserPCConfig").trigger();
    EXPECT_EQ(TitleOf("frmCRPPC"), "PC Configuration Report");
    Action("mnuCompareMis").trigger();
    EXPECT_EQ(TitleOf("frmCRPCompare"), "Component Comparison Report");
    std::string list;
    QTimer::singleShot(0, form.get(), [&] {
        list = TitleOf("frmCustomReports");
        FormRegistry::Instance().Unload("frmCustomReports");
    });
    Action("mnuCustomReport").trigger();
    EXPECT_EQ(list, "Custom Reports Available");
    EXPECT_TRUE(QTest::qWaitFor([] { return !FormRegistry::Instance().IsLoaded("frmCompiling"); }));
    form->close();
    EXPECT_TRUE(FormRegistry::Instance().Windows().empty()) << "reports go with the main window";
}

} // namespace
