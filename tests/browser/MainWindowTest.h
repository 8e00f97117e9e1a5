// SPDX-License-Identifier: GPL-3.0-or-later
// The main window over a database of a few machines, with everything around it in the test's hand.
#pragma once

#include "browser/frmMain.h"
#include "core/Pace.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeEcho.h"
#include "tests/support/FakePrinting.h"
#include "tests/support/FixedClock.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Windows.h"

#include <QAction>
#include <QTreeView>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class ListView;
class QAbstractItemView;
class TreeModel;

struct MachineRow {
    std::string name;
    std::optional<std::string> logonDate;
    std::optional<std::string> logonTime;
};

/// While it lives, long work shows how far it has come, and looks at its events, at each of its steps.
class EveryLookIsDue {
public:
    EveryLookIsDue() { Pace::gInterval = 0; }
    ~EveryLookIsDue() { Pace::gInterval = mBefore; }
    EveryLookIsDue(const EveryLookIsDue&) = delete;
    EveryLookIsDue& operator=(const EveryLookIsDue&) = delete;

private:
    qint64 mBefore = Pace::gInterval;
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
    /// Both, with the sample's machines beside `others`.
    void OpenSample(const std::vector<MachineRow>& others = {});

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
    /// The list as it is shown: by icons or by lines.
    QAbstractItemView& View() const;
    QPoint PlaceOf(int row, int column = 0) const;
    void ClickRow(int row, Qt::MouseButton button = Qt::LeftButton) const;
    /// The list's rows, cells joined by "|".
    std::vector<std::string> Rows() const;

    /// A key for whatever has the focus, and what follows from it.
    static void Press(int key, Qt::KeyboardModifiers modifiers = {});
    static std::string Clipboard();

    TemporaryFolder folder;
    QueuedPrompts prompts;
    FixedClock clock{2024, 3, 15};
    FakeDesktop desktop;
    FakePrinting printing;
    FakeEchoProbes probes;
    SettingsStore settings;
    std::unique_ptr<frmMain> form;
};
