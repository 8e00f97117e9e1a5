// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of a viewer: tool bar, group tree, pages, find line, status line, and what they show.
#include "platform/errors.h"
#include "platform/report/ReportIcons.h"
#include "platform/report/ViewerImplementation.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QProgressBar>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>

namespace report {

namespace {

using Implementation = Viewer::Implementation;

struct ActionRow {
    const char* name;
    const char* caption;
    const char* icon;
    const char* shortcuts;
    void (*run)(Implementation&);
};

constexpr int kLeastTreeWidth = 80;
constexpr int kProgressWidth = 200;

constexpr ActionRow kActions[] = {
    {"actPrint", "&Print\u2026", "document-print", "Ctrl+P", [](Implementation& it) { it.Print(); }},
    {"actExport", "&Export\u2026", "document-export", "Ctrl+E", [](Implementation& it) { it.Export(); }},
    {"actPageSetup", "Page Set-&up\u2026", "document-page-setup", "",
     [](Implementation& it) { it.SetUpPage(); }},
    {"actRefresh", "&Refresh", "view-refresh", "F5", [](Implementation& it) { it.Refresh(); }},
    {"actStop", "&Stop", "process-stop", "", [](Implementation& it) { it.Stop(); }},
    {"actGroupTree", "Group &Tree", "view-list-tree", "",
     [](Implementation& it) { it.viewer.DisplayGroupTree(!it.wantsTree); }},
    {"actFirst", "&First Page", "go-first", "", [](Implementation& it) { it.pages->GoTo(0); }},
    {"actPrevious", "P&revious Page", "go-previous", "Ctrl+PgUp",
     [](Implementation& it) { it.pages->GoTo(std::max<std::size_t>(it.pages->CurrentPage(), 1) - 1); }},
    {"actNext", "&Next Page", "go-next", "Ctrl+PgDown",
     [](Implementation& it) { it.pages->GoTo(it.pages->CurrentPage() + 1); }},
    {"actLast", "&Last Page", "go-last", "",
     [](Implementation& it) { it.pages->GoTo(std::max<std::size_t>(it.pages->PageCount(), 1) - 1); }},
    {"actZoomOut", "Zoom &Out", "zoom-out", "Ctrl+-", [](Implementation& it) { it.ZoomOn(false); }},
    {"actZoomIn", "Zoom &In", "zoom-in", "Ctrl++|Ctrl+=", [](Implementation& it) { it.ZoomOn(true); }},
    {"actActualSize", "&Actual Size", "zoom-original", "Ctrl+0",
     [](Implementation& it) { it.pages->Zoom(100); }},
    {"actFind", "Fi&nd\u2026", "edit-find", "Ctrl+F", [](Implementation& it) { it.OpenFind(); }},
    {"actFindNext", "Find Ne&xt", "go-down", "F3", [](Implementation& it) { it.Find(true); }},
    {"actFindPrevious", "Find Pre&vious", "go-up", "Shift+F3", [](Implementation& it) { it.Find(false); }},
    {"actCopy", "&Copy", "edit-copy", "Ctrl+C", [](Implementation& it) { it.Copy(); }},
    {"actSelectPage", "Select P&age", "edit-select-all", "Ctrl+A",
     [](Implementation& it) { it.pages->SelectPage(); }},
    {"actEscape", "Stop or Close", "", "Esc", [](Implementation& it) { it.Escape(); }},
};

/// What stands in the tool bar; "" is a separator, what is no action is a field between the buttons.
constexpr std::array kToolBar = {"actPrint",
                                 "actExport",
                                 "actPageSetup",
                                 "",
                                 "actRefresh",
                                 "actStop",
                                 "",
                                 "actFirst",
                                 "actPrevious",
                                 "page",
                                 "actNext",
                                 "actLast",
                                 "",
                                 "actZoomOut",
                                 "zoom",
                                 "actZoomIn",
                                 "",
                                 "actFind",
                                 "actGroupTree"};

const char* const kFitWidth = "Fit Width";
const char* const kFitPage = "Fit Page";

QString Number(std::size_t number) {
    return QLocale().toString(static_cast<qulonglong>(number));
}

QString Counted(std::size_t count, const char* one, const char* many) {
    return Number(count) + QLatin1Char(' ') + QString::fromLatin1(count == 1 ? one : many);
}

} // namespace

void Viewer::Implementation::MakeParts() {
    pages = new PageView(measure, &viewer);
    groups = new GroupModel(&viewer);
    finder = new Finder(measure, &viewer);
    findBar = new FindBar(&viewer);
    tree = new QTreeView(&viewer);
    tree->setObjectName(QStringLiteral("GroupTree"));
    tree->setAccessibleName(QStringLiteral("Groups of the report"));
    tree->setHeaderHidden(true);
    tree->setUniformRowHeights(true);
    tree->setTextElideMode(Qt::ElideRight);
    tree->setFrameShape(QFrame::NoFrame);
    tree->setModel(groups);
    tree->setMinimumWidth(kLeastTreeWidth);
    tree->hide();
    MakeActions();
    MakeToolBar();
    ArrangeParts();

    const auto jump = [this](const QModelIndex& index) { Guarded([&] { JumpToGroup(index); }); };
    QObject::connect(tree, &QTreeView::clicked, context.get(), jump);
    // Enter alone on some desktops: a click there is a click here.
    QObject::connect(tree, &QTreeView::activated, context.get(), jump);
    QObject::connect(pages, &PageView::CurrentPageChanged, context.get(), [this] {
        UpdatePageNumber();
        FollowInTree();
    });
    QObject::connect(pages, &PageView::Moved, context.get(), [this] { place.reset(); });
    QObject::connect(pages, &PageView::ZoomChanged, context.get(), [this] { UpdateZoom(); });
    QObject::connect(pages, &PageView::SelectionChanged, context.get(),
                     [this] { Action("actCopy").setEnabled(!pages->SelectedText().isEmpty()); });
    QObject::connect(findBar, &FindBar::Wanted, context.get(), [this](bool isForward) { Find(isForward); });
    QObject::connect(findBar, &FindBar::Closed, context.get(), [this] { CloseFind(); });
    QObject::connect(findBar, &FindBar::Changed, context.get(), [this] {
        finder->Stop();
        pages->Highlight(findBar->Sought());
        UpdateActions();
    });
    QObject::connect(
        finder, &Finder::Found, context.get(),
        [this](std::size_t page, const TextRange& match, bool hasWrapped) {
            pages->Reveal(page, match);
            findBar->Note(hasWrapped ? QStringLiteral("Went on from the report's other end") : QString());
            UpdateActions();
        });
    QObject::connect(finder, &Finder::FoundNothing, context.get(), [this] {
        findBar->Note(QStringLiteral("Not found"), true);
        UpdateActions();
    });
    QObject::connect(finder, &Finder::Moved, context.get(), [this](std::size_t done, std::size_t total) {
        findBar->Note(QStringLiteral("Page %1 of %2 \u2026").arg(Number(done), Number(total)));
    });
    QObject::connect(finder, &Finder::Failed, context.get(), [this](int number, const QString& description) {
        findBar->Note({});
        UpdateActions();
        Guarded([&] { throw RunTimeError(number, description.toStdString()); });
    });
}

void Viewer::Implementation::MakeActions() {
    for (const ActionRow& row : kActions) {
        auto* const action = new QAction(ReportIcon(row.icon), QString::fromUtf8(row.caption), &viewer);
        action->setObjectName(QLatin1String(row.name));
        QList<QKeySequence> keys;
        for (const QString& key :
             QString::fromLatin1(row.shortcuts).split(QLatin1Char('|'), Qt::SkipEmptyParts))
            keys << QKeySequence(key);
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        QString tip = QString::fromUtf8(row.caption).remove(QLatin1Char('&')).remove(QChar(0x2026));
        if (!keys.isEmpty())
            tip += QStringLiteral(" (%1)").arg(keys.first().toString(QKeySequence::NativeText));
        action->setToolTip(tip);
        QObject::connect(action, &QAction::triggered, context.get(),
                         [this, run = row.run] { Guarded([&] { run(*this); }); });
        viewer.addAction(action);
        actions.emplace(row.name, action);
    }
    Action("actGroupTree").setCheckable(true);
    pages->setContextMenuPolicy(Qt::ActionsContextMenu);
    pages->addActions({&Action("actCopy"), &Action("actSelectPage"), &Action("actFind")});
}

void Viewer::Implementation::MakeToolBar() {
    toolBar = new QToolBar(&viewer);
    toolBar->setObjectName(QStringLiteral("ViewerToolBar"));
    toolBar->setAccessibleName(QStringLiteral("Report commands"));
    toolBar->setIconSize({20, 20});

    pageNumber = new QLineEdit(toolBar);
    pageNumber->setObjectName(QStringLiteral("txtPage"));
    pageNumber->setAccessibleName(QStringLiteral("Page number"));
    pageNumber->setToolTip(QStringLiteral("Type a page number and press Enter"));
    pageNumber->setAlignment(Qt::AlignRight);
    pageNumber->setMaximumWidth(pageNumber->fontMetrics().horizontalAdvance(QStringLiteral("0,000,000")) +
                                12);
    pageCount = new QLabel(toolBar);
    pageCount->setObjectName(QStringLiteral("lblPageCount"));
    auto* const pageField = new QWidget(toolBar);
    pageField->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    auto* const inField = new QHBoxLayout(pageField);
    inField->setContentsMargins(4, 0, 4, 0);
    inField->addWidget(pageNumber);
    inField->addWidget(pageCount);
    QObject::connect(pageNumber, &QLineEdit::returnPressed, context.get(), [this] { GoToTypedPage(); });
    QObject::connect(pageNumber, &QLineEdit::editingFinished, context.get(), [this] { UpdatePageNumber(); });

    zoom = new QComboBox(toolBar);
    zoom->setObjectName(QStringLiteral("cmbZoom"));
    zoom->setAccessibleName(QStringLiteral("Zoom"));
    zoom->setToolTip(QStringLiteral("Zoom"));
    zoom->setEditable(true);
    zoom->setInsertPolicy(QComboBox::NoInsert);
    for (const double percent : kZooms)
        zoom->addItem(QStringLiteral("%1 %").arg(percent));
    zoom->addItems({QString::fromLatin1(kFitWidth), QString::fromLatin1(kFitPage)});
    QObject::connect(zoom, &QComboBox::activated, context.get(), [this] { TakeTypedZoom(); });
    QObject::connect(zoom->lineEdit(), &QLineEdit::returnPressed, context.get(), [this] { TakeTypedZoom(); });

    for (const std::string_view name : kToolBar) {
        if (name.empty())
            toolBar->addSeparator();
        else if (name == "page")
            toolBar->addWidget(pageField);
        else if (name == "zoom")
            toolBar->addWidget(zoom);
        else
            toolBar->addAction(&Action(name));
    }
    for (QToolButton* const button : toolBar->findChildren<QToolButton*>())
        button->setFocusPolicy(Qt::TabFocus);
}

void Viewer::Implementation::ArrangeParts() {
    splitter = new QSplitter(&viewer);
    splitter->setObjectName(QStringLiteral("ViewerSplitter"));
    splitter->addWidget(tree);
    splitter->addWidget(pages);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);

