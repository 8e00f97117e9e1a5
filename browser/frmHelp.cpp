// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/frmHelp.h"

#include "browser/HelpPage.h"
#include "browser/Images.h"
#include "core/FormRegistry.h"
#include "core/HelpKey.h"
#include "core/SelectAllText.h"
#include "platform/qtprompts.h"

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QHelpContentModel>
#include <QHelpIndexModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace {

/// Of the text's characters and lines.
constexpr int kWindowWidth = 130;
constexpr int kWindowHeight = 42;
constexpr int kNavigationWidth = 50;

constexpr int kContentsTab = 0;
constexpr int kSearchTab = 2;

QLineEdit* TextBox(const char* name, const QString& meaning, QWidget* parent) {
    auto* const box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setAccessibleName(meaning);
    box->setPlaceholderText(meaning);
    box->setClearButtonEnabled(true);
    SelectAllOnFocus(*box);
    return box;
}

} // namespace

frmHelp::frmHelp(std::unique_ptr<HelpBook> book, Desktop& desktop)
    : QMainWindow(nullptr, Qt::Window), mBook(std::move(book)) {
    setObjectName("frmHelp");
    setWindowTitle("MOVA Professional Administration Module Help");
    setWindowIcon(ProgramIcon());
    HelpTopic(*this, "index.html#using");
    KeepDialogsOff(*this);
    auto* const panes = new QSplitter(this);
    panes->setChildrenCollapsible(false);
    QWidget* const page = BuildPage(desktop);
    tabHelp = new QTabWidget(panes);
    tabHelp->setObjectName("tabHelp");
    tabHelp->setAccessibleName("Ways to a page");
    tabHelp->addTab(BuildContents(), "&Contents");
    tabHelp->addTab(BuildIndex(), "&Index");
    tabHelp->addTab(BuildSearch(), "&Search");
    tabHelp->tabBar()->installEventFilter(this);
    panes->addWidget(page);
    panes->setStretchFactor(1, 1);
    setCentralWidget(panes);
    BuildToolBar();
    AddKey("Ctrl+F", &frmHelp::OpenFind);
    AddKey("F3", &frmHelp::FindNext);
    AddKey("Shift+F3", &frmHelp::FindPrevious);
    AddKey("F6", &frmHelp::ChangePane);
    AddKey("Ctrl+W", &frmHelp::Unload);
    AddKey("Escape", &frmHelp::Leave);
    connect(mBook.get(), &HelpBook::Found, this, &frmHelp::ShowHits);
    connect(txtPage, &QTextBrowser::sourceChanged, this, &frmHelp::MarkInContents);

    const int character = fontMetrics().averageCharWidth();
    resize(QSize(character * kWindowWidth, fontMetrics().height() * kWindowHeight)
               .boundedTo(screen()->availableSize() * 9 / 10));
    // The page keeps most of a window that a small screen has cut.
    const int navigation = std::min(character * kNavigationWidth, width() * 2 / 5);
    panes->setSizes({navigation, width() - navigation});
    txtPage->Show(HelpBook::FirstPage());
    FormRegistry::Instance().Load("frmHelp", this, [this] { Unload(); });
}

frmHelp::~frmHelp() {
    FormRegistry::Instance().Unloaded(this);
}

