// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/PageSetupDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPageSize>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace report {

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kPointsPerMillimetre = kPointsPerInch / 25.4;
/// What must be left between the margins for anything to be read, in points.
constexpr double kLeastArea = 144;
constexpr std::array kPapers = {QPageSize::A3,     QPageSize::A4,    QPageSize::A5,
                                QPageSize::Letter, QPageSize::Legal, QPageSize::Tabloid};

bool IsInches() {
    return QLocale().measurementSystem() == QLocale::ImperialUSSystem;
}

QSizeF PointsOf(QPageSize::PageSizeId paper) {
    return QPageSize(paper).size(QPageSize::Point);
}

/// Whether `format` is on `paper`, whichever way it is held.
bool IsOn(const PageFormat& format, QPageSize::PageSizeId paper) {
    constexpr double kTolerance = 2;
    const QSizeF size = PointsOf(paper);
    return std::abs(std::min(format.width, format.height) - size.width()) < kTolerance &&
           std::abs(std::max(format.width, format.height) - size.height()) < kTolerance;
}

} // namespace

PageSetupDialog::PageSetupDialog(const PageFormat& format, QWidget* owner)
    : QDialog(owner),
      mPaper(new QComboBox(this)),
      mPortrait(new QRadioButton(QStringLiteral("P&ortrait"), this)),
      mLandscape(new QRadioButton(QStringLiteral("&Landscape"), this)),
      mNote(new QLabel(QStringLiteral("The margins leave no room for the report."), this)),
      mInitial(format),
      mUnit(IsInches() ? kPointsPerInch : kPointsPerMillimetre) {
    setObjectName(QStringLiteral("PageSetupDialog"));
    setWindowTitle(QStringLiteral("Page Set-up"));

    mPaper->setObjectName(QStringLiteral("cmbPaper"));
    mPaper->setAccessibleName(QStringLiteral("Paper"));
    for (const QPageSize::PageSizeId paper : kPapers) {
        mPaper->addItem(QPageSize::name(paper), static_cast<int>(paper));
        if (IsOn(format, paper))
            mPaper->setCurrentIndex(mPaper->count() - 1);
    }
    if (!IsOn(format, static_cast<QPageSize::PageSizeId>(mPaper->currentData().toInt()))) {
        mPaper->addItem(QStringLiteral("As it is"), -1);
        mPaper->setCurrentIndex(mPaper->count() - 1);
    }
    mInitialPaper = mPaper->currentIndex();
    mPortrait->setObjectName(QStringLiteral("optPortrait"));
    mLandscape->setObjectName(QStringLiteral("optLandscape"));
    (format.width > format.height ? mLandscape : mPortrait)->setChecked(true);

    auto* const margins = new QGroupBox(QStringLiteral("Margins"), this);
    auto* const grid = new QGridLayout(margins);
    const std::array<std::pair<const char*, double>, 4> sides = {{{"&Left", format.leftMargin},
                                                                  {"&Top", format.topMargin},
                                                                  {"&Right", format.rightMargin},
                                                                  {"&Bottom", format.bottomMargin}}};
    for (std::size_t i = 0; i < sides.size(); ++i) {
        auto* const box = new QDoubleSpinBox(margins);
        const QString caption = QString::fromLatin1(sides.at(i).first);
        const QString name = QString(caption).remove(QLatin1Char('&'));
        box->setObjectName(QStringLiteral("spn") + name);
        box->setAccessibleName(name + QStringLiteral(" margin"));
        box->setDecimals(IsInches() ? 2 : 1);
        box->setSingleStep(IsInches() ? 0.1 : 1);
        box->setRange(0, kPointsPerInch * 10 / mUnit);
        box->setSuffix(IsInches() ? QStringLiteral(" in") : QStringLiteral(" mm"));
        box->setValue(sides.at(i).second / mUnit);
        mInitialMargins.at(i) = box->value();
        auto* const label = new QLabel(caption + QLatin1Char(':'), margins);
        label->setBuddy(box);
        const int row = static_cast<int>(i % 2);
        const int column = static_cast<int>(i / 2) * 2;
        grid->addWidget(label, row, column);
        grid->addWidget(box, row, column + 1);
        connect(box, &QDoubleSpinBox::valueChanged, this, &PageSetupDialog::Check);
        mMargins.at(i) = box;
    }

    auto* const buttons = new QDialogButtonBox(this);
    mOK = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    mOK->setObjectName(QStringLiteral("cmdOK"));
    mOK->setDefault(true);
    buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("cmdCancel"));
    mNote->setWordWrap(true);

    auto* const form = new QFormLayout;
    form->addRow(QStringLiteral("&Paper:"), mPaper);
    form->addRow(QStringLiteral("Orientation:"), mPortrait);
    form->addRow(QString(), mLandscape);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(margins);
    column->addWidget(mNote);
    column->addStretch();
    column->addWidget(buttons);

    connect(mPaper, &QComboBox::currentIndexChanged, this, &PageSetupDialog::Check);
    connect(mLandscape, &QRadioButton::toggled, this, &PageSetupDialog::Check);
    connect(buttons, &QDialogButtonBox::accepted, this, &PageSetupDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &PageSetupDialog::reject);
    Check();
}

void PageSetupDialog::Check() {
    const PageFormat format = Format();
    const bool isUsable = format.width - format.leftMargin - format.rightMargin >= kLeastArea &&
                          format.height - format.topMargin - format.bottomMargin >= kLeastArea;
    mOK->setEnabled(isUsable);
    mNote->setVisible(!isUsable);
}

PageFormat PageSetupDialog::Format() const {
    PageFormat format = mInitial;
    const int paper = mPaper->currentData().toInt();
    const bool isSamePaper = paper < 0 || mPaper->currentIndex() == mInitialPaper;
    const QSizeF size = isSamePaper ? QSizeF(std::min(mInitial.width, mInitial.height),
                                             std::max(mInitial.width, mInitial.height))
                                    : PointsOf(static_cast<QPageSize::PageSizeId>(paper));
    format.width = mLandscape->isChecked() ? size.height() : size.width();
    format.height = mLandscape->isChecked() ? size.width() : size.height();
    const std::array<double*, 4> sides = {&format.leftMargin, &format.topMargin, &format.rightMargin,
                                          &format.bottomMargin};
    for (std::size_t i = 0; i < sides.size(); ++i)
        if (const double value = mMargins.at(i)->value(); value != mInitialMargins.at(i))
            *sides.at(i) = value * mUnit;
    return format;
}

PageFormat UsualFormat(bool isLandscape) {
    const QSizeF size = PointsOf(IsInches() ? QPageSize::Letter : QPageSize::A4);
    PageFormat format;
    format.width = isLandscape ? size.height() : size.width();
    format.height = isLandscape ? size.width() : size.height();
    return format;
}

} // namespace report
