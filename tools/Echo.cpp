// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/Echo.h"

#include "platform/echo.h"
#include "platform/errors.h"
#include "platform/text.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace {

constexpr const char* kPayload = "ZUL TEST PING";
/// Both in milliseconds.
constexpr int kTimeOut = 100;
constexpr int kRound = 10;

} // namespace

bool IsPingable(const std::string& address) {
    try {
        return !address.empty() && Val(address) != 0;
    } catch (const RunTimeError&) {
        // Too large for a number: no address, but a text of one machine's that must not end a sweep.
        return true;
    }
}

EchoResult SendEcho(EchoProbes& probes, const std::string& address, QEventLoop::ProcessEventsFlags events) {
    EchoResult result;
    const std::unique_ptr<EchoProbe> probe = probes.Create();
    probe->Data(kPayload);
    probe->TimeOut(kTimeOut);
    probe->Host(address);
    try {
        probe->Send();
    } catch (const RunTimeError& failure) {
        if (failure.number != Errors::kPermissionDenied)
            throw;
        result.isForbidden = true;
        return result;
    }
    // A reply ends a round at once; the timer ends one without any event.
    QTimer round;
    round.start(kRound);
    for (const QDeadlineTimer end(kTimeOut); !probe->Done() && !end.hasExpired(); ++result.rounds)
        QCoreApplication::processEvents(events | QEventLoop::WaitForMoreEvents);
    if (probe->Done())
        result.milliseconds = probe->RoundTripTime();
    return result;
}
