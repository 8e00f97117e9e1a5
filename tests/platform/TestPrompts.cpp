// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs as a person meets them: each test answers the open dialog by keyboard.
#include "platform/qtprompts.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Windows.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>

#include <gtest/gtest.h>

#include <functional>

namespace {

/// Lets `act` work on the dialog that opens next, and answer it.
template <class Dialog>
void WhenOpen(std::function<void(Dialog&)> act) {
    QTimer::singleShot(0, qApp, [act] {
        auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr) << "no such dialog is open";
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
        act(*dialog);
        // A button that is worked by its letter goes down for a moment first.
        if (!Eventually([&] { return !dialog->isVisible(); })) {
            ADD_FAILURE() << "the dialog was not answered";
            dialog->reject();
        }
    });
}

constexpr int kGuard = MsgBoxStyle::kYesNo + MsgBoxStyle::kCritical + MsgBoxStyle::kDefaultButton2;

TEST(MsgBox, AQuestionThatGuardsDestructionIsNoUnlessYesIsMeant) {
    using Act = std::function<void(QMessageBox&)>;
    const Act enter = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); };
    const Act escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
    const Act frame = [](QMessageBox& box) { box.close(); };
    const Act letter = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Y, Qt::AltModifier); };
    const struct {
        const char* why;
        int style;
        MsgBoxAnswer answer;
        Act act;
    } cases[] = {
        {"Enter takes the default, the second button", kGuard, MsgBoxAnswer::No, enter},
        {"Escape", MsgBoxStyle::kYesNo, MsgBoxAnswer::No, escape},
        {"the frame's own button", MsgBoxStyle::kYesNo, MsgBoxAnswer::No, frame},
        {"Yes by its English letter", kGuard, MsgBoxAnswer::Yes, letter},
        {"Yes is the default of a plain question", MsgBoxStyle::kYesNo, MsgBoxAnswer::Yes, enter},
    };
    for (const auto& c : cases) {
        WhenOpen<QMessageBox>(c.act);
        EXPECT_EQ(QtPrompts().MsgBox("Replace this backup file?", c.style, "Replace?"), c.answer) << c.why;
    }
}

TEST(MsgBox, AFailureHasItsIconAndABoxWithoutATitleTheProgramsName) {
    WhenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        EXPECT_EQ(box.windowTitle(), "Velmora");
        box.close();
    });
    QtPrompts().MsgBox("text", MsgBoxStyle::kCritical, "");
}

TEST(MsgBox, AHostileMachineNameIsShownAsItIsAndFitsTheScreen) {
    const std::string name = "<img src='file:///etc/passwd'><b>PC</b>" + std::string(5000, 'X');
    WhenOpen<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.text().remove(QChar(0x200B)).toStdString(), "Delete\n" + name);
        EXPECT_LT(box.width(), 1000);
        box.close();
    });
    QtPrompts().MsgBox("Delete\r\n" + name, kGuard, "Delete");
}

TEST(MsgBox, ShowsTheArrowInTheMiddleOfLongWork) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    WhenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        box.close();
    });
    QtPrompts().MsgBox("text", 0, "title");
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor) << "the work goes on";
    QApplication::restoreOverrideCursor();
}

TEST(MsgBox, StandsOnTheWindowThatWasWorkedInLast) {
    QMainWindow owner;
    QMainWindow report;
    owner.show();
    QtPrompts prompts;
    prompts.Owner(&owner);
    const auto parent = [&] {
        QWidget* found = nullptr;
        WhenOpen<QMessageBox>([&](QMessageBox& box) {
            found = box.parentWidget();
            box.close();
        });
        prompts.MsgBox("text", 0, "title");
        return found;
    };
    ShowActive(report);
    EXPECT_EQ(parent(), &report);
    // Between two boxes the keyboard is nobody's for a moment.
    QApplication::setActiveWindow(nullptr);
    EXPECT_EQ(parent(), &report);
    QApplication::setActiveWindow(nullptr);
    KeepDialogsOff(report);
    ShowActive(report);
    EXPECT_EQ(parent(), &owner) << "a window that may be closed beside the box";
}