    status = new QLabel(&viewer);
    status->setObjectName(QStringLiteral("lblStatus"));
    status->setTextFormat(Qt::PlainText);
    // A long path is cut rather than widening the window.
    status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    progress = new QProgressBar(&viewer);
    progress->setObjectName(QStringLiteral("pgbWork"));
    progress->setAccessibleName(QStringLiteral("The report is being read"));
    progress->setRange(0, 0);
    progress->setTextVisible(false);
    progress->setMaximumWidth(kProgressWidth);
    progress->setMaximumHeight(status->sizeHint().height());
    auto* const statusRow = new QHBoxLayout;
    statusRow->setContentsMargins(6, 2, 6, 2);
    statusRow->addWidget(status, 1);
    statusRow->addWidget(progress);

    findBar->hide();
    auto* const column = new QVBoxLayout(&viewer);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(toolBar);
    column->addWidget(splitter, 1);
    column->addWidget(findBar);
    column->addLayout(statusRow);
    viewer.setFocusProxy(pages);
}

void Viewer::Implementation::UpdatePageNumber() {
    const std::size_t count = pages->PageCount();
    const std::size_t page = pages->CurrentPage();
    const bool isKnown = !isBusy;
    pageNumber->setText(count == 0 ? QString() : Number(page + 1));
    // The number of pages stands when all rows are laid out.
    pageCount->setText(count == 0 ? QString()
                                  : QStringLiteral("of %1%2").arg(
                                        Number(count), isKnown ? QString() : QStringLiteral("\u2026")));
    Action("actFirst").setEnabled(page > 0);
    Action("actPrevious").setEnabled(page > 0);
    Action("actNext").setEnabled(page + 1 < count);
    Action("actLast").setEnabled(page + 1 < count);
}

