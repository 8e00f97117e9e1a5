// SPDX-License-Identifier: GPL-3.0-or-later
// The main window over a database of a few machines, with everything around it in the test's hand.
#pragma once

#include "browser/frmMain.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeEcho.h"
#include "tests/support/FakePrinting.h"
#include "tests/support/FixedClock.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <QAction>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class ListView;
class TreeModel;

struct MachineRow {
    std::string name;
    std::optional<std::string> logonDate;
    std::optional<std::string> logonTime;
};

class MainWindowTest : public testing::Test {
protected:
    MainWindowTest();
    ~MainWindowTest() override;

    /// Makes the program's own database. Without one, opening it fails with a box.
    void MakeDatabase(const std::vector<MachineRow>& machines);
    /// Creates and loads the window; shown if a test acts on it as a person would.
    void Load();
    void LoadAndShow();

    std::string Stored(const std::string& key) const;
    void Store(const std::string& key, const std::string& text);

    QAction& Action(const char* name) const;
    bool IsEnabled(const char* name) const;
    template <typename Widget>
    Widget& Find(const char* name) const {
        return *form->findChild<Widget*>(name);
    }
    std::string Status() const;

    TreeModel& Tree() const;
    /// A press and release of the left button on the node.
    void Click(const std::string& key, Qt::MouseButton button = Qt::LeftButton);
    ListView& List() const;
    /// The list's rows, cells joined by "|".
    std::vector<std::string> Rows() const;

    TemporaryFolder folder;
    QueuedPrompts prompts;
    FixedClock clock{2024, 3, 15};
    FakeDesktop desktop;
    FakePrinting printing;
    FakeEchoProbes probes;
    SettingsStore settings;
    std::unique_ptr<frmMain> form;
};
