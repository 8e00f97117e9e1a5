// SPDX-License-Identifier: GPL-3.0-or-later
// Measures a report of a million rows in ratios, each taken in this one run and printed beside its limit:
// against the engine's own reading of the same rows. The work is done in slices, as the viewer does it. Pages
// of it in a PDF file are measured against a bare writer that draws the same texts.
// bench_reports [machines]; 10000 where none are given, with a hundred programs each. Ends with 1 where a
// limit is missed.
#include "bench/BareWriter.h"
#include "bench/Measure.h"
#include "bench/Site.h"
#include "import/Schema.h"
#include "platform/adodb.h"
#include "platform/application.h"
#include "platform/report/FontMeasure.h"
#include "platform/report/Layout.h"
#include "platform/report/PDFFile.h"
#include "platform/report/PagePainter.h"
#include "platform/report/Report.h"
#include "reports/Documents.h"

#include <QPainter>
#include <QPdfWriter>

#include <malloc.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <stdexcept>

namespace {

using namespace std::chrono_literals;

constexpr int kRounds = 3;
constexpr auto kSlice = 30ms;
constexpr double kLongestWait = 0.5;
constexpr double kMostMemory = 300.0 * 1024 * 1024;

const std::string kQuery = "SELECT * FROM UninstallData WHERE ConfID = 1";
const std::string kOrder = " ORDER BY [Program Name], COMPUTERNAME";
const std::string kDocument = "CRPUninstall";

/// The process's peak of memory from now on.
void ForgetPeak() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;
}

double PeakBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    throw std::runtime_error("the system tells no peak of memory");
}

struct Bare {
    double firstRow = 0;
    double whole = 0;
};

/// Runs the query to its end and touches the texts of each row.
Bare StepBare(const ADODB::Connection& connection) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(connection.Handle(), (kQuery + kOrder).c_str(), -1, &statement, nullptr) !=
        SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(connection.Handle()));
    Bare bare;
    const int columns = sqlite3_column_count(statement);
    const auto touch = [&] {
        for (int column = 0; column < columns; ++column)
            sqlite3_column_text(statement, column);
    };
    bare.firstRow = Timed([&] {
        sqlite3_step(statement);
        touch();
    });
    bare.whole = bare.firstRow + Timed([&] {
                     while (sqlite3_step(statement) == SQLITE_ROW)
                         touch();
                 });
    sqlite3_finalize(statement);
    return bare;
}

class Poured {
public:
    Poured(const std::shared_ptr<ADODB::Connection>& connection, const report::TextMeasure& measure,
           const std::string& document, const std::string& query)
        : report(document, "Installed Software"), layout(report, report::PageFormat(), measure) {
        auto rows = std::make_shared<ADODB::Recordset>();
        rows->Open(query, connection);
        report.DatabaseTable(1).SetDataSource(rows);
    }

    /// One slice of both; false when all is done. Notes the longest, the query's first row aside.
    bool Work() {
        const double seconds = Timed([this] {
            report.Work(kSlice / 2);
            layout.Work(kSlice / 2);
        });
        if (std::exchange(mHasFirstRow, true))
            longestSlice = std::max(longestSlice, seconds);
        return !layout.IsComplete();
    }
    void Finish() {
        while (Work()) {
        }
    }

    report::Report report;
    report::Layout layout;
    double longestSlice = 0;

private:
    bool mHasFirstRow = false;
};

std::shared_ptr<ADODB::Connection> Filled(const Workplace& place, int machines) {
    SiteSize size;
    size.machines = machines;
    size.devices = 1;
    size.drivers = 1;
    const std::string site = place.Folder("site");
    WriteSite(site, size);
    const std::string path = place.NewDatabase();
    BareWrite(site, path);
    auto connection = std::make_shared<ADODB::Connection>();
    connection->ConnectionString("DBQ=" + path + ";USR=Admin;");
    connection->Open();
    return connection;
}

/// The same report where the document sorts instead of the query.
bool RunSorted(const std::shared_ptr<ADODB::Connection>& connection) {
    const report::FontMeasure measure;
    std::string document = DocumentText(kDocument);
    constexpr std::string_view kAsRead = "as-read";
    document.replace(document.find(kAsRead), kAsRead.size(), "ascending");
    std::vector<double> bare;
    std::vector<double> whole;
    double longestSlice = 0;
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(StepBare(*connection).whole);
        Poured poured(connection, measure, document, kQuery);
        whole.push_back(Timed([&] { poured.Finish(); }));
        longestSlice = std::max(longestSlice, poured.longestSlice);
    }
    std::printf("sorted by the report: %.0f ms, longest slice %.0f ms\n", Median(whole) * 1000,
                longestSlice * 1000);
    const bool holds =
        Report("sorting report, to its last page / sorting query", Median(whole) / Median(bare), 2.5, false);
    return Report("its longest slice / half a second", longestSlice / kLongestWait, 1, false) && holds;
}

