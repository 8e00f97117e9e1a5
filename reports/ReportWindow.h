// SPDX-License-Identifier: GPL-3.0-or-later
// What the three report windows have in common: the viewer that fills them, the commands of their File menu,
// and their life. A report window belongs to itself, like the wait window: it is unloaded through the
// registry, by its menu or by its frame, and is destroyed when no handler of it runs.
// While the engine searches and sorts for the first row, windows paint, and input is held back. Nothing holds
// it back while the rows are read: the user may close the window, or choose another report in the main
// window, in the middle of it.
#pragma once

#include "platform/report/Report.h"
#include "reports/ReportContext.h"

#include <QMainWindow>

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace report {
class Viewer;
}

class ReportWindow : public QMainWindow {
    Q_OBJECT

public:
    ~ReportWindow() override;

    /// Shows the window, not modally unless it is set so, or brings it forward. The first time, it compiles
    /// its report as soon as the event loop turns.
    void Show();
    void Unload();

    /// The report on show; released when the window unloads.
    std::shared_ptr<report::Report> Report;

signals:
    void Unloaded();

protected:
    /// A menu where there is no handler, a separator where there is no caption either.
    struct MenuRow {
        std::string_view name;
        std::string_view caption;
        void (*click)(ReportWindow& window);
    };

    /// `name` is the window's; it is loaded, hidden.
    ReportWindow(ReportContext context, const char* name, const char* viewerName,
                 std::span<const MenuRow> menu);

    /// Runs once, when the window is shown for the first time.
    virtual void FirstActivation() = 0;

    /// The wait window, painted at once. It goes with this window at the latest.
    void ShowWaitWindow();
    void UnloadWaitWindow();
    void Hourglass(bool isShown);

    /// Hands `Report` to the viewer and starts viewing.
    void View();
    /// Yields to the events until the viewer is idle. False where the window was unloaded by one of them: it
    /// may be destroyed by then, so the caller returns without another look at it.
    bool WaitWhileBusy();

    const ReportContext& Context() const { return mContext; }
    report::Viewer& ViewerControl() { return *mViewer; }

    /// The commands of the menu, for its rows.
    static void Print(ReportWindow& window);
    static void SetUpPrinter(ReportWindow& window);
    static void Export(ReportWindow& window);
    static void Close(ReportWindow& window);

    void closeEvent(QCloseEvent* event) override;

private:
    /// Compiles the report, as soon as no other work has the database to itself.
    void Begin();
    void BuildMenu(std::span<const MenuRow> rows);
    void Run(void (*click)(ReportWindow& window));

    ReportContext mContext;
    report::Viewer* mViewer;
    bool mWasShown = false;
    bool mIsUnloaded = false;
    bool mHasWaitWindow = false;
    bool mHasHourglass = false;
};
