// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/frmMain.h"

#include "browser/Images.h"
#include "browser/ListView.h"
#include "browser/PaneLayout.h"
#include "browser/TreeModel.h"
#include "core/ConsoleSettings.h"
#include "core/Controls.h"
#include "core/ElidedLabel.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/HelpKey.h"
#include "core/LongWork.h"
#include "core/MenuKey.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/twips.h"

#include <QCloseEvent>
#include <QDateTime>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QProgressBar>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QTreeView>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace {

constexpr int kSplitterWidth = 90;
/// Of a stored size that no window can have.
constexpr double kDefaultHeight = 6500;
/// What must be seen of a window's top to get hold of it, pixels.
constexpr int kGrip = 60;
constexpr int kTitleHeight = 24;

void UnloadSplash() {
    FormRegistry::Instance().Unload("frmSplash");
}

void IgnoringErrors(const std::function<void()>& step) {
    try {
        step();
    } catch (const RunTimeError&) {
        // The window goes whatever fails on its way; the next step still counts.
        return;
    }
}

/// Within what a window's coordinates can hold.
int BoundedPixels(double twips) {
    constexpr double kFarthest = 1e6;
    return ToPixels(std::clamp(twips, -kFarthest, kFarthest));
}

bool CanBeReached(const QRect& window) {
    const QRect title(window.topLeft(), QSize(window.width(), kTitleHeight));
    const QList<QScreen*> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
        const QRect seen = title & screen->availableGeometry();
        return seen.width() >= kGrip && seen.height() >= kTitleHeight / 2;
    });
}

} // namespace

frmMain::frmMain(SettingsStore& settings, Prompts& prompts, const Clock& clock, Desktop& desktop,
                 report::Printing& printing, EchoProbes& probes, std::string programFolder)
    : mSettings(settings),
      mPrompts(prompts),
      mClock(clock),
      mDesktop(desktop),
      mProgramFolder(std::move(programFolder)),
      mSession(*this, prompts, clock, mProgramFolder, UnloadSplash),
      mImport(ImportContext{*this, settings, prompts, clock, mProgramFolder}),
      mListExport(ExportContext{*this, prompts, mProgramFolder}),
      mMachineDump(ExportContext{*this, prompts, mProgramFolder}),
      mBackup(*this, prompts, clock, mProgramFolder),
      mBaseline(*this, prompts),
      mMaintenance(*this, prompts),
      mReports(ReportContext{*this, prompts, printing, mProgramFolder}),
      mPing(PingContext{*this, prompts, probes}) {
    setObjectName("frmMain");
    setWindowTitle("MOVA Professional Administration Module");
    setWindowIcon(ProgramIcon());
    setMinimumWidth(ToPixels(kNarrowestWindow));
    BuildControls();
    BuildMenus();
    BuildToolBar();
    BuildShortcuts();
    new HelpKey([this](const std::string& page) { ShowHelpTopic(page); }, this);
    mFirstSplit = mSplit = FirstSplit();
    mNodeTimer.setSingleShot(true);
    connect(&mNodeTimer, &QTimer::timeout, this, &frmMain::ShowSelectedNode);
    FormRegistry::Instance().Load("frmMain", this, [this] { close(); });
}

frmMain::~frmMain() {
    if (mIsLoaded)
        FormRegistry::Instance().Unloaded(this);
}

void frmMain::BuildControls() {
    auto* const panes = new QWidget(this);
    setCentralWidget(panes);
    panes->installEventFilter(this);
    setContextMenuPolicy(Qt::NoContextMenu);

    pgbLoaded = new QProgressBar(panes);
    pgbLoaded->setObjectName("pgbLoaded");
    pgbLoaded->setAccessibleName("Progress");
    pgbLoaded->setTextVisible(false);
    pgbLoaded->setRange(0, 1);

    mTree = new TreeModel(this);
    tvTreeView = new QTreeView(panes);
    tvTreeView->setObjectName("tvTreeView");
    tvTreeView->setAccessibleName("Machines and their categories");
    tvTreeView->setModel(mTree);
    tvTreeView->setHeaderHidden(true);
    tvTreeView->setUniformRowHeights(true);
    tvTreeView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tvTreeView->setTabKeyNavigation(false);
    Controls::OnlyLeftDoubleClicks(*tvTreeView);
    tvTreeView->header()->setStretchLastSection(false);
    tvTreeView->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tvTreeView->installEventFilter(this);
    tvTreeView->viewport()->installEventFilter(this);
    // The press that selects a node must be over before its list is filled.
    connect(tvTreeView->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        // With Ctrl the selected node would lose its mark, though the list remains its own.
        QItemSelectionModel& selection = *tvTreeView->selectionModel();
        if (!selection.hasSelection())
            selection.select(selection.currentIndex(), QItemSelectionModel::Select);
        mNodeTimer.start(0);
    });
    connect(tvTreeView, &QTreeView::clicked, this, &frmMain::NodeClick);
    connect(tvTreeView, &QTreeView::activated, this, [this](const QModelIndex& node) {
        tvTreeView->setCurrentIndex(node);
        NodeClick(node);
    });

    lvListView = new ListView(panes);
    lvListView->setObjectName("lvListView");
    lvListView->Name("Contents of the selected node");
    lvListView->Watch(*this);
    connect(lvListView, &ListView::DblClick, this, &frmMain::lvListView_DblClick);
    connect(lvListView, &ListView::ColumnClick, this, &frmMain::lvListView_ColumnClick);
    connect(lvListView, &ListView::FilterTyped, this, &frmMain::lvListView_FilterTyped);
    setTabOrder(tvTreeView, lvListView);

    imgSplitter = new QWidget(panes);
    imgSplitter->setObjectName("imgSplitter");
    imgSplitter->setCursor(Qt::SplitHCursor);
    imgSplitter->setToolTip("Drag to share the room between tree and list (Alt+Shift+Left, Alt+Shift+Right)");
    imgSplitter->installEventFilter(this);
    imgSplitter->resize(ToPixels(kSplitterWidth), 0);
    picSplitter = new QWidget(panes);
    picSplitter->setObjectName("picSplitter");
    picSplitter->setAutoFillBackground(true);
    picSplitter->setBackgroundRole(QPalette::Highlight);
    picSplitter->hide();

    BuildStatusBar();
    tvTreeView->setFocus();
}