bool Run(const std::shared_ptr<ADODB::Connection>& connection) {
    const report::FontMeasure measure;
    std::vector<double> bareFirst;
    std::vector<double> bareWhole;
    std::vector<double> firstPage;
    std::vector<double> whole;
    double longestSlice = 0;
    double longestPage = 0;
    double peak = 0;
    StepBare(*connection);
    for (int round = 0; round < kRounds; ++round) {
        const Bare bare = StepBare(*connection);
        bareFirst.push_back(bare.firstRow);
        bareWhole.push_back(bare.whole);
        ForgetPeak();
        Poured poured(connection, measure, DocumentText(kDocument), kQuery + kOrder);
        firstPage.push_back(Timed([&] {
            while (poured.layout.PageCount() < 2 && poured.Work()) {
            }
            poured.layout.BuildPage(0);
        }));
        whole.push_back(firstPage.back() + Timed([&] { poured.Finish(); }));
        peak = std::max(peak, PeakBytes());
        longestSlice = std::max(longestSlice, poured.longestSlice);
        std::mt19937 random(1);
        for (int i = 0; i < 300; ++i)
            longestPage = std::max(
                longestPage, Timed([&] { poured.layout.BuildPage(random() % poured.layout.PageCount()); }));
        if (round == 0)
            std::printf("%zu rows, %zu groups, %zu pages\n", poured.report.RowCount(),
                        poured.layout.GroupCount(), poured.layout.PageCount());
    }
    std::printf("query: first row %.0f ms, all %.0f ms; report: first page %.0f ms, all %.0f ms\n",
                Median(bareFirst) * 1000, Median(bareWhole) * 1000, Median(firstPage) * 1000,
                Median(whole) * 1000);
    std::printf("slowest of 900 pages %.2f ms, longest slice %.0f ms, peak %.0f MB\n", longestPage * 1000,
                longestSlice * 1000, peak / 1024 / 1024);
    bool holds =
        Report("first page / the query's first row", Median(firstPage) / Median(bareFirst), 1.5, false);
    holds &= Report("group tree and page total / stepping the query", Median(whole) / Median(bareWhole), 2.5,
                    false);
    holds &= Report("any page later / stepping the query", longestPage / Median(bareWhole), 0.05, false);
    holds &= Report("longest slice / half a second", longestSlice / kLongestWait, 1, false);
    return Report("peak of memory / 300 MB", peak / kMostMemory, 1, false) && holds;
}

/// What is drawn of a page by somebody who knows no more than the texts and their places.
double WriteBarePDF(const std::string& path, const std::vector<report::Page>& pages) {
    return Timed([&] {
        constexpr double kPointsPerInch = 72;
        QPdfWriter writer(QString::fromStdString(path));
        QPainter painter(&writer);
        painter.scale(writer.resolution() / kPointsPerInch, writer.resolution() / kPointsPerInch);
        for (const report::Page& page : pages) {
            if (&page != &pages.front())
                writer.newPage();
            for (const report::PlacedText& text : page.texts) {
                QFont font(QStringLiteral("DejaVu Sans"));
                font.setPixelSize(static_cast<int>(text.style.size));
                font.setBold(text.style.isBold);
                painter.setFont(font);
                painter.drawText(QPointF(text.left, text.baseline), QString::fromStdString(text.text));
            }
        }
    });
}

/// Pages into a PDF file, worked out one by one as an export does.
bool RunPDF(const std::shared_ptr<ADODB::Connection>& connection, const std::string& folder) {
    const report::FontMeasure measure;
    Poured poured(connection, measure, DocumentText(kDocument), kQuery + kOrder);
    while (poured.layout.PageCount() < 1001 && poured.Work()) {
    }
    const auto count = static_cast<int>(std::min<std::size_t>(poured.layout.PageCount(), 1000));
    std::vector<report::Page> pages;
    for (int i = 0; i < count; ++i)
        pages.push_back(poured.layout.BuildPage(static_cast<std::size_t>(i)));
    const report::PaintedPages painted{
        report::PageFormat(),
        "Installed Software",
        0,
        count,
        [&](int number, QPainter& painter) {
            report::PaintPage(poured.layout.BuildPage(static_cast<std::size_t>(number)), painter, measure);
        },
        [](int /*number*/) { return true; }};
    std::vector<double> bare;
    std::vector<double> own;
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(WriteBarePDF(folder + "/bare.pdf", pages));
        own.push_back(Timed([&] { report::WritePDF(folder + "/own.pdf", painted); }));
    }
    std::printf("%d pages in a PDF file: bare %.0f ms, own %.0f ms\n", count, Median(bare) * 1000,
                Median(own) * 1000);
    return Report("pages a second in a PDF file / a bare writer's", Median(bare) / Median(own), 0.7, true);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv);
    try {
        const Workplace place("bench-reports");
        const auto connection = Filled(place, argc > 1 ? std::atoi(argv[1]) : 10000);
        const bool holds = Run(connection);
        const bool holdsSorted = RunSorted(connection);
        return RunPDF(connection, place.Folder("pdf")) && holdsSorted && holds ? 0 : 1;
    } catch (const std::exception& failure) {
        std::printf("%s\n", failure.what());
        return 1;
    }
}
