// SPDX-License-Identifier: GPL-3.0-or-later
// Printing through a real CUPS: a server of the test's own on a socket in its own folder, whose printers are
// files. Skipped, with a word, where no such server can be started; MOVA_CUPSD names one in an unusual place.
#include "platform/errors.h"
#include "platform/report/PagePainter.h"
#include "platform/report/SystemPrinting.h"
#include "tests/report_viewer/PagesForTests.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"

#include <QFileInfo>
#include <QTest>

#include <cups/cups.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using report::SystemPrinting;

class CupsTest : public testing::Test {
protected:
    void SetUp() override {
        const QString daemon = qEnvironmentVariable("MOVA_CUPSD", "/usr/sbin/cupsd");
        if (!QFileInfo(daemon).isExecutable())
            GTEST_SKIP() << "printing on real printers is NOT tested: there is no " << daemon.toStdString();
        chmod(folder.Path().c_str(), 0777);
        for (const char* const name : {"spool", "spool/tmp", "cache", "state", "out"}) {
            mkdir(folder.Path(name).c_str(), 0777);
            chmod(folder.Path(name).c_str(), 0777);
        }
        const std::string socket = folder.Path("sock");
        const std::string usr = QFileInfo(daemon).path().toStdString() + "/..";
        const auto in = [this](const char* name) { return " " + folder.Path(name) + "\n"; };
        folder.WriteFile(
            "cupsd.conf",
            "Listen " + socket +
                "\nBrowsing Off\nPreserveJobFiles Yes\nWebInterface No\nDefaultAuthType None\n<Location />\n"
                "Allow all\n</Location>\n<Policy default>\n<Limit All>\nOrder deny,allow\n"
                "Allow all\n</Limit>\n</Policy>\n");
        folder.WriteFile("cups-files.conf", "FileDevice Yes\nServerRoot" + in("") + "RequestRoot" +
                                                in("spool") + "TempDir" + in("spool/tmp") + "CacheDir" +
                                                in("cache") + "StateDir" + in("state") + "ErrorLog" +
                                                in("out/log") + "AccessLog" + in("out/access") + "PageLog" +
                                                in("out/pages") + "DataDir " + usr +
                                                "/share/cups\nServerBin " + usr + "/lib/cups\n");
        server.start(daemon, {"-f", "-c", QString::fromStdString(folder.Path("cupsd.conf")), "-s",
                              QString::fromStdString(folder.Path("cups-files.conf"))});
        qputenv("CUPS_SERVER", socket.c_str());
        qputenv("HOME", folder.Path().c_str());
        cupsSetServer(socket.c_str());
        for (const char* const printer : {"Laser", "Ink"}) {
            const QString file = QString::fromStdString(folder.WriteFile(std::string("out/") + printer, ""));
            chmod(file.toUtf8().constData(), 0666);
            const bool isMade = QTest::qWaitFor([&] {
                return QProcess::execute("lpadmin",
                                         {"-p", printer, "-E", "-v", "file://" + file, "-m", "raw"}) == 0;
            });
            if (!isMade)
                GTEST_SKIP() << "printing on real printers is NOT tested: the server takes no printer";
        }
    }

    ~CupsTest() override {
        server.terminate();
        server.waitForFinished();
        qputenv("HOME", home);
        qunsetenv("CUPS_SERVER");
        cupsSetServer(nullptr);
    }

    QByteArray home = qgetenv("HOME");
    TemporaryFolder folder;
    QProcess server;
    QueuedPrompts prompts;
    SystemPrinting printing{prompts};
};

TEST_F(CupsTest, ListsPrintersChangesTheUsersDefaultAndPrints) {
    const std::vector<report::Printer> printers = printing.Printers();
    ASSERT_EQ(printers.size(), 2U);
    EXPECT_EQ(printers[0].deviceName, "Ink") << "in the server's order";
    EXPECT_THAT(printers[0].port, testing::EndsWith("out/Ink"));
    EXPECT_NE(printers[0].driverName, "");
    EXPECT_EQ(printing.DefaultPrinter().deviceName, "") << "no default is set";

    EXPECT_TRUE(printing.ChangeDefault("Laser").isChanged);
    EXPECT_EQ(printing.DefaultPrinter().deviceName, "Laser");
    EXPECT_EQ(folder.ReadFile(".cups/lpoptions"), "Default Laser\n");
    EXPECT_EQ(Seen("lpstat", {"-d"}), "system default destination: Laser\n") << "other programs see it too";
    EXPECT_FALSE(printing.ChangeDefault("Missing").isReached);

    const report::FontMeasure measure;
    report::PrintJob job;
    job.firstPage = 2;
    job.lastPage = 3;
    const auto paint = [&](int number, QPainter& painter) {
        report::Page page;
        Put(page, measure, 42, 42, "This is page " + std::to_string(number + 1));
        report::PaintPage(page, painter, measure);
    };
    // No printer's name: the default one.
    printing.Print(job, {841.89, 595.28}, "A report", 9, paint, [](int) { return true; });
    // What the server has taken, to be kept by its settings.
    EXPECT_EQ(PDFText(folder.Path("spool/d00001-001")), "This is page 2\n\fThis is page 3\n\f");
    EXPECT_THAT(Seen("pdfinfo", {QString::fromStdString(folder.Path("spool/d00001-001"))}),
                testing::ContainsRegex("Page size: +84[12].* x 59[56]"));
    EXPECT_THAT(Seen("lpstat", {"-W", "all", "-o"}), testing::StartsWith("Laser-1 "));

    job.printerName = "Missing";
    EXPECT_THROW(printing.Print(job, {}, "A report", 9, paint, [](int) { return true; }), RunTimeError);
}

} // namespace
