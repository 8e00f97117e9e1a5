// SPDX-License-Identifier: GPL-3.0-or-later
// One echo to one address, as both commands do it: the request, and a wait of a tenth of a second at most
// with the event loop running.
// A window may be closed, and destroyed, by an event within the wait: who waits looks before going on.
#pragma once

#include <QEventLoop>

#include <cstdint>
#include <optional>
#include <string>

class EchoProbes;

struct EchoResult {
    /// Round-trip time of the reply, milliseconds; nothing where none came.
    std::optional<std::int32_t> milliseconds;
    /// How often the reply was asked for before the last time.
    int rounds = 0;
    /// The system lets this program send no echo requests, to no address.
    bool isForbidden = false;
};

/// What a status panel tells where the system forbids echo requests.
inline constexpr const char* kEchoForbidden = "This system forbids pings: press F1 for help";

/// Whether the text begins with a number other than 0. That is all: "12abc" passes, and gets no reply.
bool IsPingable(const std::string& address);

/// `events` are those that run during the wait.
EchoResult SendEcho(EchoProbes& probes, const std::string& address, QEventLoop::ProcessEventsFlags events);