void Viewer::Implementation::UpdateZoom() {
    const QString percent = QStringLiteral("%1 %").arg(std::lround(pages->Zoom()));
    const PageView::Fit fit = pages->ZoomFit();
    zoom->setEditText(fit == PageView::Fit::Width  ? QString::fromLatin1(kFitWidth)
                      : fit == PageView::Fit::Page ? QString::fromLatin1(kFitPage)
                                                   : percent);
    zoom->setToolTip(QStringLiteral("Zoom: ") + percent);
    Action("actZoomIn").setEnabled(pages->Zoom() < PageView::kMostZoom);
    Action("actZoomOut").setEnabled(pages->Zoom() > PageView::kLeastZoom);
}

void Viewer::Implementation::UpdateActions() {
    const bool hasReport = report != nullptr;
    const bool hasPages = pages->PageCount() > 0;
    const bool hasGroups = hasReport && !report->Definition().groups.empty();
    for (const char* const name : {"actPrint", "actExport", "actPageSetup", "actRefresh"})
        Action(name).setEnabled(hasReport);
    for (const char* const name : {"actFind", "actFindNext", "actFindPrevious", "actSelectPage"})
        Action(name).setEnabled(hasPages);
    const bool canStop = (isBusy && !isStopped) || finder->IsAtWork();
    Action("actStop").setEnabled(canStop);
    // Where there is nothing to stop or close, the key is left to the window around.
    Action("actEscape").setEnabled(canStop || !findBar->isHidden());
    Action("actCopy").setEnabled(!pages->SelectedText().isEmpty());
    Action("actGroupTree").setEnabled(hasGroups);
    Action("actGroupTree").setChecked(hasGroups && wantsTree);
    ShowTree(hasGroups && wantsTree);
    UpdatePageNumber();
    UpdateZoom();
}

