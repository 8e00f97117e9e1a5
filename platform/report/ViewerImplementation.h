// SPDX-License-Identifier: GPL-3.0-or-later
// What is within a Viewer: its parts, and the state of the work on its report. The work is done in slices,
// by the owner's calls of IsBusy or by a timer of the viewer's own once the owner has left off calling.
#pragma once

#include "platform/prompts.h"
#include "platform/report/Exports.h"
#include "platform/report/FindBar.h"
#include "platform/report/Finder.h"
#include "platform/report/FontMeasure.h"
#include "platform/report/GroupModel.h"
#include "platform/report/Layout.h"
#include "platform/report/PageView.h"
#include "platform/report/Printing.h"
#include "platform/report/Viewer.h"

#include <QElapsedTimer>
#include <QTimer>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QSplitter;
class QToolBar;
class QTreeView;

namespace report {

/// The steps of the zoom, in percent.
constexpr std::array<double, 9> kZooms = {25, 50, 75, 100, 125, 150, 200, 300, 400};

struct Viewer::Implementation {
    Implementation(Viewer& owner, Prompts& questions, Printing& paper);

    // Making the window's parts: ViewerParts.cpp.
    void MakeParts();
    void MakeActions();
    void MakeToolBar();
    void ArrangeParts();
    QAction& Action(std::string_view name) const { return *actions.find(name)->second; }

    // The work on the report: Viewer.cpp.
    /// Begins with `source`, or with none.
    void Take(std::shared_ptr<Report> source);
    void LayOutAnew(bool keepsPlace = true);
    /// Shows the reader's place again once it is laid out; `isFinal` says that all is.
    void RestorePlace(bool isFinal);
    /// Does a slice; true while there is more. Raises what reading raises.
    bool Work();
    void WorkByTimer();
    void EndWork();
    void Stop();
    void Refresh();
    void ShowWork();

    // What stands around the pages, kept in step with them: ViewerParts.cpp.
    void UpdatePageNumber();
    void UpdateZoom();
    void UpdateActions();
    void UpdateStatus();
    void ShowTree(bool isShown);
    /// Selects the group of the page on show.
    void FollowInTree();

    // Commands: ViewerCommands.cpp.
    /// Runs a command; what it raises is shown in a box.
    void Guarded(const std::function<void()>& command);
    void Print();
    void Export();
    /// Without a format pages are painted into a PDF file. False where the user has cancelled it.
    bool WriteExport(const std::optional<ExportFormat>& form, const std::string& path);
    void SetUpPage();
    void Copy();
    void GoToTypedPage();
    void TakeTypedZoom();
    void ZoomOn(bool isLarger);
    void JumpToGroup(const QModelIndex& index);
    void OpenFind();
    void CloseFind();
    void Find(bool isForward);
    void Escape();
    /// Reads and lays out what is left, under a window with Cancel; false when that was pressed.
    bool CompleteFirst();
    std::string Title() const;

    /// Ends what the parts tell: they go one after the other.
    void Disconnect() { context.reset(); }

    Viewer& viewer;
    /// Receives all that the parts and the timer tell.
    std::unique_ptr<QObject> context = std::make_unique<QObject>();
    Prompts& prompts;
    Printing& printing;
    FontMeasure measure;

    std::shared_ptr<Report> report;
    std::unique_ptr<Layout> layout;
    int generation = 0;
    PageFormat format;
    bool isBusy = false;
    /// While a printer or an exporter draws on the report, slices wait.
    bool isHeld = false;
    bool hasFailed = false;
    /// The user has stopped the work; what is laid out when the grace is over is all there is.
    bool isStopped = false;
    QElapsedTimer sinceStop;
    /// The file that the report as it stands was exported to last, for the status line.
    QString exportedTo;
    QTimer timer;
    QElapsedTimer sinceTree;
    /// Where the reader was when the report was laid out anew, until that is done or the reader goes
    /// elsewhere.
    struct Place {
        std::size_t row = 0;
        std::size_t page = 0;
        std::size_t pageCount = 0;
        double top = 0;
    };
    std::optional<Place> place;
    /// The page that the reader has gone to by a group of it, which stays selected while the page is on show.
    std::optional<std::size_t> chosenPage;
    bool wantsTree = true;
    /// What the reader has given the tree.
    int treeWidth = 200;

    PageView* pages = nullptr;
    QTreeView* tree = nullptr;
    GroupModel* groups = nullptr;
    Finder* finder = nullptr;
    FindBar* findBar = nullptr;
    QToolBar* toolBar = nullptr;
    QSplitter* splitter = nullptr;
    QLineEdit* pageNumber = nullptr;
    QLabel* pageCount = nullptr;
    QComboBox* zoom = nullptr;
    QLabel* status = nullptr;
    QProgressBar* progress = nullptr;
    std::map<std::string, QAction*, std::less<>> actions;
};

} // namespace report