void frmMain::BuildShortcuts() {
    const auto add = [this](const char* key, auto work) {
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this, work);
    };
    add("F1", [this] { Guarded("Error#", [this] { mnuHelpContents(); }); });
    add("Ctrl+F", [this] { lvListView->OpenFilter(); });
    add("Alt+Shift+Left", [this] { MoveSplit(-1); });
    add("Alt+Shift+Right", [this] { MoveSplit(1); });
    OpenMenuByKey(*this);
}

void frmMain::BuildStatusBar() {
    sbStatusBar = new QStatusBar(centralWidget());
    sbStatusBar->setObjectName("sbStatusBar");
    sbStatusBar->setAccessibleName("Status");
    int number = 0;
    mStatusPanel = new ElidedLabel(sbStatusBar);
    mDatePanel = new QLabel(sbStatusBar);
    mTimePanel = new QLabel(sbStatusBar);
    for (QLabel* const panel : {mStatusPanel, mDatePanel, mTimePanel})
        panel->setObjectName(QString("sbStatusBar(%1)").arg(++number));
    sbStatusBar->addWidget(mStatusPanel, 1);
    sbStatusBar->addPermanentWidget(mDatePanel);
    sbStatusBar->addPermanentWidget(mTimePanel);
    StatusText("Status");
    mClockTimer.setSingleShot(true);
    connect(&mClockTimer, &QTimer::timeout, this, &frmMain::ShowClock);
    ShowClock();
}

void frmMain::ShowClock() {
    const LocalTime now = mClock.Now();
    const std::chrono::local_days day = std::chrono::floor<std::chrono::days>(now);
    const QDate date = QDate(1970, 1, 1).addDays(day.time_since_epoch().count());
    const QTime time = QTime(0, 0).addSecs(static_cast<int>((now - day).count()));
    const QLocale locale;
    const auto show = [](QLabel& panel, const char* meaning, const QString& text) {
        panel.setText(text);
        panel.setAccessibleName(QString("%1: %2").arg(meaning, text));
    };
    show(*mDatePanel, "Date", locale.toString(date, QLocale::ShortFormat));
    show(*mTimePanel, "Time", locale.toString(time, QLocale::ShortFormat));
    // Again when the text will change: at the next minute, or second where the locale shows them.
    const bool hasSeconds = locale.timeFormat(QLocale::ShortFormat).contains('s');
    mClockTimer.start(hasSeconds ? 1000 : (60 - time.second()) * 1000);
}

void frmMain::Load() {
    Guarded("Error#", [this] { LoadSettings(); });
    ShowHint();
}

void frmMain::LoadSettings() {
    mnuPopup->menuAction()->setVisible(false);
    mnuPopupR->menuAction()->setVisible(false);
    // The console opens without a store that can be written, too; the first failure is told of at the end.
    std::optional<RunTimeError> unsaved;
    const auto saving = [&unsaved](const auto& step) {
        try {
            step();
        } catch (const RunTimeError& failure) {
            if (!unsaved)
                unsaved = failure;
        }
    };
    saving([this] { SaveSetting("APPPATH", mProgramFolder); });
    RestorePosition();
    const std::string database = "demodb.mdb";
    gDatabasePath = FindFile(mProgramFolder, database).value_or(JoinPath(mProgramFolder, database));
    gImportDir = Setting("ImportDir", "");
    gBackupDir = Setting("BackupDir", "");
    mShowConf = CInt(CDbl(Setting("ShowConf", "0")));
    mShowConf = 1; // the console always opens on the current configuration
    gImportTime = CInt(CDbl(Setting("ImportTime", "0")));
    gImportTimeNum = CInt(CDbl(Setting("ImportTimeNum", "0")));

    struct StoredView {
        const char* key;
        const char* item;
        void (frmMain::*click)();
    };
    constexpr std::array<StoredView, 4> kViews = {
        {{"ViewProg", "mnuProgress", &frmMain::mnuProgress},
         {"ViewStatus", "mnuViewStatusBar", &frmMain::mnuViewStatusBar},
         {"ViewTool", "mnuViewToolbar", &frmMain::mnuViewToolbar},
         {"ViewLineUp", "mnuViewLineUpIcons", &frmMain::mnuViewLineUpIcons}}};
    for (const StoredView& view : kViews) {
        // The click flips the mark to what is stored, and applies it.
        Action(view.item).setChecked(CDbl(Setting(view.key, "1")) == 0);
        saving([&] { (this->*view.click)(); });
    }
    ApplyStoredMode();
    gFirstActivation = true;
    mSession.Activate();
    if (unsaved)
        throw RunTimeError(*unsaved);
}

