// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/LongWork.h"

#include <QApplication>

namespace {

int gRunning = 0;
constexpr qint64 kPumpInterval = 50;
/// Reading the clock at each row would cost more than some rows do.
constexpr unsigned kStepsPerLook = 64;

} // namespace

LongWork::LongWork() {
    ++gRunning;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    mSincePump.start();
}

LongWork::~LongWork() {
    QApplication::restoreOverrideCursor();
    --gRunning;
}

bool LongWork::Step() {
    if (++mSteps % kStepsPerLook != 0 || mSincePump.elapsed() < kPumpInterval)
        return false;
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    mSincePump.restart();
    return true;
}

bool LongWork::IsRunning() {
    return gRunning > 0;
}
