// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/LongWork.h"

#include "core/MainForm.h"

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
    return ++mSteps % kStepsPerLook == 0 && Look();
}

bool LongWork::Look() {
    if (mSincePump.elapsed() < kPumpInterval)
        return false;
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    mSincePump.restart();
    return true;
}

bool LongWork::IsRunning() {
    return gRunning > 0;
}

ShownWork::~ShownWork() {
    mForm.ProgressValue(0);
}

void ShownWork::Step(std::size_t done, std::size_t all) {
    if (mWork.Step())
        Show(done, all);
}

void ShownWork::Look(std::size_t done, std::size_t all) {
    if (mWork.Look())
        Show(done, all);
}

void ShownWork::Show(std::size_t done, std::size_t all) {
    mForm.ProgressMaximum(static_cast<int>(all));
    mForm.ProgressValue(static_cast<int>(done));
}
