// SPDX-License-Identifier: GPL-3.0-or-later
// The printer chooser of the report windows: three texts that name a printer. It is loaded at its first use
// and stays loaded, hidden, until the program ends, so its list is not refreshed, and its members keep the
// printer of the last OK. A choice in the list also makes the printer the user's own default at once, also
// where Cancel follows; the window says so.
#pragma once

#include <QDialog>

#include <string>
#include <vector>

class Prompts;
class QLabel;
class QListWidget;
class QPushButton;
namespace report {
class Printing;
struct Printer;
} // namespace report

class frmSelectPrinter final : public QDialog {
    Q_OBJECT

public:
    /// The one window. The arguments must live as long as the program.
    static frmSelectPrinter& Loaded(Prompts& prompts, report::Printing& printing);
    ~frmSelectPrinter() override;

    /// Shows the window until OK or Cancel hides it.
    void ShowModal(QWidget& owner);

    /// Makes the named printer the user's default. A failure is shown in a box.
    void Change_Printer_To(const std::string& name);
    /// The set-up of the printer; what is chosen there holds for the program's print jobs. False on cancel.
    bool ShowPrintDialog();

    /// All empty at first.
    std::string PrinterName;
    std::string PrinterPort;
    std::string DriverName;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    frmSelectPrinter(Prompts& prompts, report::Printing& printing);
    void BuildControls();
    void Load();
    void Hint(const char* text);
    /// -1 where none is.
    int SelectedLine() const;
    void Click();
    void OK();

    Prompts& mPrompts;
    report::Printing& mPrinting;
    /// An entry for each line of the list.
    std::vector<report::Printer> mPrinters;
    int mLineAtPress = -1;

    QListWidget* LSTPrinters = nullptr;
    QLabel* lblHint = nullptr;
    QPushButton* BTNSetup = nullptr;
};
