// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ReportWindow.h"

#include "core/Controls.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/HelpKey.h"
#include "core/MenuKey.h"
#include "core/frmCompiling.h"
#include "platform/Aside.h"
#include "platform/application.h"
#include "platform/errors.h"
#include "platform/prompts.h"
#include "platform/report/Viewer.h"
#include "reports/frmSelectPrinter.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include <utility>

using Controls::Shown;

namespace {

constexpr const char* kWaitWindow = "frmCompiling";
/// Of a new window, in heights of a text line: a page's width and most of its height.
constexpr QSize kFirstSize(60, 54);

} // namespace

ReportWindow::ReportWindow(ReportContext context, const char* name, const char* viewerName,
                           std::span<const MenuRow> menu)
    : mContext(std::move(context)), mViewer(new report::Viewer(mContext.prompts, mContext.printing, this)) {
    setObjectName(name);
    HelpTopic(*this, "reports.html");
    mViewer->setObjectName(viewerName);
    setCentralWidget(mViewer);
    BuildMenu(menu);
    OpenMenuByKey(*this);
    resize((kFirstSize * fontMetrics().height()).boundedTo(screen()->availableSize()));
    FormRegistry::Instance().Load(name, this, [this] { Unload(); });
}

ReportWindow::~ReportWindow() {
    FormRegistry::Instance().Unloaded(this);
    Hourglass(false);
}

void ReportWindow::BuildMenu(std::span<const MenuRow> rows) {
    QMenu* menu = nullptr;
    for (const MenuRow& row : rows) {
        QAction* action = nullptr;
        if (row.caption.empty()) {
            action = menu->addSeparator();
        } else if (row.click == nullptr) {
            menu = menuBar()->addMenu(Shown(row.caption));
            action = menu->menuAction();
            menu->setObjectName(Shown(row.name));
        } else {
            action = menu->addAction(Shown(row.caption));
            connect(action, &QAction::triggered, this, [this, click = row.click] { Run(click); });
        }
        action->setObjectName(Shown(row.name));
    }
}

void ReportWindow::Run(void (*click)(ReportWindow& window)) {
    // The window may be gone when the command ends.
    Prompts& prompts = mContext.prompts;
    try {
        click(*this);
    } catch (const RunTimeError& error) {
        prompts.MsgBox(error.description, MsgBoxStyle::kCritical, "Error#" + std::to_string(error.number));
    }
}

void ReportWindow::Show() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    if (std::exchange(mWasShown, true))
        return;
    // Not when the desktop gives it the keyboard, which some withhold: it is at work either way.
    QTimer::singleShot(0, this, &ReportWindow::Begin);
}

void ReportWindow::Begin() {
    constexpr int kLater = 50; // milliseconds
    if (RunsAside())
        return QTimer::singleShot(kLater, this, &ReportWindow::Begin);
    if (mIsUnloaded)
        return;
    // A query may take long, so the window is painted first.
    const QPointer<ReportWindow> self(this);
    Application::LetAppear(*this);
    if (self && !mIsUnloaded)
        FirstActivation();
}

void ReportWindow::Unload() {
    if (std::exchange(mIsUnloaded, true))
        return;
    if (mHasWaitWindow)
        UnloadWaitWindow();
    Hourglass(false);
    Report.reset();
    // The window may be destroyed much later, while another report that was chosen meanwhile is at work.
    mViewer->ReportSource(nullptr);
    hide();
    FormRegistry::Instance().Unloaded(this);
    emit Unloaded();
    deleteLater();
}

void ReportWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    Unload();
}

void ReportWindow::ShowWaitWindow() {
    mHasWaitWindow = true;
    auto* window = static_cast<frmCompiling*>(FormRegistry::Instance().Find(kWaitWindow));
    if (window == nullptr)
        window = new frmCompiling;
    window->ShowAndPaint();
}

void ReportWindow::UnloadWaitWindow() {
    mHasWaitWindow = false;
    FormRegistry::Instance().Unload(kWaitWindow);
}

void ReportWindow::Hourglass(bool isShown) {
    if (std::exchange(mHasHourglass, isShown) == isShown)
        return;
    if (isShown)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void ReportWindow::View() {
    // Each import opens the database anew under the report; another database is none of its own.
    Report->RefreshOn([path = gDatabasePath] { return path == gDatabasePath ? gConnection : nullptr; });
    mViewer->ReportSource(Report);
    mViewer->ViewReport();
}

bool ReportWindow::WaitWhileBusy() {
    const QPointer<ReportWindow> self(this);
    while (mViewer->IsBusy()) {
        QApplication::processEvents();
        if (!self || mIsUnloaded)
            return false;
    }
    return true;
}

void ReportWindow::Print(ReportWindow& window) {
    window.mViewer->PrintReport();
}

void ReportWindow::SetUpPrinter(ReportWindow& window) {
    const QPointer<ReportWindow> self(&window);
    frmSelectPrinter& chooser = frmSelectPrinter::Loaded(window.mContext.prompts, window.mContext.printing);
    chooser.ShowModal(window);
    // Whatever button closed it: without an OK they are those of the last one, or empty.
    if (self && window.Report)
        window.Report->SelectPrinter(chooser.DriverName, chooser.PrinterName, chooser.PrinterPort);
}

void ReportWindow::Export(ReportWindow& window) {
    window.mViewer->ExportReport();
}

void ReportWindow::Close(ReportWindow& window) {
    window.Unload();
}