void Viewer::Implementation::ShowTree(bool isShown) {
    if (isShown != tree->isHidden())
        return;
    // A splitter gives a part that was hidden next to no room.
    if (!isShown)
        treeWidth = std::max(tree->width(), kLeastTreeWidth);
    tree->setVisible(isShown);
    if (isShown)
        splitter->setSizes({treeWidth, std::max(splitter->width() - treeWidth, treeWidth)});
}

void Viewer::Implementation::FollowInTree() {
    const std::size_t page = pages->CurrentPage();
    if (!layout || tree->isHidden() || pages->PageCount() == 0 || page >= layout->PageCount())
        return;
    if (chosenPage == page)
        return;
    chosenPage.reset();
    const QModelIndex group = groups->Holding(
        layout->FirstRowOf(page), [this](const QModelIndex& index) { return tree->isExpanded(index); });
    if (group.isValid())
        tree->setCurrentIndex(group);
}

void Viewer::Implementation::UpdateStatus() {
    progress->setVisible(isBusy);
    QString text;
    if (!report || !layout) {
        text.clear();
    } else if (isBusy) {
        const std::size_t rows = report->RowsRead();
        if (isStopped)
            text = QStringLiteral("Stopping\u2026");
        else if (!report->IsComplete())
            text = QStringLiteral("Reading\u2026 ") + Counted(rows, "row", "rows");
        else
            text = QStringLiteral("Laying out\u2026 ") + Counted(layout->PageCount(), "page", "pages");
    } else {
        text = Counted(pages->PageCount(), "page", "pages");
        if (hasFailed)
            text = QStringLiteral("The report could not be read to its end: ") + text;
        else if (isStopped)
            text = QStringLiteral("Stopped: %1, %2").arg(Counted(report->RowsRead(), "row", "rows"), text);
        if (!exportedTo.isEmpty())
            text += QStringLiteral(", exported to ") + exportedTo;
    }
    if (text != status->text())
        status->setText(text);
}

} // namespace report
