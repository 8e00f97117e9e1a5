// SPDX-License-Identifier: GPL-3.0-or-later
// What a viewer's commands do. Each may keep a dialog open while the window around is closed by its owner,
// so each looks whether the viewer still shows its report when it comes back.
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/report/Exports.h"
#include "platform/report/PDFFile.h"
#include "platform/report/PDFJobDialog.h"
#include "platform/report/PagePainter.h"
#include "platform/report/PageSetupDialog.h"
#include "platform/report/ProgressWindow.h"
#include "platform/report/ViewerImplementation.h"
#include "platform/text.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QLocale>
#include <QPointer>
#include <QTreeView>

#include <algorithm>
#include <utility>

namespace report {

namespace {

struct FormatRow {
    std::string_view extension;
    const char* name;
    /// Nothing for PDF, which is painted.
    std::optional<ExportFormat> format;
};

constexpr FormatRow kFormats[] = {
    {"pdf", "PDF document (*.pdf)", std::nullopt},
    {"html", "Web page (*.html)", ExportFormat::HTML},
    {"xlsx", "Spreadsheet (*.xlsx)", ExportFormat::XLSX},
    {"csv", "Comma-separated values (*.csv)", ExportFormat::CSV},
    {"txt", "Padded text (*.txt)", ExportFormat::Text},
};

/// "PDF document (*.pdf)|*.pdf|Web page…", as file dialogs take it.
std::string Filter() {
    std::string filter;
    for (const FormatRow& row : kFormats) {
        if (!filter.empty())
            filter += '|';
        filter.append(row.name).append("|*.").append(row.extension);
    }
    return filter;
}

/// The format that a file's name asks for; null where there is none.
const FormatRow* FormatOf(const std::string& path) {
    const QString name = QString::fromStdString(path);
    for (const FormatRow& row : kFormats)
        if (name.endsWith(QLatin1Char('.') + QLatin1String(row.extension.data(),
                                                           static_cast<qsizetype>(row.extension.size())),
                          Qt::CaseInsensitive))
            return &row;
    return nullptr;
}

/// Keeps slices of a viewer's work away from what goes over the whole report.
class Hold {
public:
    Hold(Viewer& viewer, bool& isHeld) : mViewer(&viewer), mIsHeld(isHeld) { mIsHeld = true; }
    ~Hold() {
        if (!mViewer.isNull())
            mIsHeld = false;
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

private:
    QPointer<Viewer> mViewer;
    bool& mIsHeld;
};

QString PageOf(int page, int pages) {
    const QLocale locale;
    return QStringLiteral("Page %1 of %2").arg(locale.toString(page), locale.toString(pages));
}

} // namespace

void Viewer::Implementation::Guarded(const std::function<void()>& command) {
    // The viewer may be gone when the command is over; who answers questions is not.
    Prompts& asked = prompts;
    try {
        command();
    } catch (const RunTimeError& error) {
        asked.MsgBox(error.description, MsgBoxStyle::kCritical, "Error# " + std::to_string(error.number));
    }
}

std::string Viewer::Implementation::Title() const {
    return report ? report->Definition().title : std::string();
}

bool Viewer::Implementation::CompleteFirst() {
    const QPointer<Viewer> alive(&viewer);
    const std::shared_ptr<Report> kept = report;
    ProgressWindow window(&viewer, QStringLiteral("Reading\u2026"));
    while (isBusy) {
        if (!isHeld)
            Work();
        const QString rows = QLocale().toString(static_cast<qulonglong>(kept->RowsRead()));
        if (!window.Step(-1, QStringLiteral("Reading\u2026 %1 rows").arg(rows)))
            return false;
        if (alive.isNull() || report != kept)
            return false;
    }
    return true;
}

void Viewer::Implementation::Print() {
    if (!report || isHeld || !CompleteFirst())
        return;
    const QPointer<Viewer> alive(&viewer);
    const std::shared_ptr<Report> kept = report;
    const auto count = static_cast<int>(std::min<std::size_t>(layout->PageCount(), 1'000'000'000));
    PrintJob job;
    if (!printing.AskForJob(&viewer, report->PrinterName(), count, job) || alive.isNull() || report != kept)
        return;
    const Hold hold(viewer, isHeld);
    ProgressWindow window(&viewer, QStringLiteral("Printing\u2026"));
    const PageRange range = PagesOf(job, count);
    printing.Print(
        job, format, Title(), count,
        [this](int number, QPainter& painter) {
            PaintPage(layout->BuildPage(static_cast<std::size_t>(number)), painter, measure);
        },
        [&](int number) {
            const int done = number - range.first + 1;
            return window.Step(static_cast<double>(done) / range.Count(),
                               QStringLiteral("Printing\u2026 ") + PageOf(done + 1, range.Count())) &&
                   !alive.isNull() && report == kept;
        });
}

void Viewer::Implementation::Export() {
    if (!report || isHeld)
        return;
    const QPointer<Viewer> alive(&viewer);
    const std::shared_ptr<Report> kept = report;
    const std::string path = prompts.SaveFile({Filter(), "Export", "pdf", {}});
    if (path.empty() || alive.isNull() || report != kept)
        return;
    const FormatRow* const chosen = FormatOf(path);
    if (chosen == nullptr) {
        prompts.MsgBox("The file's extension tells its format: pdf, html, xlsx, csv or txt.",
                       MsgBoxStyle::kExclamation, "Export");
        return;
    }
    if (!MayReplace(prompts, path) || alive.isNull() || report != kept)
        return;
    if (!chosen->format && !CompleteFirst())
        return;
    if (!WriteExport(chosen->format, path) || alive.isNull() || report != kept)
        return;
    exportedTo = QString::fromStdString(path);
    UpdateStatus();
}

bool Viewer::Implementation::WriteExport(const std::optional<ExportFormat>& form, const std::string& path) {
    const QPointer<Viewer> alive(&viewer);
    const std::shared_ptr<Report> kept = report;
    const Hold hold(viewer, isHeld);
    ProgressWindow window(&viewer, QStringLiteral("Exporting\u2026"));
    const auto step = [&](double share, const QString& text) {
        return window.Step(share, text) && !alive.isNull() && report == kept;
    };
    if (form)
        return report::Export(*kept, *form, path, [&](double share) { return step(share, {}); });
    const auto count = static_cast<int>(std::min<std::size_t>(layout->PageCount(), 1'000'000'000));
    return WritePDF(path, {format, Title(), 0, count,
                           [this](int number, QPainter& painter) {
                               PaintPage(layout->BuildPage(static_cast<std::size_t>(number)), painter,
                                         measure);
                           },
                           [&](int number) {
                               return step(static_cast<double>(number) / count,
                                           QStringLiteral("Exporting\u2026 ") + PageOf(number + 1, count));
                           }});
}

void Viewer::Implementation::SetUpPage() {
    if (!report || isHeld)
        return;
    const QPointer<Viewer> alive(&viewer);
    // Not on the stack: it goes with the viewer.
    const QPointer<PageSetupDialog> dialog = new PageSetupDialog(format, &viewer);
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (alive.isNull() || dialog.isNull())
        return;
    const PageFormat chosen = dialog->Format();
    delete dialog;
    if (!isAccepted || !report || chosen == format)
        return;
    format = chosen;
    LayOutAnew();
    isBusy = true;
    isStopped = false;
    timer.start(0);
    UpdateStatus();
}

void Viewer::Implementation::Copy() {
    const QString text = pages->SelectedText();
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

void Viewer::Implementation::GoToTypedPage() {
    bool isNumber = false;
    const qulonglong page = QLocale().toULongLong(pageNumber->text().trimmed(), &isNumber);
    if (isNumber && page > 0) {
        pages->GoTo(static_cast<std::size_t>(page - 1));
        pages->setFocus();
    }
    UpdatePageNumber();
}

void Viewer::Implementation::TakeTypedZoom() {
    const QString text = zoom->currentText();
    if (text.startsWith(QLatin1String("Fit W"), Qt::CaseInsensitive)) {
        pages->ZoomToFit(PageView::Fit::Width);
    } else if (text.startsWith(QLatin1String("Fit P"), Qt::CaseInsensitive)) {
        pages->ZoomToFit(PageView::Fit::Page);
    } else {
        QString digits = text;
        bool isNumber = false;
        const double percent = QLocale().toDouble(digits.remove(QLatin1Char('%')).trimmed(), &isNumber);
        if (isNumber && percent > 0)
            pages->Zoom(percent);
    }
    UpdateZoom();
    pages->setFocus();
}

void Viewer::Implementation::ZoomOn(bool isLarger) {
    // What fits the window is seldom one of the steps: the next beyond it, not the same again.
    constexpr double kSame = 0.5;
    const double now = pages->Zoom();
    if (isLarger) {
        const auto* const step = std::upper_bound(kZooms.begin(), kZooms.end(), now + kSame);
        pages->Zoom(step == kZooms.end() ? PageView::kMostZoom : *step);
    } else {
        const auto* const step = std::lower_bound(kZooms.begin(), kZooms.end(), now - kSame);
        pages->Zoom(step == kZooms.begin() ? PageView::kLeastZoom : *(step - 1));
    }
}

void Viewer::Implementation::JumpToGroup(const QModelIndex& index) {
    if (const std::optional<GroupEntry> entry = groups->EntryAt(index)) {
        pages->GoTo(entry->page, layout->TopOf(*entry));
        chosenPage = pages->CurrentPage();
        tree->setCurrentIndex(index);
    }
}

void Viewer::Implementation::OpenFind() {
    const QString selected = pages->SelectedText();
    const bool isWord = !selected.contains(QLatin1Char('\n')) && !selected.contains(QLatin1Char('\t'));
    findBar->Open(isWord ? selected : QString());
    pages->Highlight(findBar->Sought());
    UpdateActions();
}

void Viewer::Implementation::CloseFind() {
    finder->Stop();
    findBar->hide();
    findBar->Note({});
    pages->Highlight({});
    pages->setFocus();
    UpdateActions();
}

void Viewer::Implementation::Find(bool isForward) {
    if (findBar->isHidden() || findBar->Sought().isEmpty())
        return OpenFind();
    Search search;
    search.sought = findBar->Sought();
    search.isForward = isForward;
    search.pageCount = pages->PageCount();
    search.page = pages->CurrentPage();
    // On from the place on show, unless the reader has gone elsewhere.
    if (const auto revealed = pages->RevealedMatch(); revealed && revealed->first == search.page)
        search.match = revealed->second;
    findBar->Note(QStringLiteral("Finding\u2026"));
    finder->Begin(search);
    UpdateActions();
}

void Viewer::Implementation::Escape() {
    if (Action("actStop").isEnabled())
        Stop();
    else if (!findBar->isHidden())
        CloseFind();
}

} // namespace report
