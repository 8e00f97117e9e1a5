// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/Viewer.h"

#include "platform/Aside.h"
#include "platform/application.h"
#include "platform/errors.h"
#include "platform/report/PageSetupDialog.h"
#include "platform/report/ViewerImplementation.h"

#include <QAction>
#include <QSplitter>
#include <QTreeView>

#include <algorithm>

namespace report {

namespace {

constexpr std::chrono::milliseconds kSlice{20};
/// When an owner has not asked IsBusy for so long, the viewer works on by itself.
constexpr int kOwnerIsGone = 300; // milliseconds
/// What may still be laid out after a stop.
constexpr int kGrace = 300; // milliseconds
/// How often the group tree takes up new groups while a report is read: each time costs it a new arrangement.
constexpr int kTreeInterval = 700; // milliseconds

} // namespace

Viewer::Viewer(Prompts& prompts, Printing& printing, QWidget* parent)
    : QWidget(parent), mThis(std::make_unique<Implementation>(*this, prompts, printing)) {
    mThis->MakeParts();
    mThis->Take(nullptr);
}

Viewer::~Viewer() {
    // Parts that point into the report go before it does, and hear nothing of each other's end.
    mThis->Disconnect();
    delete mThis->splitter;
    delete mThis->finder;
    delete mThis->groups;
}

void Viewer::ReportSource(std::shared_ptr<Report> report) {
    mThis->Take(std::move(report));
}

void Viewer::ViewReport() {
    if (!mThis->report)
        Raise(Errors::kNoObject);
    mThis->isBusy = true;
    mThis->timer.start(kOwnerIsGone);
    mThis->ShowWork();
}

void Viewer::DisplayGroupTree(bool isShown) {
    mThis->wantsTree = isShown;
    mThis->UpdateActions();
}

bool Viewer::IsBusy() {
    if (!mThis->isBusy)
        return false;
    mThis->timer.start(kOwnerIsGone);
    return mThis->Work();
}

void Viewer::PrintReport() {
    mThis->Guarded([this] { mThis->Print(); });
}

void Viewer::ExportReport() {
    mThis->Guarded([this] { mThis->Export(); });
}

Viewer::Implementation::Implementation(Viewer& owner, Prompts& questions, Printing& paper)
    : viewer(owner), prompts(questions), printing(paper), format(UsualFormat(false)) {
    QObject::connect(&timer, &QTimer::timeout, context.get(), [this] { WorkByTimer(); });
}

void Viewer::Implementation::Take(std::shared_ptr<Report> source) {
    const std::shared_ptr<Report> before = std::exchange(report, std::move(source));
    EndWork();
    isStopped = false;
    hasFailed = false;
    if (report) {
        const bool isLandscape = report->Definition().isLandscape;
        if ((format.width > format.height) != isLandscape)
            format = UsualFormat(isLandscape);
        generation = report->Generation();
        report->WhileSearching(Application::LetEventsThrough);
    }
    LayOutAnew(false);
}

void Viewer::Implementation::LayOutAnew(bool keepsPlace) {
    if (!keepsPlace) {
        place.reset();
    } else if (layout && !place && pages->PageCount() > 0) {
        const std::size_t page = pages->CurrentPage();
        place = Place{layout->FirstRowOf(page), page, pages->PageCount(), pages->TopOnPage()};
    }
    chosenPage.reset();
    exportedTo.clear();
    finder->Source({});
    findBar->Note({});
    groups->Show(nullptr, 0);
    pages->Show(format, {});
    layout.reset();
    if (report) {
        layout = std::make_unique<Layout>(*report, format, measure);
        const auto build = [this](std::size_t number) { return layout->BuildPage(number); };
        const std::size_t levels = report->Definition().groups.size();
        groups->Show(layout.get(), levels);
        tree->setRootIsDecorated(levels > 1);
        finder->Source(build);
        pages->Show(format, build);
    }
    sinceTree.start();
    UpdateActions();
}

bool Viewer::Implementation::Work() {
    // The report may share its database with a call that is aside.
    if (isHeld || !report || RunsAside())
        return isBusy;
    try {
        if (report->Generation() != generation) {
            generation = report->Generation();
            LayOutAnew();
        }
        const bool isReading = report->Work(kSlice);
        const bool isBehind = layout->Work(kSlice);
        isBusy = isReading || isBehind;
    } catch (...) {
        hasFailed = true;
        isBusy = false;
        EndWork();
        throw;
    }
    if (isStopped && sinceStop.elapsed() > kGrace)
        isBusy = false;
    if (isBusy)
        ShowWork();
    else
        EndWork();
    return isBusy;
}

void Viewer::Implementation::RestorePlace(bool isFinal) {
    if (!place || pages->PageCount() == 0)
        return;
    std::optional<std::size_t> page = layout->PageOf(place->row);
    if (isFinal)
        page = pages->PageCount() == place->pageCount ? place->page : page.value_or(pages->PageCount() - 1);
    if (!page || *page >= pages->PageCount())
        return;
    pages->Restore(*page, place->top);
    if (isFinal)
        place.reset();
}

void Viewer::Implementation::WorkByTimer() {
    // From now on as often as events leave time for it.
    timer.start(0);
    if (isBusy)
        return Guarded([this] { Work(); });
    // The last groups.
    if (groups->TakeUp(kSlice, true))
        return;
    timer.stop();
    UpdateActions();
    FollowInTree();
}

void Viewer::Implementation::ShowWork() {
    const std::size_t count = layout ? layout->PageCount() : 0;
    // An incomplete report may not know its first page yet.
    if (report && report->RowCount() > 0 && count != pages->PageCount())
        pages->PageCount(count, false);
    RestorePlace(false);
    const auto shown = static_cast<std::size_t>(groups->rowCount({}));
    if (layout && sinceTree.elapsed() > kTreeInterval && layout->GroupCount() > shown + shown / 2) {
        sinceTree.start();
        groups->TakeUp(kSlice, false);
        UpdateActions();
    }
    UpdateStatus();
}

void Viewer::Implementation::EndWork() {
    isBusy = false;
    timer.stop();
    if (layout) {
        pages->PageCount(layout->PageCount(), true);
        RestorePlace(true);
        // Many groups are taken up a slice at a time.
        if (groups->TakeUp(kSlice, true))
            timer.start(0);
    }
    UpdateActions();
    FollowInTree();
    UpdateStatus();
}

void Viewer::Implementation::Stop() {
    if (finder->IsAtWork()) {
        finder->Stop();
        findBar->Note(QStringLiteral("Stopped"));
        UpdateActions();
        return;
    }
    if (!isBusy || isStopped)
        return;
    isStopped = true;
    sinceStop.start();
    report->Stop();
    UpdateStatus();
}

void Viewer::Implementation::Refresh() {
    if (!report || isHeld)
        return;
    try {
        report->Refresh();
    } catch (const RunTimeError& error) {
        if (error.number != Errors::kRecordsetClosed)
            throw;
        throw RunTimeError(error.number,
                           "The database that this report was made from is closed. Open it, and "
                           "choose the report again.");
    }
    // The pages on show would ask for rows that are gone.
    generation = report->Generation();
    LayOutAnew();
    isStopped = false;
    hasFailed = false;
    isBusy = true;
    timer.start(0);
    UpdateActions();
    UpdateStatus();
}

} // namespace report
