// SPDX-License-Identifier: GPL-3.0-or-later
// All that the database knows of one machine in one configuration, on ten tabs. Shown modally; it only reads.
// A tab is read when it is first turned to and stays as it is: only a new window sees what has changed since.
// What it shows stands in PropertyPages.cpp. frmProperties.cpp builds the window, frmPropertiesTabs.cpp fills
// its tabs.
#pragma once

#include "browser/PropertyPages.h"

#include <QDialog>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

class ListView;
class Prompts;
class QPushButton;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;
class QVBoxLayout;
class ValueBox;

class frmProperties final : public QDialog {
    Q_OBJECT
public:
    /// The configuration, 0 original or 1 current, and the machine are to be given before it is shown.
    frmProperties(QWidget* parent, Prompts& prompts);
    ~frmProperties() override;

    void ConfID(std::int16_t confID) { mConfID = confID; }
    void ComputerName(std::string machine) { mComputerName = std::move(machine); }

    /// Fills the tab, from 0, unless it was filled before. Raises error 9 where there is no such tab, and
    /// what a tab raises that has no handler of its own.
    void tabInfo_Click(int tab);

    /// The key of a node of tvDevices: the identifier of the device, with "?CHILD" behind it, or that of a
    /// category's first device.
    static std::string Key(const QTreeWidgetItem& node);

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct TabControls {
        std::vector<ValueBox*> boxes;
        ListView* list = nullptr;
    };

    QWidget* BuildTab(std::size_t tab);
    QWidget* BuildFrames(const PropertyPage& page, TabControls& controls);
    void BuildList(const PropertyPage& page, QVBoxLayout& layout, TabControls& controls);
    void BuildDeviceTree();
    void FitToTabs();
    void CopyRows(const ListView& list);

    void LoadTab(std::size_t tab);
    void FillTab(std::size_t tab);
    void FillBoxes(const PropertyPage& page, const std::vector<ValueBox*>& boxes);
    void FillList(const PropertyPage& page, ListView& list);
    void FillDeviceTree();
    void tvDevices_NodeClick(const QTreeWidgetItem* node);

    Prompts& mPrompts;
    std::int16_t mConfID = 0;
    std::string mComputerName;
    std::array<bool, Properties::kPages.size()> mTabLoaded = {};
    std::array<TabControls, Properties::kPages.size()> mControls;

    QTabWidget* tabInfo = nullptr;
    QTreeWidget* tvDevices = nullptr;
    QPushButton* cmdOK = nullptr;
};
