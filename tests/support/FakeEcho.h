// SPDX-License-Identifier: GPL-3.0-or-later
// Hosts that answer as a test sets them, and a note of what they were asked. Nothing is sent.
#pragma once

#include "platform/echo.h"
#include "platform/errors.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class FakeEchoProbes final : public EchoProbes {
public:
    struct Reply {
        std::int32_t milliseconds = 0;
        /// How often the reply is asked for in vain.
        int rounds = 0;
    };

    std::unique_ptr<EchoProbe> Create() override { return std::make_unique<Probe>(*this); }

    /// Hosts without an entry are silent.
    std::map<std::string, Reply> replies;
    /// Raised by every request.
    std::optional<RunTimeError> failure;
    /// Runs at each request, with its host.
    std::function<void(const std::string& host)> onSend;

    /// "payload, time-out > host" of each request, in order.
    std::vector<std::string> sent;
    /// Probes that were made and not yet released.
    int alive = 0;

private:
    class Probe final : public EchoProbe {
    public:
        explicit Probe(FakeEchoProbes& all) : mAll(all) { ++mAll.alive; }
        ~Probe() override { --mAll.alive; }
        Probe(const Probe&) = delete;
        Probe& operator=(const Probe&) = delete;

        std::int32_t RoundTripTime() const override { return mAll.replies.at(mHost).milliseconds; }
        void TimeOut(int milliseconds) override { mTimeOut = milliseconds; }
        void Data(const std::string& payload) override { mData = payload; }
        void Host(const std::string& address) override { mHost = address; }
        void Send() override {
            mAll.sent.push_back(mData + ", " + std::to_string(mTimeOut) + " > " + mHost);
            if (mAll.failure)
                throw RunTimeError(*mAll.failure);
            if (mAll.onSend)
                mAll.onSend(mHost);
        }
        bool Done() override {
            const auto reply = mAll.replies.find(mHost);
            return reply != mAll.replies.end() && mAsked++ >= reply->second.rounds;
        }

    private:
        FakeEchoProbes& mAll;
        int mTimeOut = 0;
        std::string mData;
        std::string mHost;
        int mAsked = 0;
    };
};
