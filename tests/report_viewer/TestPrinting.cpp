// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/LocalPrinters.h"
#include "platform/report/PDFJobDialog.h"
#include "platform/report/PagePainter.h"
#include "platform/report/SystemPrinting.h"
#include "tests/report_viewer/PagesForTests.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/QueuedPrompts.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Windows.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include <cups/cups.h>
#include <gmock/gmock.h>

namespace {

using report::PrintJob;
using report::SystemPrinting;

TEST(LocalPrinters, OnlyThisMachinesServerIsAsked) {
    const std::pair<const char*, bool> names[] = {
        {"/run/cups/cups.sock", true}, {"localhost", true},
        {"127.0.0.1", true},           {"::1", true},
        {"printserver", false},        {"192.0.2.1", false},
        {"localhost.example", false},  {"127.example", false},
        {"127.0.0.1.example", false},  {"", false},
    };
    for (const auto& [name, isLocal] : names)
        EXPECT_EQ(report::IsLocalServer(name), isLocal) << name;
}

TEST(LocalPrinters, ADefaultIsSetAndEachPrinterKeepsItsOptions) {
    const struct {
        const char* why;
        const char* before;
        const char* name;
        const char* after;
    } cases[] = {
        {"no file yet", "", "Laser", "Default Laser\n"},
        {"the old default keeps its options", "Default Ink media=a4\n", "Laser",
         "Dest Ink media=a4\nDefault Laser\n"},
        {"one without options needs no line", "Default Ink\n", "Laser", "Default Laser\n"},
        {"the new one has options already", "Default Ink x=1\nDest Laser sides=two job=a b\n", "Laser",
         "Dest Ink x=1\nDefault Laser sides=two job=a b\n"},
        {"it is the default already", "Default Laser x=1\nDest Ink y=2\n", "Laser",
         "Dest Ink y=2\nDefault Laser x=1\n"},
        {"what it does not know stays", "# mine\nDest A/home o=1\n", "A",
         "# mine\nDest A/home o=1\nDefault A\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(report::WithDefaultPrinter(c.before, c.name), c.after) << c.why;
}

/// A machine whose settings name a print server elsewhere: the same as one without printers.
class NoPrinters : public testing::Test {
protected:
    NoPrinters() { cupsSetServer("192.0.2.1"); }
    ~NoPrinters() override { cupsSetServer(nullptr); }

    TemporaryFolder folder;
    EnvironmentVariable home{"HOME", folder.Path()};
    QueuedPrompts prompts;
    SystemPrinting printing{prompts};
};

TEST_F(NoPrinters, NothingIsAskedOfAServerElsewhere) {
    EXPECT_FALSE(report::HasLocalServer());
    EXPECT_TRUE(printing.Printers().empty());
    EXPECT_THROW(printing.DefaultPrinter(), RunTimeError);
    EXPECT_FALSE(printing.SetUp(nullptr));
    const report::Printing::Change change = printing.ChangeDefault("Laser");
    EXPECT_FALSE(change.isReached);
    EXPECT_NE(change.errorNumber, 0);
    EXPECT_FALSE(folder.Exists(".cups/lpoptions"));
    PrintJob job;
    job.printerName = "Laser";
    EXPECT_EQ(ErrorOf([&] {
                  printing.Print(
                      job, {}, "x", 1, [](int, QPainter&) {}, [](int) { return true; });
              }),
              Errors::kPrinter)
        << "a printer that is not there took a job";
}

TEST_F(NoPrinters, TheUsersOwnDefaultIsWrittenToTheirFolder) {
    report::SetUsersDefaultPrinter("Laser");
    EXPECT_EQ(folder.ReadFile(".cups/lpoptions"), "Default Laser\n");
    EXPECT_EQ(report::DefaultPrinterName(), "Laser");
}

TEST_F(NoPrinters, ARangeGoesToAPDFFile) {
    const std::string path = folder.Path("pages.pdf");
    prompts.Expect(SaveFile("Print to File"), path);
    const NextDialog answer([](QDialog& dialog) {
        EXPECT_FALSE(dialog.findChild<QPushButton*>("cmdOK")->isEnabled()) << "no file yet";
        dialog.findChild<QPushButton*>("btnBrowse")->click();
        // The wrong way round is taken the right way round.
        dialog.findChild<QSpinBox*>("spnFirst")->setValue(4);
        dialog.findChild<QSpinBox*>("spnLast")->setValue(3);
        dialog.findChild<QPushButton*>("cmdOK")->click();
    });
    PrintJob job;
    ASSERT_TRUE(printing.AskForJob(nullptr, "", 9, job));
    EXPECT_EQ(job.pdfPath, path);
    const report::FontMeasure measure;
    std::vector<int> asked;
    printing.Print(
        job, {}, "Title", 9,
        [&](int number, QPainter& painter) {
            report::Page page;
            Put(page, measure, 42, 42, "This is page " + std::to_string(number + 1));
            report::PaintPage(page, painter, measure);
        },
        [&](int number) {
            asked.push_back(number);
            return true;
        });
    EXPECT_EQ(asked, (std::vector{2, 3}));
    EXPECT_EQ(PDFText(path), "This is page 3\n\fThis is page 4\n\f");
}

TEST_F(NoPrinters, AFileThatIsThereIsReplacedOnlyOnYes) {
    const std::string path = folder.WriteFile("pages.pdf", "older");
    prompts.Expect(Box("Replace?", "Replace the file pages.pdf?", 4 + 16 + 256), MsgBoxAnswer::No);
    const NextDialog answer([](QDialog& dialog) {
        // Without its extension, which is meant.
        dialog.findChild<QLineEdit*>("txtFile")->setText(qgetenv("HOME") + "/pages");
        dialog.findChild<QPushButton*>("cmdOK")->click();
        EXPECT_TRUE(dialog.isVisible());
        dialog.findChild<QPushButton*>("cmdCancel")->click();
    });
    PrintJob job;
    EXPECT_FALSE(printing.AskForJob(nullptr, "", 9, job));
}

} // namespace