void frmHelp::BuildToolBar() {
    auto* const bar = addToolBar("Help");
    bar->setObjectName("tbHelp");
    bar->setAccessibleName("Commands of the help");
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    const auto add = [&](const char* name, const char* icon, const QString& caption, const char* key,
                         auto slot) {
        QAction* const action = bar->addAction(CommandIcon(icon), caption);
        action->setObjectName(name);
        action->setShortcut(QKeySequence(key));
        action->setToolTip(QString("%1 (%2)").arg(caption, key));
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    QAction* const back = add("actBack", "go-previous", "Back", "Alt+Left", [this] { txtPage->backward(); });
    QAction* const forward =
        add("actForward", "go-next", "Forward", "Alt+Right", [this] { txtPage->forward(); });
    add("actFirst", "help-contents", "First Page", "Alt+Home",
        [this] { txtPage->Show(HelpBook::FirstPage()); });
    bar->addSeparator();
    add("actFind", "edit-find", "Find in Page", "", [this] {
        OpenFind();
    })->setToolTip("Find in Page (Ctrl+F)");
    bar->addSeparator();
    add("actLarger", "zoom-in", "Larger Text", "Ctrl++", [this] {
        txtPage->zoomIn();
    })->setShortcuts({QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")});
    add("actSmaller", "zoom-out", "Smaller Text", "Ctrl+-", [this] { txtPage->zoomOut(); });
    auto* const normal = new QShortcut(QKeySequence("Ctrl+0"), this);
    connect(normal, &QShortcut::activated, txtPage, &HelpPage::ResetZoom);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(txtPage, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(txtPage, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
}

QWidget* frmHelp::BuildContents() {
    auto* const tab = new QWidget;
    tvContents = new QTreeView(tab);
    tvContents->setObjectName("tvContents");
    tvContents->setAccessibleName("Contents");
    tvContents->setHeaderHidden(true);
    // Narrower than the style's: the titles of the third level show whole.
    tvContents->setIndentation(fontMetrics().height());
    tvContents->header()->setStretchLastSection(false);
    tvContents->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tvContents->setModel(&mBook->Contents());
    auto* const layout = new QVBoxLayout(tab);
    layout->addWidget(tvContents);
    tab->setFocusProxy(tvContents);
    connect(&mBook->Contents(), &QHelpContentModel::contentsCreated, this, [this] {
        tvContents->expandAll();
        MarkInContents(txtPage->source());
    });
    connect(tvContents->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& entry) {
                if (!mIsMarking)
                    txtPage->Show(mBook->PageOf(entry));
            });
    // The entry that is current already, chosen again after its page was left by a link.
    connect(tvContents, &QTreeView::clicked, this,
            [this](const QModelIndex& entry) { txtPage->Show(mBook->PageOf(entry)); });
    connect(tvContents, &QTreeView::activated, this, [this] { txtPage->setFocus(); });
    return tab;
}

QWidget* frmHelp::BuildIndex() {
    auto* const tab = new QWidget;
    txtIndex = TextBox("txtIndex", "Word that the entries hold", tab);
    lstIndex = new QListView(tab);
    lstIndex->setObjectName("lstIndex");
    lstIndex->setAccessibleName("Index");
    lstIndex->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstIndex->setModel(&mBook->Index());
    txtIndex->installEventFilter(this);
    auto* const layout = new QVBoxLayout(tab);
    layout->addWidget(txtIndex);
    layout->addWidget(lstIndex);
    tab->setFocusProxy(txtIndex);
    connect(txtIndex, &QLineEdit::textChanged, this,
            [this](const QString& text) { lstIndex->setCurrentIndex(mBook->Index().filter(text)); });
    connect(txtIndex, &QLineEdit::returnPressed, this, [this] { ShowKeyword(lstIndex->currentIndex()); });
    connect(lstIndex, &QListView::clicked, this, &frmHelp::ShowKeyword);
    connect(lstIndex, &QListView::activated, this, &frmHelp::ShowKeyword);
    return tab;
}

QWidget* frmHelp::BuildSearch() {
    auto* const tab = new QWidget;
    txtSearch = TextBox("txtSearch", "Words to search for, then Enter", tab);
    lblHits = new QLabel(tab);
    lblHits->setObjectName("lblHits");
    lblHits->setTextFormat(Qt::PlainText);
    lblHits->setWordWrap(true);
    lstHits = new QListWidget(tab);
    lstHits->setObjectName("lstHits");
    lstHits->setAccessibleName("Pages found");
    lstHits->setWordWrap(true);
    lstHits->setTextElideMode(Qt::ElideNone);
    lstHits->setAlternatingRowColors(true);
    txtSearch->installEventFilter(this);
    auto* const layout = new QVBoxLayout(tab);
    layout->addWidget(txtSearch);
    layout->addWidget(lblHits);
    layout->addWidget(lstHits);
    tab->setFocusProxy(txtSearch);
    connect(txtSearch, &QLineEdit::returnPressed, this, &frmHelp::StartSearch);
    connect(lstHits, &QListWidget::currentRowChanged, this, &frmHelp::ShowHit);
    connect(lstHits, &QListWidget::itemClicked, this, [this] { ShowHit(lstHits->currentRow()); });
    connect(lstHits, &QListWidget::itemActivated, this, [this] { txtPage->setFocus(); });
    return tab;
}

QWidget* frmHelp::BuildPage(Desktop& desktop) {
    auto* const pane = new QWidget;
    txtPage = new HelpPage(*mBook, desktop, pane);
    txtPage->setObjectName("txtPage");
    txtPage->setAccessibleName("Help page");
    mFindLine = new QWidget(pane);
    mFindLine->setObjectName("findLine");
    txtFind = TextBox("txtFind", "Text to find in this page (Esc closes)", mFindLine);
    lblFind = new QLabel(mFindLine);
    lblFind->setObjectName("lblFind");
    txtFind->installEventFilter(this);
    auto* const line = new QHBoxLayout(mFindLine);
    auto* const label = new QLabel("Find:", mFindLine);
    label->setBuddy(txtFind);
    line->addWidget(label);
    line->addWidget(txtFind, 1);
    line->addWidget(lblFind);
    mFindLine->hide();
    auto* const layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(txtPage);
    layout->addWidget(mFindLine);
    connect(txtFind, &QLineEdit::returnPressed, this, &frmHelp::FindNext);
    return pane;
}

void frmHelp::AddKey(const char* key, void (frmHelp::*slot)()) {
    auto* const shortcut = new QShortcut(QKeySequence(key), this);
    connect(shortcut, &QShortcut::activated, this, slot);
}

void frmHelp::ComeForward(int tab) {
    tabHelp->setCurrentIndex(tab);
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    JoinModalWindow();
    raise();
    activateWindow();
    tabHelp->currentWidget()->setFocus();
}

/// A modal window holds up all but those that belong to it; while one stands, the help belongs to it. The
/// window manager is not told of it, or the help would lie on the dialog for good.
void frmHelp::JoinModalWindow() {
    QWindow* const modal = QGuiApplication::modalWindow();
    if (modal != nullptr && windowHandle() != nullptr)
        windowHandle()->setTransientParent(modal);
}

bool frmHelp::event(QEvent* event) {
    const bool isDone = QMainWindow::event(event);
    if (event->type() == QEvent::WindowBlocked)
        JoinModalWindow();
    return isDone;
}

void frmHelp::ShowContents() {
    txtPage->Show(HelpBook::FirstPage());
    ComeForward(kContentsTab);
}

void frmHelp::ShowTopic(const std::string& page) {
    txtPage->Show(HelpBook::FirstPage().resolved(QUrl(QString::fromStdString(page))));
    ComeForward(kContentsTab);
    txtPage->setFocus();
}

void frmHelp::ShowSearch() {
    mBook->ForgetSearch();
    txtSearch->clear();
    ShowHits({});
    lblHits->clear();
    ComeForward(kSearchTab);
}

void frmHelp::MarkInContents(const QUrl& place) {
    const QUrl page = place.adjusted(QUrl::RemoveFragment);
    // Two entries may lead to one page; the one that is chosen stays.
    QModelIndex best = tvContents->currentIndex();
    if (mBook->PageOf(best) == place)
        return;
    if (mBook->PageOf(best).adjusted(QUrl::RemoveFragment) != page)
        best = QModelIndex();
    for (QModelIndex entry = mBook->Contents().index(0, 0); entry.isValid();
         entry = tvContents->indexBelow(entry)) {
        if (mBook->PageOf(entry) == place) {
            best = entry;
            break;
        }
        if (!best.isValid() && mBook->PageOf(entry) == page)
            best = entry;
    }
    if (!best.isValid())
        return;
    mIsMarking = true;
    tvContents->setCurrentIndex(best);
    mIsMarking = false;
}

void frmHelp::ShowKeyword(const QModelIndex& entry) {
    txtPage->Show(mBook->PageOf(entry.data().toString()));
}

void frmHelp::StartSearch() {
    lstHits->clear();
    lblHits->setText("Searching...");
    mBook->Search(txtSearch->text());
}

void frmHelp::ShowHits(const QList<HelpHit>& hits) {
    const QSignalBlocker nothingChosen(lstHits);
    lstHits->clear();
    for (const HelpHit& hit : hits) {
        auto* const item = new QListWidgetItem(hit.title + QLatin1Char('\n') + hit.snippet, lstHits);
        item->setData(Qt::UserRole, hit.page);
    }
    if (hits.isEmpty())
        lblHits->setText("No page holds all of these words.");
    else
        lblHits->setText(hits.size() == 1 ? QString("1 page") : QString("%1 pages").arg(hits.size()));
}

void frmHelp::ShowHit(int row) {
    if (row < 0)
        return;
    txtPage->Show(lstHits->item(row)->data(Qt::UserRole).toUrl());
    const QString words = txtSearch->text().simplified();
    if (!txtPage->Find(words, false))
        txtPage->Find(words.section(QLatin1Char(' '), 0, 0), false);
}

void frmHelp::Leave() {
    if (mFindLine->isVisible())
        CloseFind();
    else
        Unload();
}

void frmHelp::OpenFind() {
    mFindLine->show();
    lblFind->clear();
    txtFind->setFocus(Qt::ShortcutFocusReason);
}

void frmHelp::CloseFind() {
    mFindLine->hide();
    txtPage->setFocus();
}

void frmHelp::FindNext() {
    FindInPage(false);
}

void frmHelp::FindPrevious() {
    FindInPage(true);
}

void frmHelp::FindInPage(bool isBackward) {
    if (mFindLine->isHidden() || txtFind->text().isEmpty())
        return OpenFind();
    lblFind->setText(txtPage->Find(txtFind->text(), isBackward) ? QString() : QString("Not on this page."));
}

void frmHelp::ChangePane() {
    if (tabHelp->isAncestorOf(focusWidget()))
        txtPage->setFocus();
    else
        tabHelp->currentWidget()->setFocus();
}

bool frmHelp::eventFilter(QObject* watched, QEvent* event) {
    // The key of a tab goes on to what is in it, when the bar has chosen the tab.
    if (watched == tabHelp->tabBar() && event->type() == QEvent::Shortcut)
        QTimer::singleShot(0, this, [this] { tabHelp->currentWidget()->setFocus(); });
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == txtIndex && key == Qt::Key_Down)
        lstIndex->setFocus();
    else if (watched == txtSearch && key == Qt::Key_Down && lstHits->count() > 0)
        lstHits->setFocus();
    else
        return false;
    return true;
}

void frmHelp::Unload() {
    hide();
    FormRegistry::Instance().Unloaded(this);
    deleteLater();
}

void frmHelp::closeEvent(QCloseEvent* event) {
    event->accept();
    Unload();
}
