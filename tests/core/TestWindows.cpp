// SPDX-License-Identifier: GPL-3.0-or-later
// The registry of windows, and the small windows that live by it.
#include "core/FileModule.h"
#include "core/FormRegistry.h"
#include "core/SelectAllText.h"
#include "core/frmCompiling.h"
#include "core/frmSplash.h"
#include "platform/application.h"
#include "tests/support/Windows.h"

#include <QEventLoop>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWindow>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class FormRegistryTest : public testing::Test {
protected:
    /// Loads a window that notes its unloading and leaves the registry.
    void Load(const char* name, QWidget& window) {
        mRegistry.Load(name, &window, [this, name, &window] {
            mUnloaded.emplace_back(name);
            mRegistry.Unloaded(&window);
        });
    }

    FormRegistry mRegistry;
    std::vector<std::string> mUnloaded;
    QWidget mMain, mReport, mOptions;
};

TEST_F(FormRegistryTest, TheMainWindowUnloadsTheOthersLastLoadedFirst) {
    Load("frmMain", mMain);
    Load("frmAllReports", mReport);
    Load("frmOptions", mOptions);
    EXPECT_TRUE(mRegistry.IsLoaded("frmOptions")) << "it was never shown";
    EXPECT_FALSE(mRegistry.IsLoaded("frmoptions")) << "names are compared exactly";
    mRegistry.UnloadOthers(&mMain);
    EXPECT_THAT(mUnloaded, ElementsAre("frmOptions", "frmAllReports"));
    EXPECT_THAT(mRegistry.Windows(), ElementsAre(&mMain));
}

TEST_F(FormRegistryTest, AWindowMayTakeOthersWithItOrRefuse) {
    Load("frmMain", mMain);
    Load("frmAllReports", mReport);
    mRegistry.Load("frmOptions", &mOptions, [&] {
        mRegistry.Unload("frmAllReports");
        mUnloaded.emplace_back("refused");
    });
    mRegistry.UnloadOthers(&mMain);
    EXPECT_THAT(mUnloaded, ElementsAre("frmAllReports", "refused"));
    EXPECT_THAT(mRegistry.Windows(), ElementsAre(&mMain, &mOptions));
    mRegistry.Unload("frmAllReports");
    EXPECT_EQ(mUnloaded.size(), 2U) << "unloading what is not loaded does nothing";
}

TEST_F(FormRegistryTest, TheProgramEndsWithItsLastWindowOnceTheStartUpIsOver) {
    int ends = 0;
    Load("frmSplash", mReport);
    mRegistry.Unload("frmSplash");
    QTest::qWait(1);
    Load("frmMain", mMain);
    mRegistry.OnLastUnloaded([&] { ++ends; });
    QTest::qWait(1);
    EXPECT_EQ(ends, 0) << "the splash was the only window for a while; the main window is loaded, if hidden";

    Load("frmAllReports", mReport);
    mRegistry.Unload("frmMain");
    QTest::qWait(1);
    EXPECT_EQ(ends, 0) << "a report is still open";
    mRegistry.Unload("frmAllReports");
    EXPECT_EQ(ends, 0) << "a handler of the window is still running";
    QTest::qWait(1);
    EXPECT_EQ(ends, 1);
    mRegistry.OnLastUnloaded([&] { ++ends; });
    QTest::qWait(1);
    EXPECT_EQ(ends, 2) << "a start-up that ends without any window ends the program, too";
}

class SplashTest : public testing::Test {
protected:
    ~SplashTest() override {
        FormRegistry::Instance().Unload("frmSplash");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static frmSplash& Load() {
        auto* const splash = new frmSplash; // it belongs to itself
        splash->Status("Please Wait");
        splash->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(splash));
        return *splash;
    }
};

