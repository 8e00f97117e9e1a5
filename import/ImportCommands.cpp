// SPDX-License-Identifier: GPL-3.0-or-later
#include "import/ImportCommands.h"

#include "core/ConsoleSettings.h"
#include "core/Globals.h"
#include "core/MainForm.h"
#include "core/Pace.h"
#include "import/cSinImport.h"
#include "import/frmImport.h"
#include "platform/application.h"
#include "platform/errors.h"
#include "platform/files.h"

#include <array>
#include <utility>

namespace {

constexpr const char* kFolder = "ImportDir";

constexpr std::int16_t kMinutes = 1;
constexpr std::int16_t kQuickMinutes = 30;
constexpr int kQuickSeconds = kQuickMinutes * 60;

/// Shows on the main window how far an import has come.
class WindowProgress final : public ImportEvents {
public:
    explicit WindowProgress(MainForm& form) : mForm(form) {}

    void DoneSoFarUsers(const std::string& name, double percent) override {
        mName = name;
        mPercent = percent;
        mIsNew = true;
        StillWorking();
    }
    void DoneSoFarUser(const std::string& /*name*/, double /*percent*/) override { StillWorking(); }
    void StillWorking() override {
        if (!mPace.IsDue())
            return;
        if (std::exchange(mIsNew, false)) {
            mForm.ProgressValue(CInt(100 * mPercent));
            mForm.StatusText("Import Status : " + mName);
        }
        Application::LetEventsThrough();
    }

private:
    MainForm& mForm;
    Pace mPace;
    /// The file in hand.
    std::string mName;
    double mPercent = 0;
    bool mIsNew = false;
};

/// Sets a longer time frame for as long as a Quick Import runs.
class QuickFrame {
public:
    QuickFrame() {
        constexpr std::array<std::int64_t, 4> kSecondsOfUnit = {1, 60, 3600, 86400};
        const bool isUnit = gImportTime >= 0 && gImportTime < static_cast<int>(kSecondsOfUnit.size());
        const std::int64_t seconds =
            isUnit ? gImportTimeNum * kSecondsOfUnit.at(static_cast<std::size_t>(gImportTime)) : 0;
        if (seconds < kQuickSeconds) {
            gImportTime = kMinutes;
            gImportTimeNum = kQuickMinutes;
        }
    }
    ~QuickFrame() {
        gImportTime = mUnit;
        gImportTimeNum = mCount;
    }
    QuickFrame(const QuickFrame&) = delete;
    QuickFrame& operator=(const QuickFrame&) = delete;

private:
    std::int16_t mUnit = gImportTime;
    std::int16_t mCount = gImportTimeNum;
};

} // namespace

std::unique_ptr<cSinImport> ImportContext::NewImport(ImportEvents& events) const {
    return std::make_unique<cSinImport>(gConnection, prompts, clock, TimeFrame{gImportTime, gImportTimeNum},
                                        &events);
}

void ImportContext::StoreFolder(const std::string& folder) const {
    gImportDir = folder;
    ConsoleSettings::Save(settings, kFolder, folder);
}

std::string ImportContext::StoredFolder() const {
    return FolderOnDisk(ConsoleSettings::Get(settings, kFolder));
}

void ImportCommands::mnuImport() {
    {
        frmImport dialog(mContext);
        dialog.exec();
    }
    OpenAnew();
}

void ImportCommands::mnuQuickImport() {
    const QuickFrame frame;
    Guarded(&ImportCommands::QuickImport);
}

void ImportCommands::mnuPopRImport() {
    Guarded(&ImportCommands::ReImport);
}

void ImportCommands::QuickImport() {
    mContext.form.ProgressMaximum(100);
    mContext.form.ProgressValue(0);
    const std::string folder = mContext.StoredFolder();
    if (folder.empty())
        return mnuImport();
    const DirectoryListing files(folder);
    if (files.WithExtension(".org").empty() && files.WithExtension(".inf").empty()) {
        mContext.prompts.MsgBox(
            "There's no files to import in the import directory. Please select the "
            "Mova\\Inf directory on the server to continue.",
            MsgBoxStyle::kInformation, "No INF Files");
        return mnuImport();
    }
    if (ImportFolder(folder))
        Finish();
}

void ImportCommands::ReImport() {
    mContext.form.ProgressMaximum(100);
    mContext.form.ProgressValue(0);
    const std::string folder = mContext.StoredFolder();
    if (folder.empty())
        return mnuImport();
    if (mContext.form.CheckIfSelected())
        ImportSelectedMachines(folder);
    else if (!ImportFolder(folder))
        return;
    Finish();
}

bool ImportCommands::ImportFolder(const std::string& folder) {
    WindowProgress progress(mContext.form);
    mContext.form.Pointer(MousePointer::Hourglass);
    bool noData = false;
    const bool isImported = mContext.NewImport(progress)->ImportInfData(folder, "", noData);
    if (!isImported)
        mContext.prompts.MsgBox("Failed to Import INF Files", MsgBoxStyle::kCritical, "Import");
    mContext.form.Pointer(MousePointer::Default);
    return isImported;
}

void ImportCommands::ImportSelectedMachines(const std::string& folder) {
    WindowProgress progress(mContext.form);
    const std::unique_ptr<cSinImport> cImport = mContext.NewImport(progress);
    mContext.form.Pointer(MousePointer::Hourglass);
    std::string last;
    for (const std::size_t row : mContext.form.SelectedListItems()) {
        const std::string machine = mContext.form.ListItemText(row);
        // No name at all would import the whole folder.
        if (machine == last || machine.empty())
            continue;
        last = machine;
        // A machine that fails has had its box by then; the others are imported all the same.
        bool noData = false;
        cImport->ImportInfData(folder, machine, noData);
    }
    mContext.form.Pointer(MousePointer::Default);
}

void ImportCommands::Finish() {
    mContext.form.StatusText("Import Successful.");
    mContext.form.ProgressValue(0);
    OpenAnew();
}

void ImportCommands::OpenAnew() {
    gFirstActivation = true;
    mContext.form.Activate();
}

void ImportCommands::Guarded(void (ImportCommands::*command)()) {
    try {
        (this->*command)();
    } catch (const RunTimeError& failure) {
        mContext.form.Pointer(MousePointer::Default);
        mContext.prompts.MsgBox(failure.description, MsgBoxStyle::kCritical,
                                "Error#" + NumberText(failure.number));
    }
}
