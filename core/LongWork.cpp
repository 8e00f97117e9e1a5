// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/LongWork.h"

#include "core/MainForm.h"
#include "platform/Aside.h"
#include "platform/application.h"

#include <algorithm>

namespace {

int gRunning = 0;
/// Reading the clock at each row would cost more than some rows do.
constexpr unsigned kStepsPerLook = 64;
constexpr int kBar = 1000;

} // namespace

LongWork::LongWork(MainForm& form) : mForm(form) {
    if (gRunning++ == 0)
        mForm.Pointer(MousePointer::Hourglass);
}

LongWork::~LongWork() {
    if (--gRunning == 0)
        mForm.Pointer(MousePointer::Default);
}

bool LongWork::Step() {
    return ++mSteps % kStepsPerLook == 0 && Look();
}

bool LongWork::Look() {
    if (!mPace.IsDue())
        return false;
    Application::LetEventsThrough();
    return true;
}

void LongWork::Pause(const std::function<void()>& ask) {
    mForm.Pointer(MousePointer::Default);
    ask();
    mForm.Pointer(MousePointer::Hourglass);
}

void LongWork::Aside(const std::function<void()>& call) {
    RunAside(call, LetPaint);
}

void LongWork::LetPaint() {
    Application::LetEventsThrough();
}

bool LongWork::IsRunning() {
    return gRunning > 0 || RunsAside();
}

ShownWork::~ShownWork() {
    mForm.ProgressValue(0);
}

void ShownWork::Step(double done, double all) {
    if (mWork.Step())
        Show(done, all);
}

void ShownWork::Look(double done, double all) {
    if (mWork.Look())
        Show(done, all);
}

void ShownWork::Show(double done, double all) {
    if (!(all > 0))
        return;
    mForm.ProgressMaximum(kBar);
    mForm.ProgressValue(static_cast<int>(std::clamp(done / all, 0.0, 1.0) * kBar));
}
