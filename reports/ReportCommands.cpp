// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ReportCommands.h"

#include "core/FileModule.h"
#include "core/FormRegistry.h"
#include "core/MainForm.h"
#include "reports/Catalogue.h"
#include "reports/Documents.h"
#include "reports/frmAllReports.h"
#include "reports/frmCRPCompare.h"
#include "reports/frmCRPPC.h"
#include "reports/frmCustomReports.h"

#include <utility>

namespace {

/// The window of this name if it is loaded, else a new one, which belongs to itself.
template <typename Window>
Window& LoadedOrNew(const char* name, const ReportContext& context) {
    QWidget* const loaded = FormRegistry::Instance().Find(name);
    return loaded != nullptr ? *static_cast<Window*>(loaded) : *new Window(context);
}

} // namespace

ReportCommands::ReportCommands(ReportContext context) : mContext(std::move(context)) {}

void ReportCommands::ShowReport(std::string_view menuItem, const std::string& caption) {
    if (FileModule::FormIsLoaded("frmAllReports"))
        FormRegistry::Instance().Unload("frmAllReports");
    const CatalogueRow& row = CatalogueReport(menuItem);
    std::shared_ptr<report::Report> document = MakeReport(std::string(row.reportClass));
    if (row.usesConfID)
        document->SetText("ConfigurationLine", ConfigurationName(mContext.form.ShowConf()));
    auto* const window = new frmAllReports(mContext);
    window->Report = std::move(document);
    window->QueryString = Statement(row, mContext.form.ShowConf());
    window->DisplayGroupTree = row.displayGroupTree;
    window->setWindowTitle(QString::fromStdString(caption));
    window->Show();
}

void ReportCommands::mnuRepUserPCConfig() {
    ShowConfigReport(LoadedOrNew<frmCRPPC>("frmCRPPC", mContext), mContext.form.ShowConf());
}

void ReportCommands::mnuCompare() {
    ShowConfigReport(LoadedOrNew<frmCRPCompare>("frmCRPCompare", mContext), 0);
}

void ReportCommands::mnuCompareMis() {
    ShowConfigReport(LoadedOrNew<frmCRPCompare>("frmCRPCompare", mContext), 1);
}

void ReportCommands::mnuCustomReport() {
    frmCustomReports window(mContext);
    window.exec();
}
