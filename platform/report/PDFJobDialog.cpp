// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PDFJobDialog.h"

#include "platform/files.h"
#include "platform/prompts.h"
#include "platform/qtprompts.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace report {

namespace {

template <typename Control>
Control* Named(Control* control, const char* name, const QString& accessibleName) {
    control->setObjectName(QLatin1String(name));
    control->setAccessibleName(accessibleName);
    return control;
}

} // namespace

PDFJobDialog::PDFJobDialog(Prompts& prompts, int pages, QWidget* owner)
    : QDialog(owner),
      mPrompts(prompts),
      mFile(Named(new QLineEdit(this), "txtFile", QStringLiteral("PDF file"))),
      mAll(
          Named(new QRadioButton(QStringLiteral("&All pages"), this), "optAll", QStringLiteral("All pages"))),
      mRange(Named(new QRadioButton(QStringLiteral("&Pages from"), this), "optRange",
                   QStringLiteral("Pages from"))),
      mFirst(Named(new QSpinBox(this), "spnFirst", QStringLiteral("First page"))),
      mLast(Named(new QSpinBox(this), "spnLast", QStringLiteral("Last page"))) {
    setObjectName(QStringLiteral("PDFJobDialog"));
    setWindowTitle(QStringLiteral("Print"));

    auto* const note = new QLabel(
        QStringLiteral("No printer is installed on this computer. The pages are written to a PDF file."),
        this);
    note->setWordWrap(true);

    constexpr int kShownCharacters = 40;
    mFile->setMinimumWidth(fontMetrics().averageCharWidth() * kShownCharacters);
    auto* const fileLabel = new QLabel(QStringLiteral("&File:"), this);
    fileLabel->setBuddy(mFile);
    auto* const browse = Named(new QPushButton(QStringLiteral("&Browse\u2026"), this), "btnBrowse",
                               QStringLiteral("Choose the PDF file"));
    auto* const fileRow = new QHBoxLayout;
    fileRow->addWidget(fileLabel);
    fileRow->addWidget(mFile, 1);
    fileRow->addWidget(browse);

    for (QSpinBox* const box : {mFirst, mLast}) {
        box->setRange(1, std::max(pages, 1));
        box->setGroupSeparatorShown(true);
        connect(box, &QSpinBox::valueChanged, mRange, [this] { mRange->setChecked(true); });
    }
    mLast->setValue(pages);
    mAll->setChecked(true);
    auto* const range = new QGroupBox(QStringLiteral("Range"), this);
    auto* const inRange = new QVBoxLayout(range);
    auto* const rangeRow = new QHBoxLayout;
    auto* const to = new QLabel(QStringLiteral("&to"), this);
    to->setBuddy(mLast);
    rangeRow->addWidget(mRange);
    rangeRow->addWidget(mFirst);
    rangeRow->addWidget(to);
    rangeRow->addWidget(mLast);
    rangeRow->addStretch();
    inRange->addWidget(mAll);
    inRange->addLayout(rangeRow);

    auto* const buttons = new QDialogButtonBox(this);
    mOK = Named(buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole), "cmdOK",
                QStringLiteral("OK"));
    Named(buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole), "cmdCancel",
          QStringLiteral("Cancel"));

    auto* const column = new QVBoxLayout(this);
    column->addWidget(note);
    column->addLayout(fileRow);
    column->addWidget(range);
    column->addStretch();
    column->addWidget(buttons);

    setTabOrder(mFile, browse);
    setTabOrder(browse, mAll);
    mOK->setDefault(true);
    connect(browse, &QPushButton::clicked, this, &PDFJobDialog::Browse);
    connect(mFile, &QLineEdit::textChanged, this, &PDFJobDialog::EnableOK);
    connect(buttons, &QDialogButtonBox::accepted, this, &PDFJobDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &PDFJobDialog::reject);
    EnableOK();
}

void PDFJobDialog::Browse() {
    const std::string path = mPrompts.SaveFile({"PDF (*.pdf)|*.pdf", "Print to File", "pdf", {}});
    if (!path.empty())
        mFile->setText(QString::fromStdString(path));
}

void PDFJobDialog::EnableOK() {
    mOK->setEnabled(!mFile->text().trimmed().isEmpty());
}

void PDFJobDialog::accept() {
    const std::string path = WithDefaultExtension(mFile->text().trimmed().toStdString(), "pdf");
    mFile->setText(QString::fromStdString(path));
    if (MayReplace(mPrompts, path))
        QDialog::accept();
}

bool PDFJobDialog::Ask(PrintJob& job) {
    const QPointer<PDFJobDialog> alive(this);
    if (exec() != QDialog::Accepted || alive.isNull())
        return false;
    job.printerName.clear();
    job.pdfPath = mFile->text().toStdString();
    job.firstPage = mRange->isChecked() ? std::min(mFirst->value(), mLast->value()) : 1;
    job.lastPage = mRange->isChecked() ? std::max(mFirst->value(), mLast->value()) : 0;
    job.copies = 1;
    return true;
}

bool MayReplace(Prompts& prompts, const std::string& path) {
    constexpr int kStyle = MsgBoxStyle::kYesNo + MsgBoxStyle::kCritical + MsgBoxStyle::kDefaultButton2;
    return !FileExists(path) || prompts.MsgBox("Replace the file " + FileNameOf(path) + "?", kStyle,
                                               "Replace?") == MsgBoxAnswer::Yes;
}

} // namespace report
