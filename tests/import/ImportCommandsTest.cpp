// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/import/ImportCommandsTest.h"

#include "core/Globals.h"

#include <QApplication>
#include <QTimer>

#include <sstream>
#include <utility>

namespace {

constexpr const char* kFileStatus = "Import Status : ";

} // namespace

ImportCommandsTest::ImportCommandsTest()
    : settings(folder.Path("settings.ini")),
      commands(ImportContext{form, settings, prompts, clock, folder.Path()}) {
    gConnection = connection;
    gImportDir.clear();
    gImportTime = 0;
    gImportTimeNum = 0;
    gFirstActivation = false;
}

ImportCommandsTest::~ImportCommandsTest() {
    EXPECT_FALSE(mIsAwaited) << "the Import dialog never came";
    gConnection.reset();
}

void ImportCommandsTest::StoreFolder(const std::string& path) {
    settings.SaveSetting("Velmora", "Settings", "ImportDir", path);
}

std::string ImportCommandsTest::StoredFolder() const {
    return settings.GetSetting("Velmora", "Settings", "ImportDir", "<none>");
}

std::string ImportCommandsTest::Told() {
    std::istringstream lines(std::exchange(form.told, ""));
    std::string told;
    std::string last;
    for (std::string line; std::getline(lines, line); last = line)
        if (!line.starts_with(kFileStatus) || !last.starts_with(kFileStatus))
            told += line + "\n";
    return told;
}

void ImportCommandsTest::InDialog(std::function<void(QDialog&)> act) {
    mIsAwaited = true;
    QTimer::singleShot(0, [this, act = std::move(act)] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->objectName(), "frmImport");
        mIsAwaited = false;
        act(*dialog);
        EXPECT_FALSE(dialog->isVisible());
        dialog->QDialog::done(QDialog::Rejected);
    });
}