void frmMain::RestorePosition() {
    const QPoint position(BoundedPixels(CDbl(Setting("MainLeft", "1000"))),
                          BoundedPixels(CDbl(Setting("MainTop", "1000"))));
    const double width = CDbl(Setting("MainWidth", "6500"));
    const double height = CDbl(Setting("MainHeight", "6500"));
    // A stored place may be one of a screen that is gone.
    const QScreen& screen = *QGuiApplication::primaryScreen();
    QRect window(position, QSize(BoundedPixels(width), BoundedPixels(height > 0 ? height : kDefaultHeight)));
    window.setSize(
        window.size().expandedTo(QSize(minimumWidth(), 1)).boundedTo(screen.availableVirtualSize()));
    if (!CanBeReached(window)) {
        window.setSize(window.size().boundedTo(screen.availableSize()));
        window.moveTopLeft(screen.availableGeometry().topLeft());
    }
    resize(window.size());
    move(window.topLeft());
}

void frmMain::Unload() {
    if (!mIsLoaded)
        return;
    mIsLoaded = false;
    IgnoringErrors([this] { StatusText("Closing MOVA Admin..."); });
    IgnoringErrors([this] { FormRegistry::Instance().UnloadOthers(this); });
    const auto save = [this](const char* key, const std::string& text) {
        IgnoringErrors([&] { SaveSetting(key, text); });
    };
    if (!isMinimized()) {
        save("MainLeft", NumberText(ToTwips(x())));
        save("MainTop", NumberText(ToTwips(y())));
        save("MainWidth", NumberText(ToTwips(width())));
        save("MainHeight", NumberText(ToTwips(height())));
        save("ImportDir", gImportDir);
        save("BackupDir", gBackupDir);
        save("ShowConf", NumberText(mShowConf));
    }
    save("ViewMode", NumberText(static_cast<int>(lvListView->View())));
    IgnoringErrors([] {
        if (gRecordset)
            gRecordset->Close();
    });
    IgnoringErrors([] {
        if (gConnection)
            gConnection->Close();
    });
}

void frmMain::OnExit(std::function<void()> handler) {
    mOnExit = std::move(handler);
}

void frmMain::closeEvent(QCloseEvent* event) {
    // The work would lose its database on the way. Most window systems hold the request back until it is
    // over.
    if (IsBusy()) {
        event->ignore();
        return;
    }
    const bool wasLoaded = mIsLoaded;
    Unload();
    event->accept();
    if (wasLoaded) {
        hide();
        FormRegistry::Instance().Unloaded(this);
    }
}

bool frmMain::event(QEvent* event) {
    // An import asks for a new opening at the next activation; one that runs must be over first.
    if (event->type() == QEvent::WindowActivate && mIsLoaded && !LongWork::IsRunning())
        mSession.Activate();
    const bool isDone = QMainWindow::event(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        FitSplit();
    return isDone;
}

std::string frmMain::Setting(const std::string& key, const std::string& fallback) const {
    return ConsoleSettings::Get(mSettings, key, fallback);
}

void frmMain::SaveSetting(const std::string& key, const std::string& text) {
    ConsoleSettings::Save(mSettings, key, text);
}

void frmMain::Guarded(const std::string& title, const std::function<void()>& work) {
    try {
        work();
    } catch (const RunTimeError& error) {
        // While the program starts, the top-most splash would cover the box.
        UnloadSplash();
        mPrompts.MsgBox(error.description, MsgBoxStyle::kCritical, title + NumberText(error.number));
    }
}

void frmMain::StatusText(const std::string& text) {
    mStatusPanel->setText(QString::fromStdString(text));
    // Texts that announce long work must be seen before it begins.
    if (mStatusPanel->isVisible())
        mStatusPanel->repaint();
}

void frmMain::ProgressMaximum(int maximum) {
    // A bar without a range would swing to and fro.
    pgbLoaded->setRange(0, std::max(maximum, 1));
}

void frmMain::ProgressValue(int value) {
    pgbLoaded->setValue(std::clamp(value, 0, pgbLoaded->maximum()));
}

void frmMain::Pointer(MousePointer pointer) {
    const bool isHourglass = pointer == MousePointer::Hourglass;
    if (isHourglass == mHasHourglass)
        return;
    mHasHourglass = isHourglass;
    if (isHourglass)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}
