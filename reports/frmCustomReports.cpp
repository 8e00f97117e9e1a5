// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/frmCustomReports.h"

#include "core/Controls.h"
#include "core/FormRegistry.h"
#include "core/HelpKey.h"
#include "core/MainForm.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/prompts.h"
#include "reports/CustomReports.h"
#include "reports/frmAllReports.h"

#include <QEventLoop>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include <array>

frmCustomReports::frmCustomReports(const ReportContext& context)
    : QDialog(context.form.OwnerWindow()), mContext(context) {
    setObjectName("frmCustomReports");
    HelpTopic(*this, "customreports.html");
    setWindowTitle("Custom Reports Available");
    BuildControls();
    Load();
    FormRegistry::Instance().Load("frmCustomReports", this, [this] { close(); });
}

frmCustomReports::~frmCustomReports() {
    FormRegistry::Instance().Unloaded(this);
}

void frmCustomReports::BuildControls() {
    constexpr int kColumns = 44;
    auto* const label = new QLabel("Available Custom Reports:", this);
    label->setObjectName("Label1");
    lstReports = new QListWidget(this);
    lstReports->setObjectName("lstReports");
    lstReports->setAccessibleName("Available Custom Reports");
    lstReports->setMinimumWidth(fontMetrics().averageCharWidth() * kColumns);
    auto* const hint = new QLabel(this);
    hint->setObjectName("lblHint");
    hint->setTextFormat(Qt::PlainText);
    hint->setTextInteractionFlags(Qt::TextSelectableByMouse);
    hint->setWordWrap(true);
    hint->hide();

    auto* const buttons = new QVBoxLayout;
    constexpr std::array kCaptions = {"OK", "Cancel"};
    std::array<QPushButton*, kCaptions.size()> btnCommand{};
    for (std::size_t i = 0; i < kCaptions.size(); ++i) {
        btnCommand.at(i) = new QPushButton(kCaptions.at(i), this);
        btnCommand.at(i)->setObjectName(QString("btnCommand(%1)").arg(i));
        buttons->addWidget(btnCommand.at(i));
    }
    buttons->addStretch();
    btnCommand[0]->setDefault(true);

    auto* const grid = new QGridLayout(this);
    grid->addWidget(label, 0, 0);
    grid->addWidget(lstReports, 1, 0);
    grid->addLayout(buttons, 1, 1);
    grid->addWidget(hint, 2, 0, 1, 2);
    connect(btnCommand[0], &QPushButton::clicked, this, &frmCustomReports::RunSelected);
    connect(btnCommand[1], &QPushButton::clicked, this, &frmCustomReports::reject);
    Controls::OnlyLeftDoubleClicks(*lstReports);
    connect(lstReports, &QListWidget::itemDoubleClicked, this, &frmCustomReports::RunSelected);
}

void frmCustomReports::Load() {
    lstReports->clear();
    for (const std::string& name : CustomReports::Available(mContext.programFolder))
        lstReports->addItem(QString::fromStdString(name));
    // Told that no row is current, the list lets the first arrow key choose the first report, not the second.
    lstReports->setCurrentIndex({});
    lstReports->setFocus();
    if (lstReports->count() > 0)
        return;
    auto* const hint = findChild<QLabel*>("lblHint");
    hint->setText(QString::fromStdString(
        "There are none yet. A report of your own is a document with the extension .RPT and a settings file "
        "of the same name with the extension .RNI; put both into the program's folder, " +
        mContext.programFolder + "."));
    hint->show();
    lstReports->setAccessibleDescription(hint->text());
}

void frmCustomReports::RunSelected() {
    const QList<QListWidgetItem*> selected = lstReports->selectedItems();
    if (selected.isEmpty())
        return;
    const auto tell = [this](const char* text, const char* title) {
        mContext.prompts.MsgBox(text, MsgBoxStyle::kQuestion, title);
    };
    const std::string document =
        JoinPath(mContext.programFolder, selected.constFirst()->text().toStdString());
    if (!CustomReports::FileExists(document))
        return tell("The report was not found! Please select another.", "Report Not Found");
    const std::string settings = CustomReports::ChangeFileExtension(document, ".RNI");
    if (!CustomReports::FileExists(settings))
        return tell("The report's setting file was not found!", "No Settings!");
    std::string reportName;
    std::string queryString;
    std::int16_t displayGroup = 0;
    if (!CustomReports::GetReportSet(settings, reportName, queryString, displayGroup))
        return tell("An error occured opening and reading the report setting file!", "Error in Setting file");
    RunCustomReport(document, reportName, queryString, displayGroup);
}

void frmCustomReports::RunCustomReport(const std::string& filename, const std::string& reportName,
                                       const std::string& queryString, std::int16_t displayGroup) {
    try {
        FormRegistry::Instance().Unload("frmAllReports");
        std::shared_ptr<report::Report> document = report::Report::OpenFile(filename);
        auto* const window = new frmAllReports(mContext);
        window->Report = std::move(document);
        window->QueryString = queryString;
        window->DisplayGroupTree = displayGroup != 0;
        window->setWindowTitle(QString::fromStdString(reportName));
        window->setParent(this, Qt::Window);
        window->setWindowModality(Qt::ApplicationModal);
        QEventLoop untilUnloaded;
        connect(window, &ReportWindow::Unloaded, &untilUnloaded, &QEventLoop::quit);
        window->Show();
        untilUnloaded.exec();
    } catch (const RunTimeError& error) {
        mContext.prompts.MsgBox(error.description, MsgBoxStyle::kCritical,
                                "Error#" + std::to_string(error.number));
    }
}
