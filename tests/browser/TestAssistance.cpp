// SPDX-License-Identifier: GPL-3.0-or-later
// What assistive technology finds in the windows, and that nobody's input gets into a running import.
#include "browser/ListView.h"
#include "core/Globals.h"
#include "tests/browser/HelpTest.h"

#include <QAccessible>

namespace {

using AssistanceTest = HelpTest;

/// What a person works with or needs to be told of: not the frames that hold it, nor the toolkit's own
/// buttons within a text box or beside tabs.
bool IsControl(const QWidget& widget) {
    if (widget.objectName().startsWith("qt_") || widget.parent()->inherits("QLineEdit") ||
        widget.parent()->inherits("QTabBar"))
        return false;
    const char* const kinds[] = {"QAbstractButton", "QAbstractItemView", "QLineEdit", "QTextEdit",
                                 "QComboBox",       "QProgressBar",      "QTabBar"};
    return std::any_of(std::begin(kinds), std::end(kinds), [&](const char* kind) {
        return widget.inherits(kind) && !widget.inherits("QHeaderView");
    });
}

/// Returns how many controls there are.
int ExpectNames(const QWidget& window) {
    int controls = 0;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() != &window || !IsControl(*widget))
            continue;
        ++controls;
        QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(widget);
        EXPECT_TRUE(face != nullptr && !face->text(QAccessible::Name).isEmpty())
            << window.objectName().toStdString() << ": " << widget->metaObject()->className() << " "
            << widget->objectName().toStdString();
    }
    return controls;
}

TEST_F(AssistanceTest, EveryControlHasANameToBeReadOut) {
    Open();
    EXPECT_GE(ExpectNames(*Help()), 13) << "lists, boxes and page, and the buttons";
    List().OpenFilter();
    EXPECT_GE(ExpectNames(*form), 14) << "ten buttons, the panes, the filter and the bar";
    const NextDialog import([](QDialog& dialog) {
        EXPECT_EQ(ExpectNames(dialog), 6) << "the folder, three buttons, two bars";
        dialog.reject();
    });
    Action("mnuImport").trigger();
}

/// Notes the mouse moves that reach any widget.
class MoveCounter final : public QObject {
public:
    MoveCounter() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override {
        moves += watched->isWidgetType() && event->type() == QEvent::MouseMove ? 1 : 0;
        return false;
    }
    int moves = 0;
};

TEST_F(AssistanceTest, InputWaitsUntilTheImportIsOver) {
    for (const char* machine : {"PC1", "PC2", "PC3", "PC4"})
        folder.WriteFile("INF/" + std::string(machine) + ".ORG",
                         "[NET]\r\nINFO0=" + std::string(machine) + "|user|20240315|08:15:00|1|\r\n");
    Store("ImportDir", folder.Path("INF"));
    MakeDatabase({});
    LoadAndShow();
    MoveCounter counter;
    QCursor::setPos(form->geometry().topLeft() + QPoint(20, 200));
    ASSERT_TRUE(Eventually([&] { return counter.moves > 0; })) << "a moved pointer tells the window";
    counter.moves = 0;
    int looks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QCursor::setPos(form->geometry().topLeft() + QPoint(30 + ++looks, 200));
        if (looks == 3)
            timer.stop();
    });
    timer.start(0);
    const EveryLookIsDue every;
    Action("mnuQuickImport").trigger();
    EXPECT_EQ(looks, 3) << "the window lives while it imports";
    EXPECT_EQ(counter.moves, 0);
    EXPECT_EQ(gMachineCount, 4);
    EXPECT_TRUE(Eventually([&] { return counter.moves > 0; })) << "and is not lost";
}

} // namespace
