// SPDX-License-Identifier: GPL-3.0-or-later
#include "archive/ListExport.h"

#include "core/LongWork.h"
#include "core/MainForm.h"
#include "platform/prompts.h"

#include <numeric>

namespace {

void AppendField(std::string& line, std::string_view text) {
    if (!line.empty())
        line += ',';
    line += '"';
    line += text;
    line += '"';
}

} // namespace

void ListExport::mnuExport() {
    GuardedExport(mContext, [this] { Export(); });
}

void ListExport::Export() {
    const std::vector<std::string> captions = mContext.form.ListColumns();
    if (captions.empty()) {
        mContext.prompts.MsgBox("There's nothing to export.", MsgBoxStyle::kQuestion, "Export");
        return;
    }
    const std::string path = AskForExportPath(mContext, "Export File (*.csv)|*.csv");
    if (path.empty())
        return;
    mContext.form.StatusText("Export in progress ...");
    ExportFile file(path);
    Write(file, captions);
    LongWork::Aside([&] { file.Commit(); });
    mContext.form.StatusText("Export completed ...");
    mContext.prompts.MsgBox("Exported Ok!", MsgBoxStyle::kQuestion, "Export");
}

void ListExport::Write(ExportFile& file, const std::vector<std::string>& captions) {
    LongWork work(mContext.form);
    std::string line;
    for (const std::string& caption : captions)
        AppendField(line, caption);
    file.WriteLine(line);
    const int columns = static_cast<int>(captions.size());
    for (const std::size_t row : Rows()) {
        line.clear();
        AppendField(line, mContext.form.ListItemText(row));
        for (int column = 1; column < columns; ++column)
            AppendField(line, mContext.form.ListSubItem(row, column));
        file.WriteLine(line);
        work.Step();
    }
}

std::vector<std::size_t> ListExport::Rows() const {
    if (mContext.form.CheckIfSelected())
        return mContext.form.SelectedListItems();
    std::vector<std::size_t> rows(mContext.form.ListItems());
    std::iota(rows.begin(), rows.end(), std::size_t{0});
    return rows;
}
