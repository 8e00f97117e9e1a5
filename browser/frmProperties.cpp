// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/frmProperties.h"

#include "browser/ListText.h"
#include "browser/ListView.h"
#include "browser/ValueBox.h"
#include "core/Controls.h"
#include "core/FormRegistry.h"
#include "core/HelpKey.h"

#include <QAction>
#include <QClipboard>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>

using Controls::Shown;

namespace {

/// The captions of all frames of a tab are given one width, so that the values stand in line.
int CaptionWidth(const PropertyPage& page, const QFontMetrics& metrics) {
    int width = 0;
    for (const PropertyBox& box : page.boxes)
        width = std::max(width, metrics.horizontalAdvance(Shown(box.caption)));
    return width;
}

/// A small screen or a large font may leave less room than the frames need.
QScrollArea* Scrolled(QWidget* content) {
    auto* const area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(content);
    area->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    return area;
}

} // namespace

frmProperties::frmProperties(QWidget* parent, Prompts& prompts) : QDialog(parent), mPrompts(prompts) {
    setObjectName("frmProperties");
    HelpTopic(*this, "properties.html");
    setWindowTitle("Properties");
    setSizeGripEnabled(true);
    tabInfo = new QTabWidget(this);
    tabInfo->setObjectName("tabInfo");
    tabInfo->setAccessibleName("Properties of the machine");
    for (std::size_t tab = 0; tab < Properties::kPages.size(); ++tab)
        tabInfo->addTab(BuildTab(tab), Properties::kPages.at(tab).caption);
    cmdOK = new QPushButton("Cancel", this);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(tabInfo);
    layout->addLayout(buttons);
    // Where the tabs do not fit, the bar has arrows for the mouse; the keys turn the tabs themselves.
    for (QToolButton* const arrow : tabInfo->tabBar()->findChildren<QToolButton*>())
        arrow->setFocusPolicy(Qt::NoFocus);
    connect(tabInfo, &QTabWidget::currentChanged, this, &frmProperties::tabInfo_Click);
    connect(cmdOK, &QPushButton::clicked, this, &frmProperties::accept);
    FitToTabs();
    tabInfo->tabBar()->setFocus();
    FormRegistry::Instance().Load("frmProperties", this, [this] { close(); });
}

frmProperties::~frmProperties() {
    FormRegistry::Instance().Unloaded(this);
}

QWidget* frmProperties::BuildTab(std::size_t tab) {
    const PropertyPage& page = Properties::kPages.at(tab);
    TabControls& controls = mControls.at(tab);
    if (page.list == nullptr && page.label == nullptr)
        return Scrolled(BuildFrames(page, controls));
    auto* const content = new QWidget;
    auto* const layout = new QVBoxLayout(content);
    layout->addWidget(new QLabel(page.label, content));
    if (page.list != nullptr) {
        BuildList(page, *layout, controls);
        return content;
    }
    BuildDeviceTree();
    auto* const halves = new QHBoxLayout;
    halves->addWidget(tvDevices, 1);
    QWidget* const frames = BuildFrames(page, controls);
    // The frame begins at the height of the tree.
    frames->layout()->setContentsMargins(0, 0, 0, 0);
    halves->addWidget(Scrolled(frames), 1);
    layout->addLayout(halves);
    return content;
}

QWidget* frmProperties::BuildFrames(const PropertyPage& page, TabControls& controls) {
    auto* const content = new QWidget;
    auto* const columns = new QHBoxLayout(content);
    std::array<QVBoxLayout*, 2> sides = {};
    const int captionWidth = CaptionWidth(page, fontMetrics());
    for (const PropertyFrame& frame : page.frames) {
        QVBoxLayout*& side = sides.at(static_cast<std::size_t>(frame.column));
        if (side == nullptr)
            columns->addLayout(side = new QVBoxLayout, 1);
        auto* const group = new QGroupBox(frame.caption, content);
        group->setObjectName(frame.name);
        auto* const grid = new QGridLayout(group);
        grid->setColumnMinimumWidth(0, captionWidth);
        grid->setColumnStretch(1, 1);
        for (int column = 0; column < 2; ++column)
            if (const char* const caption = page.columnCaptions.at(static_cast<std::size_t>(column)))
                grid->addWidget(new QLabel(caption, group), 0, column);
        for (std::size_t box = 0; box < frame.boxes; ++box) {
            const std::size_t index = controls.boxes.size();
            auto* const value = new ValueBox(page.withoutValue, group);
            AddValue(*grid, grid->rowCount(), Shown(page.boxes[index].caption),
                     QString("%1(%2)").arg(page.boxName).arg(index), *value);
            controls.boxes.push_back(value);
        }
        side->addWidget(group);
    }
    for (QVBoxLayout* const side : sides)
        if (side != nullptr)
            side->addStretch();
    return content;
}

void frmProperties::BuildList(const PropertyPage& page, QVBoxLayout& layout, TabControls& controls) {
    auto* const list = new ListView;
    layout.addWidget(list);
    list->setObjectName(page.listName);
    list->Name(page.caption);
    list->View(ListStyle::Details);
    connect(list, &ListView::ColumnClick, list, [list](int column) { list->SortBy(column); });
    auto* const copy = new QAction("&Copy", list);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(copy, &QAction::triggered, this, [this, list] { CopyRows(*list); });
    list->addAction(copy);
    list->setContextMenuPolicy(Qt::ActionsContextMenu);
    controls.list = list;
}

void frmProperties::BuildDeviceTree() {
    tvDevices = new QTreeWidget;
    tvDevices->setObjectName("tvDevices");
    tvDevices->setAccessibleName("Devices");
    tvDevices->setHeaderHidden(true);
    tvDevices->setUniformRowHeights(true);
    Controls::OnlyLeftDoubleClicks(*tvDevices);
    connect(tvDevices, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* node) { tvDevices_NodeClick(node); });
}

void frmProperties::FitToTabs() {
    constexpr double kPartOfScreen = 0.9;
    QSize wanted = tabInfo->tabBar()->sizeHint();
    const int bar = wanted.height();
    for (const QScrollArea* const area : tabInfo->findChildren<QScrollArea*>()) {
        // The one beside the tree has half of the tab.
        const int parts = area->parentWidget() == tvDevices->parentWidget() ? 2 : 1;
        const QSize content = area->widget()->sizeHint();
        wanted = wanted.expandedTo({content.width() * parts, content.height() + bar});
    }
    wanted += layout()->sizeHint() - tabInfo->sizeHint();
    const int margin = 2 * fontMetrics().height();
    resize((wanted + QSize(margin, margin)).boundedTo(screen()->availableSize() * kPartOfScreen));
}

void frmProperties::CopyRows(const ListView& list) {
    const ListModel& items = list.Items();
    std::vector<std::size_t> rows = list.SelectedRows();
    if (rows.empty()) {
        rows.resize(items.Rows());
        std::iota(rows.begin(), rows.end(), std::size_t{0});
    }
    QString text = QString::fromStdString(HeadingLine(items));
    for (const std::size_t row : rows)
        text += RowLine(items, row);
    QGuiApplication::clipboard()->setText(text);
}

void frmProperties::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    setWindowTitle(QString::fromStdString("Properties for " + mComputerName + " (" +
                                          (mConfID == 0 ? "Original Config" : "Current Config") + ")"));
    tabInfo_Click(tabInfo->currentIndex());
}
