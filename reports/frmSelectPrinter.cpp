// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/frmSelectPrinter.h"

#include "core/Controls.h"
#include "core/FormRegistry.h"
#include "core/HelpKey.h"
#include "platform/errors.h"
#include "platform/prompts.h"
#include "platform/report/Printing.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QWindow>

namespace {

constexpr const char* kName = "frmSelectPrinter";

/// Tells two printers of one name apart.
std::string KeyOf(const report::Printer& printer) {
    return printer.deviceName + printer.port + printer.driverName;
}

} // namespace

frmSelectPrinter& frmSelectPrinter::Loaded(Prompts& prompts, report::Printing& printing) {
    QWidget* const loaded = FormRegistry::Instance().Find(kName);
    return loaded != nullptr ? *static_cast<frmSelectPrinter*>(loaded)
                             : *new frmSelectPrinter(prompts, printing);
}

frmSelectPrinter::frmSelectPrinter(Prompts& prompts, report::Printing& printing)
    : mPrompts(prompts), mPrinting(printing) {
    setObjectName(kName);
    HelpTopic(*this, "printers.html");
    setWindowTitle("Please Select a Printer");
    BuildControls();
    FormRegistry::Instance().Load(kName, this, [this] {
        hide();
        FormRegistry::Instance().Unloaded(this);
        deleteLater();
    });
    Load();
}

frmSelectPrinter::~frmSelectPrinter() {
    FormRegistry::Instance().Unloaded(this);
}

void frmSelectPrinter::BuildControls() {
    constexpr int kColumns = 48;
    auto* const label = new QLabel("Select Printer:", this);
    label->setObjectName("Label1");
    LSTPrinters = new QListWidget(this);
    LSTPrinters->setObjectName("LSTPrinters");
    LSTPrinters->setAccessibleName("Select Printer");
    LSTPrinters->setMinimumWidth(fontMetrics().averageCharWidth() * kColumns);
    LSTPrinters->viewport()->installEventFilter(this);
    lblHint = new QLabel(this);
    lblHint->setObjectName("lblHint");
    lblHint->setWordWrap(true);
    auto* const ok = Controls::Button(this, "cmdOK", "OK");
    ok->setDefault(true);
    auto* const cancel = Controls::Button(this, "Command1", "Cancel");
    BTNSetup = Controls::Button(this, "BTNSetup", "Setup");

    auto* const buttons = new QVBoxLayout;
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    buttons->addWidget(BTNSetup);
    buttons->addStretch();
    auto* const grid = new QGridLayout(this);
    grid->addWidget(label, 0, 0);
    grid->addWidget(LSTPrinters, 1, 0);
    grid->addLayout(buttons, 1, 1);
    grid->addWidget(lblHint, 2, 0, 1, 2);

    connect(ok, &QPushButton::clicked, this, &frmSelectPrinter::OK);
    connect(cancel, &QPushButton::clicked, this, &frmSelectPrinter::reject);
    connect(BTNSetup, &QPushButton::clicked, this, &frmSelectPrinter::ShowPrintDialog);
    // The current line is no choice: the list has one as soon as it has the keyboard.
    connect(LSTPrinters, &QListWidget::itemSelectionChanged, this, &frmSelectPrinter::Click);
    // A click on the line that is selected already counts too.
    connect(LSTPrinters, &QListWidget::itemClicked, this, [this] {
        if (SelectedLine() == mLineAtPress)
            Click();
    });
    Controls::OnlyLeftDoubleClicks(*LSTPrinters);
    connect(LSTPrinters, &QListWidget::itemDoubleClicked, this, &frmSelectPrinter::OK);
}

bool frmSelectPrinter::eventFilter(QObject* watched, QEvent* event) {
    if (watched == LSTPrinters->viewport() && event->type() == QEvent::MouseButtonPress)
        mLineAtPress = SelectedLine();
    return QDialog::eventFilter(watched, event);
}

void frmSelectPrinter::Load() {
    int current = -1;
    try {
        const std::string key = KeyOf(mPrinting.DefaultPrinter());
        for (report::Printer& printer : mPrinting.Printers()) {
            LSTPrinters->addItem(QString::fromStdString(printer.deviceName + " on " + printer.port));
            if (KeyOf(printer) == key)
                current = LSTPrinters->count() - 1;
            mPrinters.push_back(std::move(printer));
        }
    } catch (const RunTimeError&) {
        BTNSetup->setEnabled(false);
        Hint("No printer is installed. Print offers to make a PDF file instead.");
        return;
    }
    Hint(
        "The printer that you click becomes your own default printer at once, whether you then press OK or "
        "Cancel.");
    if (current >= 0)
        LSTPrinters->setCurrentRow(current);
}

void frmSelectPrinter::Hint(const char* text) {
    lblHint->setText(text);
    LSTPrinters->setAccessibleDescription(text);
}

void frmSelectPrinter::ShowModal(QWidget& owner) {
    // It belongs to each report window in turn, and outlives them all.
    winId();
    windowHandle()->setTransientParent(owner.window()->windowHandle());
    LSTPrinters->setFocus();
    exec();
    windowHandle()->setTransientParent(nullptr);
}

int frmSelectPrinter::SelectedLine() const {
    const QList<QListWidgetItem*> selected = LSTPrinters->selectedItems();
    return selected.isEmpty() ? -1 : LSTPrinters->row(selected.constFirst());
}

void frmSelectPrinter::Click() {
    const int line = SelectedLine();
    if (line >= 0)
        Change_Printer_To(mPrinters.at(static_cast<std::size_t>(line)).deviceName);
}

void frmSelectPrinter::Change_Printer_To(const std::string& name) {
    const report::Printing::Change change = mPrinting.ChangeDefault(name);
    if (!change.isReached) {
        mPrompts.MsgBox("Could not access printer to change default printer.", MsgBoxStyle::kOKOnly, "");
        mPrompts.MsgBox("errval= " + std::to_string(change.errorNumber), MsgBoxStyle::kOKOnly, "");
    } else if (!change.isChanged) {
        mPrompts.MsgBox("Could not change default printer.", MsgBoxStyle::kOKOnly, "");
    }
}

bool frmSelectPrinter::ShowPrintDialog() {
    return mPrinting.SetUp(this);
}

void frmSelectPrinter::OK() {
    const int line = SelectedLine();
    if (line >= 0) {
        const report::Printer& printer = mPrinters.at(static_cast<std::size_t>(line));
        PrinterName = printer.deviceName;
        PrinterPort = printer.port;
        DriverName = printer.driverName;
    }
    accept();
}
