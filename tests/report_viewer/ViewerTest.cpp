// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/report_viewer/ViewerTest.h"

#include <QImage>
#include <QPainter>
#include <QProgressBar>

const char* const kByMachine = R"(
[[report-header.line]]
objects = [{text = "Programs by machine", size = 14, bold = true}]
[[group]]
field = "{Programs.Machine}"
[[group.header.line]]
shaded = true
objects = [{field = "{Programs.Machine}", bold = true}]
[[detail.line]]
objects = [
  {field = "{Programs.Program}", left = 0, width = 70},
  {field = "{Programs.Size}", left = 70, width = 30, align = "right"},
]
[[page-footer.line]]
objects = [{special = "page-number", prefix = "Page ", align = "center"}]
)";

const char* const kAsRead = R"(
[[detail.line]]
objects = [{field = "{Programs.Program}"}]
)";

report::Printing::Change FakePrinting::ChangeDefault(const std::string& deviceName) {
    Change change;
    change.isReached = change.isChanged = !deviceName.empty();
    return change;
}

bool FakePrinting::AskForJob(QWidget* owner, const std::string& printerName, int pages,
                             report::PrintJob& job) {
    EXPECT_NE(owner, nullptr);
    askedPrinter = printerName;
    askedPages = pages;
    job = answer;
    if (meanwhile)
        meanwhile();
    return !isCancelled;
}

void FakePrinting::Print(const report::PrintJob& job, const report::PageFormat& format,
                         const std::string& name, int pages,
                         const std::function<void(int number, QPainter& painter)>& paint,
                         const std::function<bool(int number)>& progress) {
    title = name;
    if (failure)
        throw *failure;
    QImage paper(static_cast<int>(format.width), static_cast<int>(format.height), QImage::Format_RGB32);
    QPainter painter(&paper);
    const int last = job.lastPage == 0 ? pages : job.lastPage;
    for (int number = job.firstPage - 1; number < last && progress(number); ++number) {
        paint(number, painter);
        painted.push_back(number);
    }
}

void ViewerTest::MakeViewer() {
    viewer = std::make_unique<report::Viewer>(prompts, printing);
    viewer->resize(900, 500);
    viewer->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(viewer.get()));
}

void ViewerTest::View(std::unique_ptr<report::Report> report) {
    shown = std::move(report);
    viewer->ReportSource(shown);
    viewer->ViewReport();
    viewer->DisplayGroupTree(true);
}

void ViewerTest::ViewSquared(int count) {
    FillPrograms(count);
    auto squared = std::make_unique<report::Report>(kProgramsHead + std::string(kAsRead), "squared.rpt");
    squared->DatabaseTable(1).SetDataSource(
        Query("SELECT One.Machine, Two.Program, Two.[Size] FROM Programs AS One, Programs AS Two"));
    View(std::move(squared));
}

void ViewerTest::Finish() {
    while (viewer->IsBusy()) {
    }
}

void ViewerTest::WaitUntilIdle() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return Find<QProgressBar>("pgbWork")->isHidden(); }, 20'000));
}

void ViewerTest::Show(int count) {
    FillPrograms(count);
    View(Programs(kByMachine));
    Finish();
}

std::string ViewerTest::TextOfPage(int page) {
    Pages()->GoTo(static_cast<std::size_t>(page - 1));
    Pages()->SelectPage();
    return Pages()->SelectedText().toStdString();
}

std::string ViewerTest::RevealedText() {
    const auto revealed = Pages()->RevealedMatch();
    if (!revealed)
        return {};
    const std::string text = TextOfPage(static_cast<int>(revealed->first) + 1);
    // Texts are separated by tabs and line ends, one text each.
    std::size_t begin = 0;
    for (std::size_t i = 0; i < revealed->second.first.text; ++i)
        begin = text.find_first_of("\t\n", begin) + 1;
    return text.substr(begin, text.find_first_of("\t\n", begin) - begin);
}
