// SPDX-License-Identifier: GPL-3.0-or-later
// The Import dialog, used as a person would.
#include "core/FormRegistry.h"
#include "tests/import/ImportCommandsTest.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

namespace {

using ImportDialogTest = ImportCommandsTest;

void Click(const QDialog& dialog, const char* button) {
    QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
}

QLineEdit& FolderBox(const QDialog& dialog) {
    return *dialog.findChild<QLineEdit*>("TXTImportDir");
}

TEST_F(ImportDialogTest, OffersTheProgramsOwnFolderAndNotTheStoredOne) {
    StoreFolder("/srv/inventory");
    const NextDialog answer = InDialog([this](QDialog& dialog) {
        EXPECT_EQ(FolderBox(dialog).text().toStdString(), inventory) << "as it is spelled on disk";
        EXPECT_TRUE(FormRegistry::Instance().IsLoaded("frmImport"));
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        EXPECT_TRUE(FolderBox(dialog).hasFocus());
        QTest::qWait(1);
        EXPECT_EQ(FolderBox(dialog).selectedText().toStdString(), inventory);
        dialog.reject();
    });
    commands.mnuImport();
    EXPECT_FALSE(FormRegistry::Instance().IsLoaded("frmImport"));
    EXPECT_TRUE(gFirstActivation);
    EXPECT_EQ(form.told, "activate\n") << "though nothing was imported";
}

TEST_F(ImportDialogTest, ItsCaptionTellsTheTimeFrame) {
    const struct {
        std::int16_t unit, count;
        const char* caption;
    } cases[] = {
        {0, 0, "Import INF files with 0 sec change"},
        {1, 30, "Import INF files with 30 min change"},
        {2, 1, "Import INF files with 1 hour change"},
        {3, 7, "Import INF files with 7 day change"},
    };
    for (const auto& c : cases) {
        gImportTime = c.unit;
        gImportTimeNum = c.count;
        const NextDialog answer = InDialog([&c](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle().toStdString(), c.caption);
            dialog.reject();
        });
        commands.mnuImport();
    }
}

TEST_F(ImportDialogTest, RemembersTheFolderUnlessItIsCancelled) {
    const struct {
        const char* why;
        std::function<void(QDialog&)> close;
        bool isRemembered;
    } cases[] = {
        {"its Cancel", [](QDialog& dialog) { Click(dialog, "BTNCancel"); }, false},
        {"Escape", [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }, false},
        {"its frame does not cancel", [](QDialog& dialog) { dialog.close(); }, true},
    };
    for (const auto& c : cases) {
        StoreFolder("/old");
        gImportDir = "/old";
        const NextDialog answer = InDialog([&c](QDialog& dialog) {
            FolderBox(dialog).setText("/new");
            c.close(dialog);
        });
        commands.mnuImport();
        EXPECT_EQ(StoredFolder(), c.isRemembered ? "/new" : "/old") << c.why;
        EXPECT_EQ(gImportDir, c.isRemembered ? "/new" : "/old") << c.why;
    }
}

TEST_F(ImportDialogTest, BrowsingReplacesTheTextUnlessItIsCancelled) {
    const NextDialog answer = InDialog([this](QDialog& dialog) {
        const Question browse = Folder("Please select Import Directory", folder.Path());
        prompts.Expect(browse);
        Click(dialog, "BTNBrowse");
        EXPECT_EQ(FolderBox(dialog).text().toStdString(), inventory);
        prompts.Expect(browse, "/srv/inventory");
        Click(dialog, "BTNBrowse");
        EXPECT_EQ(FolderBox(dialog).text(), "/srv/inventory");
        dialog.reject();
    });
    commands.mnuImport();
}

TEST_F(ImportDialogTest, EnterImportsAndClosesIt) {
    Write("PC1.ORG", SmallFile("PC1"));
    const NextDialog answer = InDialog([this](QDialog& dialog) {
        prompts.Expect(Box("Import Ok!", "Import Successful!", MsgBoxStyle::kOKOnly), [&dialog] {
            EXPECT_TRUE(dialog.isVisible()) << "the box comes first";
            EXPECT_EQ(dialog.findChild<QLabel*>("LBLName")->text(), "Import Status : PC1.org")
                << "the original, which stands for a current file that is missing";
            EXPECT_EQ(dialog.findChild<QProgressBar*>("PBImport")->value(), 100);
            EXPECT_EQ(dialog.findChild<QLabel*>("LBLNameUser")->text(), "User Status : Finished..");
            EXPECT_EQ(dialog.findChild<QProgressBar*>("PBImportUser")->value(), 100);
        });
        FolderBox(dialog).setText(QString::fromStdString(folder.Path("inf/")));
        QTest::keyClick(&FolderBox(dialog), Qt::Key_Return);
    });
    commands.mnuImport();
    EXPECT_EQ(Rows("SELECT COMPUTERNAME FROM Net"), "PC1");
    EXPECT_EQ(StoredFolder(), inventory) << "by the name that it has on disk";
    EXPECT_EQ(form.told, "hourglass\narrow\nactivate\n");
}

TEST_F(ImportDialogTest, StaysOpenUntilThereIsAFolderAndTheImportSucceeds) {
    Write("PC1.ORG", SmallFile("O'NEIL"));
    const NextDialog answer = InDialog([this](QDialog& dialog) {
        FolderBox(dialog).clear();
        prompts.Expect(
            Box("No Directory", "Please select a directory to import from first !", MsgBoxStyle::kQuestion));
        Click(dialog, "BTNImport");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(form.told, "") << "the pointer is left alone";

        FolderBox(dialog).setText(QString::fromStdString(inventory));
        prompts.Expect(Question{Question::Kind::Box, "Error# -1", {}, MsgBoxStyle::kCritical});
        prompts.Expect(Box("Import", "Failed to Import INF Files", MsgBoxStyle::kCritical));
        Click(dialog, "BTNImport");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(form.told, "hourglass\narrow\n");

        // A folder with nothing in it closes the dialog, with the import's own box alone.
        FolderBox(dialog).setText(QString::fromStdString(folder.Path("nothing")));
        prompts.Expect(Question{Question::Kind::Box, "No data to import", {}, MsgBoxStyle::kQuestion});
        Click(dialog, "BTNImport");
    });
    commands.mnuImport();
}

TEST_F(ImportDialogTest, ANameOfAnyLengthDoesNotStretchIt) {
    const std::string machine(200, 'W');
    Write(machine + ".ORG", SmallFile("PC1"));
    const NextDialog answer = InDialog([this](QDialog& dialog) {
        const int width = dialog.minimumSizeHint().width();
        prompts.Expect(Box("Import Ok!", "Import Successful!"), [&dialog, width] {
            EXPECT_EQ(dialog.minimumSizeHint().width(), width);
            EXPECT_GT(dialog.findChild<QLabel*>("LBLName")->text().size(), 200);
        });
        Click(dialog, "BTNImport");
    });
    commands.mnuImport();
}

} // namespace
