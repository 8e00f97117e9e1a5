// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/browser/MainWindowTest.h"

#include "browser/ListView.h"
#include "browser/TreeModel.h"
#include "core/Globals.h"
#include "import/Schema.h"
#include "tests/browser/InventorySample.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QLabel>

MainWindowTest::MainWindowTest() : settings(folder.Path("settings.ini")) {
    gConnection.reset();
    gRecordset.reset();
    gDatabasePath.clear();
    gLastImportDate.clear();
    gImportDir.clear();
    gFirstActivation = false;
}

MainWindowTest::~MainWindowTest() {
    form.reset();
    gRecordset.reset();
    gConnection.reset();
}

void MainWindowTest::MakeDatabase(const std::vector<MachineRow>& machines) {
    const std::string path = folder.Path("Demodb.mdb");
    CreateDatabase(path);
    const auto connection = OpenDatabase(path);
    ADODB::Recordset net;
    net.Open("Net", connection, ADODB::Cursor::Keyset, ADODB::Lock::Optimistic);
    for (const MachineRow& machine : machines) {
        net.AddNew();
        net.Fields().Item("COMPUTERNAME").SetText(machine.name);
        if (machine.logonDate)
            net.Fields().Item("Logon Date").SetText(*machine.logonDate);
        if (machine.logonTime)
            net.Fields().Item("Logon Time").SetText(*machine.logonTime);
        net.Update();
    }
}

void MainWindowTest::Load() {
    form = std::make_unique<frmMain>(settings, prompts, clock, desktop, printing, probes, folder.Path());
    form->Load();
}

void MainWindowTest::LoadAndShow() {
    Load();
    ShowActive(*form);
}

void MainWindowTest::OpenSample(const std::vector<MachineRow>& others) {
    MakeDatabase(others);
    LoadAndShow();
    RunSQL(*gConnection, kInventorySample);
    form->OpenSinDatabase();
}

std::string MainWindowTest::Stored(const std::string& key) const {
    return settings.GetSetting("Velmora", "Settings", key, "<none>");
}

void MainWindowTest::Store(const std::string& key, const std::string& text) {
    settings.SaveSetting("Velmora", "Settings", key, text);
}

QAction& MainWindowTest::Action(const char* name) const {
    return Find<QAction>(name);
}

bool MainWindowTest::IsEnabled(const char* name) const {
    return Action(name).isEnabled();
}

std::string MainWindowTest::Status() const {
    return Find<QLabel>("sbStatusBar(1)").text().toStdString();
}

TreeModel& MainWindowTest::Tree() const {
    return static_cast<TreeModel&>(*Find<QTreeView>("tvTreeView").model());
}

void MainWindowTest::Click(const std::string& key, Qt::MouseButton button) {
    auto& view = Find<QTreeView>("tvTreeView");
    const QModelIndex node = Tree().Find(key);
    ASSERT_TRUE(node.isValid()) << key;
    view.scrollTo(node);
    QTest::mouseClick(view.viewport(), button, {}, view.visualRect(node).center());
    QTest::qWait(1);
}

ListView& MainWindowTest::List() const {
    return Find<ListView>("lvListView");
}

QAbstractItemView& MainWindowTest::View() const {
    return List().CurrentView();
}

QPoint MainWindowTest::PlaceOf(int row, int column) const {
    return View().visualRect(View().model()->index(row, column)).center();
}

void MainWindowTest::ClickRow(int row, Qt::MouseButton button) const {
    QTest::mouseClick(View().viewport(), button, {}, PlaceOf(row));
}

void MainWindowTest::Press(int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    QTest::qWait(1);
}

std::string MainWindowTest::Clipboard() {
    return QGuiApplication::clipboard()->text().toStdString();
}

std::vector<std::string> MainWindowTest::Rows() const {
    const ListModel& items = List().Items();
    std::vector<std::string> rows;
    for (std::size_t row = 0; row < items.Rows(); ++row) {
        std::string text(items.Text(row, 0));
        for (int column = 1; column < items.columnCount(); ++column)
            text += "|" + std::string(items.Text(row, column));
        rows.push_back(std::move(text));
    }
    return rows;
}
