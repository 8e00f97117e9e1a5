// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmCompiling.h"

#include "core/FormRegistry.h"
#include "platform/application.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QFrame>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

frmCompiling::frmCompiling() : QWidget(nullptr, Qt::Dialog | Qt::WindowStaysOnTopHint) {
    const QString caption = QStringLiteral("Compiling Information... Please wait");
    setObjectName(QStringLiteral("frmCompiling"));
    setWindowTitle(caption);
    setAccessibleName(caption);
    // The keyboard stays with the window that asked for the work.
    setAttribute(Qt::WA_ShowWithoutActivating);

    auto* const frame = new QFrame(this);
    frame->setObjectName(QStringLiteral("Frame1"));
    frame->setAccessibleName(caption);
    frame->setFrameShape(QFrame::StyledPanel);
    auto* const label = new QLabel(caption, frame);
    label->setObjectName(QStringLiteral("Label2"));
    label->setAccessibleName(caption);
    label->setAlignment(Qt::AlignCenter);

    // The window manager writes the title between its buttons.
    constexpr int kButtons = 6;
    QFont title = QFontDatabase::systemFont(QFontDatabase::TitleFont);
    title.setBold(true);
    label->setMinimumWidth(QFontMetrics(title).horizontalAdvance(caption) +
                           kButtons * style()->pixelMetric(QStyle::PM_TitleBarHeight));

    auto* const inFrame = new QVBoxLayout(frame);
    inFrame->addWidget(label);
    auto* const inWindow = new QVBoxLayout(this);
    inWindow->addWidget(frame);
    inWindow->setSizeConstraint(QLayout::SetFixedSize);
    FormRegistry::Instance().Load("frmCompiling", this, [this] { Unload(); });
}

frmCompiling::~frmCompiling() {
    FormRegistry::Instance().Unloaded(this);
}

void frmCompiling::ShowAndPaint() {
    show();
    Application::LetAppear(*this);
}

void frmCompiling::Unload() {
    hide();
    FormRegistry::Instance().Unloaded(this);
    deleteLater();
}

void frmCompiling::closeEvent(QCloseEvent* event) {
    event->accept();
    Unload();
}