TEST(MsgBox, GoesWithItsWindowWithoutAnAnswer) {
    QPointer<QMainWindow> owner = new QMainWindow;
    owner->show();
    QtPrompts prompts;
    prompts.Owner(owner);
    QTimer::singleShot(0, owner, [&] { delete owner; });
    EXPECT_EQ(prompts.MsgBox("Continue?", MsgBoxStyle::kYesNo, "title"), MsgBoxAnswer::No);
}

TEST(InputBox, GivesTheTextOrNothing) {
    WhenOpen<QInputDialog>([](QInputDialog& box) {
        for (const QLabel* label : box.findChildren<QLabel*>())
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
        QTest::keyClicks(box.findChild<QLineEdit*>(), "192.168.0.7");
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(QtPrompts().InputBox("<b>Address</b>", "Ping", "the initial text is replaced"), "192.168.0.7");

    WhenOpen<QInputDialog>([](QInputDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(QtPrompts().InputBox("Address", "Ping", "initial"), "");
}

class FileDialogs : public testing::Test {
protected:
    /// Types `name` and presses Enter; records what the dialog showed.
    void WillType(const char* name) {
        WhenOpen<QFileDialog>([this, name](QFileDialog& dialog) {
            mTitle = dialog.windowTitle().toStdString();
            mFolder = dialog.directory().absolutePath().toStdString();
            auto* const edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_NE(edit, nullptr);
            edit->setText(QString::fromUtf8(name));
            QTest::keyClick(edit, Qt::Key_Return);
        });
    }

    FileDialog Backup() const {
        return {"Backup File (*.zbk)|*.zbk", "Please select a backup file", "zbk", mFiles.Path()};
    }

    TemporaryFolder mFiles;
    QtPrompts mPrompts;
    std::string mTitle;
    std::string mFolder;
};

TEST_F(FileDialogs, GiveThePathThatIsTyped) {
    WillType("new");
    EXPECT_EQ(mPrompts.OpenFile(Backup()), mFiles.Path("new.zbk")) << "a missing file, with the extension";
    EXPECT_EQ(mTitle, "Please select a backup file");
    EXPECT_EQ(mFolder, mFiles.Path());
    mFiles.WriteFile("Agreement", "text");
    WillType("Agreement");
    EXPECT_EQ(mPrompts.OpenFile(Backup()), mFiles.Path("Agreement")) << "a file is opened as it is";
    mFiles.WriteFile("old.zbk", "backup");
    WillType("old.zbk");
    EXPECT_EQ(mPrompts.SaveFile(Backup()), mFiles.Path("old.zbk")) << "without a question of its own";
}

TEST_F(FileDialogs, CancelGivesNothing) {
    const auto cancel = [](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
    WhenOpen<QFileDialog>(cancel);
    EXPECT_EQ(mPrompts.OpenFile(Backup()), "");
    WhenOpen<QFileDialog>(cancel);
    EXPECT_EQ(mPrompts.SaveFile(Backup()), "") << "the default extension alone is no path";
    WhenOpen<QFileDialog>(cancel);
    EXPECT_EQ(mPrompts.BrowseForFolder("Please select INF Directory", mFiles.Path()), "");
}

TEST(NameFilters, MatchBothLetterCases) {
    EXPECT_EQ(NameFilters("MOVA Database (*.mdb)|*.MDB"), QStringList("MOVA Database (*.mdb *.MDB)"));
    EXPECT_EQ(NameFilters("Pages|*.htm;*.html|All|*.*"),
              (QStringList{"Pages (*.htm *.HTM *.html *.HTML)", "All (*)"}));
    EXPECT_EQ(NameFilters("a name without a pattern"), QStringList());
}

} // namespace
