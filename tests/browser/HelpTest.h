// SPDX-License-Identifier: GPL-3.0-or-later
// The help window over the help file that the build has made.
#pragma once

#include "browser/HelpPage.h"
#include "browser/frmHelp.h"
#include "core/FormRegistry.h"
#include "tests/browser/MainWindowTest.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QTabWidget>

#include <algorithm>
#include <filesystem>

class HelpTest : public MainWindowTest {
protected:
    ~HelpTest() override { CloseHelp(); }

    /// The main window beside the help file, as it stands beside the program.
    void LoadWithHelp() {
        std::filesystem::copy_file(MOVA_HELP_FILE, folder.Path("MOVA.HLP"));
        MakeDatabase({});
        LoadAndShow();
    }
    /// Opens the help by its menu item, and waits until contents and index have been read.
    void Open(const char* item = "mnuHelpContents") {
        LoadWithHelp();
        Action(item).trigger();
        ASSERT_NE(Help(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(Help()));
        ASSERT_TRUE(Eventually([] {
            return In<QTreeView>("tvContents").model()->rowCount() > 0 &&
                   In<QListView>("lstIndex").model()->rowCount() > 0;
        }));
    }
    void CloseHelp() {
        FormRegistry::Instance().Unload("frmHelp");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static frmHelp* Help() { return static_cast<frmHelp*>(FormRegistry::Instance().Find("frmHelp")); }
    template <typename Widget>
    static Widget& In(const char* name) {
        return *Help()->findChild<Widget*>(name);
    }
    static HelpPage& Page() { return In<HelpPage>("txtPage"); }
    /// "tree.html#ages"
    static std::string Shown() {
        const QUrl page = Page().source();
        const std::string place = page.fragment().toStdString();
        return page.fileName().toStdString() + (place.empty() ? "" : "#" + place);
    }
    static std::string Tab() {
        const auto& tabs = In<QTabWidget>("tabHelp");
        return tabs.tabText(tabs.currentIndex()).remove('&').toStdString();
    }
    static void Type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }
};
