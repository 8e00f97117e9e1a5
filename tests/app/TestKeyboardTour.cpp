// SPDX-License-Identifier: GPL-3.0-or-later
// A day's work at the console without a mouse, from the start to the exit.
#include "browser/ListView.h"
#include "tests/app/StartupTest.h"
#include "tests/support/Windows.h"

#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QLabel>

namespace {

std::string Device(int number, const std::string& category, const std::string& name) {
    return "INFO" + std::to_string(number) + "=Cat=" + category + "|Prob=00 00 00 00 |DevName=" + name +
           "|DvrDate=|IO=|IRQ=|DMA=|MEM=||\r\n";
}

class KeyboardTourTest : public StartupTest {
protected:
    KeyboardTourTest() {
        settings.SaveSetting(kApplication, kSection, "ImportDir", folder.Path("INF"));
        processes.onStart = [this] {
            folder.WriteFile("INF/PC1.ORG", MachineFile("PC1") + "[DEVICE]\r\nINFO0=4|\r\n[DEVICEDATA]\r\n" +
                                                Device(0, "Display adapters", "Graphics") +
                                                Device(1, "System devices", "Board") +
                                                Device(2, "Keyboard", "Keys") + Device(3, "Mouse", "Wheel"));
        };
    }

    static void Press(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
        // A node's list is filled when the key that chose it is over.
        QTest::qWait(1);
    }
    static std::string Clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }
};

TEST_F(KeyboardTourTest, NeedsNoMouse) {
    ASSERT_TRUE(Start());
    QWidget& window = *MainWindow();
    ShowActive(window);
    const auto& list = *window.findChild<ListView*>("lvListView");
    const auto& tree = *window.findChild<QTreeView*>("tvTreeView");
    ASSERT_EQ(QApplication::focusWidget(), &tree) << "the tree is where it begins";

    // The root, ALL, the machine; below it the second category is that of the devices.
    for (const int key :
         {Qt::Key_Home, Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Down, Qt::Key_Down})
        Press(key);
    ASSERT_EQ(tree.currentIndex().data().toString(), "Devices");
    ASSERT_EQ(list.Items().Rows(), 4U);

    Press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), &list.CurrentView());
    Press(Qt::Key_3, Qt::ControlModifier);
    Press(Qt::Key_Home);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(),
              "Category\tProblem\tName\tDriver Date\tI/O\tIRQ\tDMA\tMemory\tExtra Info\t\r\n"
              "System devices\tNo\tBoard\t\t\t\t\t\tn/a\r\n"
              "Display adapters\tNo\tGraphics\t\t\t\t\t\tn/a\r\n"
              "Keyboard\tNo\tKeys\t\t\t\t\t\tn/a\r\n")
        << "three of four, by the third column";

    Press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(window.findChild<QAction*>("mnuConfig(0)")->isChecked());
    EXPECT_EQ(list.Items().Rows(), 0U) << "another configuration is read at the next choice of a node";

    folder.WriteFile("INF/PC2.ORG", MachineFile("PC2"));
    Press(Qt::Key_F12);
    EXPECT_EQ(Machines(), "PC1\nPC2");
    EXPECT_EQ(tree.model()->rowCount(tree.model()->index(0, 0)), 3) << "ALL and two machines";
    EXPECT_EQ(window.findChild<QLabel*>("sbStatusBar(1)")->text(), "Database Open");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);

    Press(Qt::Key_F10);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(QApplication::activePopupWidget()->objectName(), "mnuFile");
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);

    Press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(MainWindow(), nullptr);
    EXPECT_FALSE(gConnection->IsOpen());
}

} // namespace
