// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/frmSystemProp.h"

#include "browser/ValueBox.h"
#include "core/FormRegistry.h"
#include "core/Globals.h"
#include "core/HelpKey.h"
#include "platform/text.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

int Part(const std::string& date, std::size_t position, std::size_t count) {
    return CInt(CDbl(std::string_view(date).substr(std::min(position, date.size()), count)));
}

/// A month or day past its calendar counts on into the next, as dates that are built from numbers do.
std::chrono::local_days DateOf(const std::string& date) {
    using namespace std::chrono;
    const year_month_day january{year(Part(date, 0, 4)), month(1), day(1)};
    return local_days(january + months(Part(date, 5, 2) - 1)) + days(Part(date, 8, 2) - 1);
}

/// A number that is not negative has a blank where the sign would be.
std::string AgeOf(const std::string& lastImport, const Clock& clock) {
    if (lastImport == "n/a")
        return "? days old";
    const auto today = std::chrono::floor<std::chrono::days>(clock.Now());
    const auto age = (today - DateOf(lastImport)).count();
    return (age < 0 ? "" : " ") + std::to_string(age) + " days old";
}

} // namespace

frmSystemProp::frmSystemProp(QWidget* parent, const Clock& clock) : QDialog(parent) {
    setObjectName("frmSystemProp");
    HelpTopic(*this, "system.html");
    setWindowTitle("System Properties");
    const struct {
        int index;
        const char* caption;
        std::string value;
    } lines[] = {
        {0, "Last Date Imported :", gLastImportDate},
        {1, "Copy of data is :", AgeOf(gLastImportDate, clock)},
        {3, "Number of users tracked :", std::to_string(gMachineCount)},
        {4, "Database Location :", gDatabasePath},
        {5, "INF Location :", gImportDir},
        {6, "Backup Location :", gBackupDir},
    };
    auto* const frame = new QGroupBox("System", this);
    frame->setObjectName("Frame1");
    auto* const grid = new QGridLayout(frame);
    grid->setColumnStretch(1, 1);
    for (const auto& line : lines)
        AddValue(*grid, grid->rowCount(), line.caption, QString("lblInfo(%1)").arg(line.index),
                 *new ValueBox(QString::fromStdString(line.value), frame))
            ->setObjectName(QString("Label1(%1)").arg(line.index));
    auto* const buttons = new QDialogButtonBox(this);
    auto* const btnClose = buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    btnClose->setObjectName("btnClose");
    btnClose->setDefault(true);
    connect(btnClose, &QPushButton::clicked, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addStretch();
    layout->addWidget(buttons);
    btnClose->setFocus();
    FormRegistry::Instance().Load("frmSystemProp", this, [this] { close(); });
}

frmSystemProp::~frmSystemProp() {
    FormRegistry::Instance().Unloaded(this);
}
