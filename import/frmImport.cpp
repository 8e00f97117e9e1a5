// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/frmImport.h"

#include "core/Controls.h"
#include "core/ElidedLabel.h"
#include "core/FileModule.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/HelpKey.h"
#include "core/MainForm.h"
#include "platform/application.h"
#include "platform/errors.h"
#include "platform/files.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include <array>

namespace {

constexpr int kTextColumns = 60;

std::string FrameText(int unit, int count) {
    constexpr std::array kUnits = {"sec", "min", "hour", "day"};
    const bool isUnit = unit >= 0 && unit < static_cast<int>(kUnits.size());
    return std::to_string(count) + " " + (isUnit ? kUnits.at(static_cast<std::size_t>(unit)) : "");
}

QLabel* StatusLabel(const char* name, const char* text, QWidget* parent) {
    auto* const label = new ElidedLabel(parent);
    label->setObjectName(name);
    label->setText(text);
    return label;
}

QProgressBar* Bar(const char* name, const char* meaning, QWidget* parent) {
    auto* const bar = new QProgressBar(parent);
    bar->setObjectName(name);
    bar->setAccessibleName(meaning);
    bar->setRange(0, 100);
    bar->setValue(0);
    return bar;
}

} // namespace

frmImport::frmImport(const ImportContext& context) : QDialog(context.form.OwnerWindow()), mContext(context) {
    setObjectName("frmImport");
    HelpTopic(*this, "import.html#window");
    BuildControls();
    Load();
    FormRegistry::Instance().Load("frmImport", this, [this] { close(); });
}

frmImport::~frmImport() {
    FormRegistry::Instance().Unloaded(this);
}

void frmImport::BuildControls() {
    auto* const label = new QLabel("Import from Directory:", this);
    label->setObjectName("Label1");
    TXTImportDir = Controls::TextBox(this, "TXTImportDir", "Import from Directory", kTextColumns);
    auto* const browse = Controls::Button(this, "BTNBrowse", "Browse");
    LBLName = StatusLabel("LBLName", "Import Status :", this);
    PBImport = Bar("PBImport", "Progress over the files", this);
    LBLNameUser = StatusLabel("LBLNameUser", "User Status :", this);
    PBImportUser = Bar("PBImportUser", "Progress within the file", this);
    auto* const import = Controls::Button(this, "BTNImport", "Import");
    import->setDefault(true);
    auto* const cancel = Controls::Button(this, "BTNCancel", "Cancel");

    auto* const grid = new QGridLayout(this);
    grid->addWidget(label, 0, 0, 1, 2);
    grid->addWidget(TXTImportDir, 1, 0);
    grid->addWidget(browse, 1, 1);
    int row = 2;
    for (QWidget* const widget : {static_cast<QWidget*>(LBLName), static_cast<QWidget*>(PBImport),
                                  static_cast<QWidget*>(LBLNameUser), static_cast<QWidget*>(PBImportUser)})
        grid->addWidget(widget, row++, 0, 1, 2);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(import);
    buttons->addWidget(cancel);
    grid->addLayout(buttons, row, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(row + 1, 1);

    connect(browse, &QPushButton::clicked, this, &frmImport::Browse);
    connect(import, &QPushButton::clicked, this, &frmImport::Import);
    connect(cancel, &QPushButton::clicked, this, &frmImport::reject);
}

void frmImport::Load() {
    // Not the stored folder: the program's own is offered each time.
    const std::string own = FolderOnDisk(JoinPath(mContext.programFolder, "inf"));
    TXTImportDir->setText(QString::fromStdString(own));
    setWindowTitle(QString::fromStdString("Import INF files with " + FrameText(gImportTime, gImportTimeNum) +
                                          " change"));
    mIsCancelled = false;
}

void frmImport::Browse() {
    const std::string folder = FileModule::BrowseForFolder(mContext.prompts, "Please select Import Directory",
                                                           mContext.programFolder);
    if (!folder.empty())
        TXTImportDir->setText(QString::fromStdString(WithoutNuls(folder)));
}

void frmImport::Import() {
    const std::unique_ptr<cSinImport> cImport = mContext.NewImport(*this);
    const std::string folder = TXTImportDir->text().toStdString();
    if (folder.empty()) {
        mContext.prompts.MsgBox("Please select a directory to import from first !", MsgBoxStyle::kQuestion,
                                "No Directory");
        return;
    }
    mContext.form.Pointer(MousePointer::Hourglass);
    bool noData = false;
    const bool isImported = cImport->ImportInfData(FolderOnDisk(folder), "", noData);
    ShowSteps();
    if (!isImported) {
        mContext.prompts.MsgBox("Failed to Import INF Files", MsgBoxStyle::kCritical, "Import");
        mContext.form.Pointer(MousePointer::Default);
        return;
    }
    mContext.form.Pointer(MousePointer::Default);
    if (!noData)
        mContext.prompts.MsgBox("Import Successful!", MsgBoxStyle::kOKOnly, "Import Ok!");
    accept();
}

void frmImport::reject() {
    mIsCancelled = true;
    done(Rejected);
}

void frmImport::closeEvent(QCloseEvent* event) {
    done(Rejected);
    event->accept();
}

void frmImport::done(int result) {
    Controls::Guarded(mContext.prompts, [this] {
        if (!mIsCancelled)
            mContext.StoreFolder(FolderOnDisk(TXTImportDir->text().toStdString()));
    });
    QDialog::done(result);
}

void frmImport::ShowSteps() {
    const auto show = [](QLabel& label, QProgressBar& bar, const char* what, const Step& step) {
        label.setText(QString::fromStdString(what + step.name));
        bar.setValue(CInt(100 * step.percent));
        label.repaint();
        bar.repaint();
    };
    show(*LBLName, *PBImport, "Import Status : ", mFile);
    show(*LBLNameUser, *PBImportUser, "User Status : ", mSection);
}

void frmImport::DoneSoFarUsers(const std::string& name, double percent) {
    // Shown with the file's first section, which is told of next; the one before belongs to another file.
    mFile = {name, percent};
}

void frmImport::DoneSoFarUser(const std::string& name, double percent) {
    mSection = {name, percent};
    StillWorking();
}

void frmImport::StillWorking() {
    if (!mPace.IsDue())
        return;
    ShowSteps();
    Application::LetEventsThrough();
}
