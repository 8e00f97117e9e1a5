// SPDX-License-Identifier: GPL-3.0-or-later
// Echo requests (ping) to one IPv4 address each. A probe serves one request: who needs it sets data, time-out
// and host, sends, and asks Done until it is true or the wait is over. Nothing blocks, and while the event
// loop runs a reply wakes it.
// An address is four numbers. Nothing is ever resolved: a text that is no address gets no reply, since client
// PCs write these texts and must not choose the names that the console asks for.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

class EchoProbe {
public:
    virtual ~EchoProbe() = default;

    /// Milliseconds from the request to its reply; 0 before there is one.
    virtual std::int32_t RoundTripTime() const = 0;
    /// Milliseconds after which a reply comes too late to count.
    virtual void TimeOut(int milliseconds) = 0;
    /// True once a reply has come.
    virtual bool Done() = 0;
    /// The payload of the request, which its reply must bring back.
    virtual void Data(const std::string& payload) = 0;
    virtual void Host(const std::string& address) = 0;
    /// Sends the request and returns at once. One that can not go out, for whatever is wrong with its host,
    /// is one without a reply. Raises error 70 where the system lets this program send no request at all.
    virtual void Send() = 0;
};

/// Makes a probe for each request.
class EchoProbes {
public:
    virtual ~EchoProbes() = default;
    virtual std::unique_ptr<EchoProbe> Create() = 0;
};

/// Over the sockets that systems offer to unprivileged programs for this, or else over raw ones.
class SystemEchoProbes final : public EchoProbes {
public:
    std::unique_ptr<EchoProbe> Create() override;
};