TEST_F(SplashTest, IsCutAlongTheBlueOfItsPictureAndItsLabelsStandWithin) {
    frmSplash& splash = Load();
    const auto* const status = splash.findChild<QLabel*>("lblStatus");
    const auto* const version = splash.findChild<QLabel*>("lblVersion");
    EXPECT_EQ(status->text(), "Please Wait");
    EXPECT_EQ(version->text(), "1.20.8");
    for (const QLabel* label : {status, version}) {
        const QRect text = label->fontMetrics().boundingRect(
            label->geometry(), static_cast<int>(label->alignment()), label->text());
        EXPECT_EQ(QRegion(text).subtracted(splash.mask()), QRegion()) << label->objectName().toStdString();
    }
    QImage picture(splash.size(), QImage::Format_RGB32);
    splash.render(&picture, {}, {}, {});
    const QRegion shape = splash.mask();
    EXPECT_FALSE(shape.contains(QPoint(0, 0)));
    for (int x = 0; x < picture.width(); ++x)
        for (int y = 0; y < picture.height(); ++y)
            ASSERT_FALSE(shape.contains(QPoint(x, y)) && picture.pixel(x, y) == qRgb(0, 0, 255))
                << x << " " << y;
}

TEST_F(SplashTest, TheTimerUnloadsItOnceItIsEnabled) {
    auto* const timer = Load().findChild<QTimer*>("TMRTerminate");
    EXPECT_EQ(timer->interval(), 5000);
    timer->setInterval(1);
    QTest::qWait(20);
    ASSERT_NE(frmSplash::Loaded(), nullptr) << "it must not close during the wait for the collector";
    frmSplash::Loaded()->TimerEnabled(true);
    EXPECT_TRUE(Eventually([] { return frmSplash::Loaded() == nullptr; }));
}

TEST_F(SplashTest, UnloadedTwiceItIsUnloadedOnce) {
    frmSplash& splash = Load();
    FormRegistry::Instance().Unload("frmSplash");
    EXPECT_EQ(frmSplash::Loaded(), nullptr) << "gone at once for whoever asks";
    EXPECT_FALSE(splash.isVisible()) << "a box that comes next is not covered";
    splash.Unload();
}

TEST(CompilingTest, StandsPaintedWhileItsCallerIsBusyAndLeavesTheFocusAlone) {
    QWidget caller;
    ShowActive(caller);
    auto* const window = new frmCompiling; // it belongs to itself
    window->ShowAndPaint();
    EXPECT_TRUE(window->windowHandle()->isExposed());
    EXPECT_EQ(window->windowTitle(), "Compiling Information... Please wait");
    EXPECT_TRUE(FileModule::FormIsLoaded("frmCompiling"));

    window->close();
    EXPECT_FALSE(FileModule::FormIsLoaded("frmCompiling")) << "closed by its frame";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST(SelectAllOnFocus, TypingReplacesTheTextHoweverTheBoxWasReached) {
    QWidget dialog;
    QVBoxLayout layout(&dialog);
    QLineEdit name("name"), password("password");
    for (QLineEdit* box : {&name, &password}) {
        layout.addWidget(box);
        SelectAllOnFocus(*box);
    }
    ShowActive(dialog);
    QTest::mouseClick(&password, Qt::LeftButton);
    QTest::qWait(1);
    EXPECT_EQ(password.selectedText(), "password") << "by mouse";
    QTest::mouseClick(&password, Qt::LeftButton);
    QTest::qWait(1);
    EXPECT_EQ(password.selectedText(), "") << "a click in the box that has the focus sets the caret";
    name.setFocus();
    QTest::qWait(1);
    EXPECT_EQ(name.selectedText(), "name") << "by the program";
    name.setSelection(0, 2);
    for (const auto reason : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason}) {
        QFocusEvent leaves(QEvent::FocusOut, reason), returns(QEvent::FocusIn, reason);
        QApplication::sendEvent(&name, &leaves);
        QApplication::sendEvent(&name, &returns);
        QTest::qWait(1);
        EXPECT_EQ(name.selectedText(), "na") << "back from its own menu or another window";
    }
}

} // namespace
