// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmSplash.h"

#include "core/Admin.h"
#include "core/FormRegistry.h"
#include "platform/application.h"

#include <QCloseEvent>
#include <QImage>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QRegion>
#include <QScreen>
#include <QSvgRenderer>

static void LoadPictures() {
    Q_INIT_RESOURCE(pictures);
}

namespace {

constexpr int kInterval = 5000; // milliseconds
constexpr QRgb kOutside = qRgb(0, 0, 255);
constexpr QRgb kTextColour = qRgb(0x17, 0x36, 0x5f);
constexpr int kTextHeight = 13;
// Where the picture leaves room for the labels, in its own pixels.
constexpr QRect kVersionPlace(250, 190, 145, 20);
constexpr int kStatusTop = 215;
constexpr int kStatusHeight = 25;

QImage Rendered(QSvgRenderer& picture, double scale) {
    const QSize size = picture.defaultSize() * scale;
    QImage image(size, QImage::Format_RGB32);
    image.fill(kOutside);
    QPainter painter(&image);
    picture.render(&painter);
    return image;
}

/// Everything that is not pure blue. Events are let through once a column.
QRegion ShapeOf(const QImage& picture) {
    QRegion shape;
    for (int x = 0; x < picture.width(); ++x) {
        int top = 0;
        for (int y = 0; y <= picture.height(); ++y) {
            if (y < picture.height() && picture.pixel(x, y) != kOutside)
                continue;
            if (y > top)
                shape |= QRect(x, top, 1, y - top);
            top = y + 1;
        }
        Application::LetEventsThrough();
    }
    return shape;
}

QLabel* MakeLabel(QWidget* form, const char* name, const QRect& place, Qt::Alignment alignment) {
    auto* const label = new QLabel(form);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setGeometry(place);
    label->setAlignment(alignment | Qt::AlignVCenter);
    // The picture is light in every desktop theme and of a fixed size, and so is what stands on it.
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, kTextColour);
    label->setPalette(palette);
    QFont font = label->font();
    font.setPixelSize(kTextHeight);
    label->setFont(font);
    return label;
}

} // namespace

frmSplash::frmSplash()
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
    LoadPictures();
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QStringLiteral("Velmora"));
    setAccessibleName(QStringLiteral("MOVA Professional Administration Module"));

    QSvgRenderer picture(QStringLiteral(":/pictures/splash.svg"));
    setFixedSize(picture.defaultSize());
    move(screen()->geometry().center() - rect().center());
    mPicture = QPixmap::fromImage(Rendered(picture, devicePixelRatioF()));
    mPicture.setDevicePixelRatio(devicePixelRatioF());
    setMask(ShapeOf(Rendered(picture, 1)));

    QLabel* const version = MakeLabel(this, "lblVersion", kVersionPlace, Qt::AlignRight);
    version->setText(QString::fromStdString(Admin::LongVersionText()));
    version->setAccessibleName(QStringLiteral("Version"));
    mStatus = MakeLabel(this, "lblStatus", QRect(0, kStatusTop, width(), kStatusHeight), Qt::AlignHCenter);
    mStatus->setAccessibleName(QStringLiteral("Status"));

    mTimer.setObjectName(QStringLiteral("TMRTerminate"));
    mTimer.setInterval(kInterval);
    connect(&mTimer, &QTimer::timeout, this, [this] {
        TimerEnabled(false);
        Unload();
    });
    FormRegistry::Instance().Load("frmSplash", this, [this] { Unload(); });
}

frmSplash::~frmSplash() {
    FormRegistry::Instance().Unloaded(this);
}

frmSplash* frmSplash::Loaded() {
    return qobject_cast<frmSplash*>(FormRegistry::Instance().Find("frmSplash"));
}

void frmSplash::Status(const std::string& text) {
    mStatus->setText(QString::fromStdString(text));
    mStatus->repaint();
}

void frmSplash::TimerEnabled(bool isEnabled) {
    if (isEnabled)
        mTimer.start();
    else
        mTimer.stop();
}

void frmSplash::Unload() {
    mTimer.stop();
    hide();
    FormRegistry::Instance().Unloaded(this);
    deleteLater();
}

void frmSplash::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).drawPixmap(0, 0, mPicture);
}

void frmSplash::mouseReleaseEvent(QMouseEvent* event) {
    if (rect().contains(event->pos()))
        Unload();
}

void frmSplash::closeEvent(QCloseEvent* event) {
    event->accept();
    Unload();
}
