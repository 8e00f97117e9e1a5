// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ImportProgress.h"

#include "core/frmSplash.h"
#include "platform/application.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <QWidget>

#include <cmath>

namespace {

/// Twenty pictures a second look like motion and cost nothing.
constexpr qint64 kMillisecondsBetweenPictures = 50;

constexpr int kWindowWidth = 380;

} // namespace

ImportProgress::ImportProgress() {
    mSinceShown.start();
}

ImportProgress::~ImportProgress() {
    if (frmSplash* splash = frmSplash::Loaded())
        splash->Status("Please Wait");
}

void ImportProgress::DoneSoFarUsers(const std::string& name, double percent) {
    mName = name;
    mPercent = percent;
    Show();
}

void ImportProgress::DoneSoFarUser(const std::string& /*name*/, double /*percent*/) {
    Show();
}

void ImportProgress::StillWorking() {
    Show();
}

void ImportProgress::Show() {
    if (mSinceShown.elapsed() < kMillisecondsBetweenPictures)
        return;
    mSinceShown.restart();
    if (frmSplash* splash = frmSplash::Loaded())
        splash->Status("Importing " + mName + " ... " +
                       std::to_string(static_cast<int>(std::floor(100 * mPercent))) + " %");
    else
        ShowInWindow();
    Application::LetEventsThrough();
}

void ImportProgress::ShowInWindow() {
    if (!mWindow)
        MakeWindow();
    mLabel->setText(QStringLiteral("Importing %1 ...").arg(QString::fromStdString(mName)));
    mBar->setValue(static_cast<int>(std::floor(100 * mPercent)));
}

void ImportProgress::MakeWindow() {
    mWindow = std::make_unique<QWidget>(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    mWindow->setObjectName("importProgress");
    mWindow->setWindowTitle("Velmora");
    mLabel = new QLabel;
    mLabel->setTextFormat(Qt::PlainText);
    mBar = new QProgressBar;
    mBar->setRange(0, 100);
    mBar->setAccessibleName("Progress of the import");
    auto* layout = new QVBoxLayout(mWindow.get());
    layout->addWidget(mLabel);
    layout->addWidget(mBar);
    mWindow->setFixedWidth(kWindowWidth);
    mWindow->show();
}
