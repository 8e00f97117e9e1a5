// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/echo.h"

#include "platform/Descriptor.h"
#include "platform/errors.h"

#include <QSocketNotifier>

#include <arpa/inet.h>
#include <linux/icmp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <optional>
#include <string_view>

namespace {

/// Packets looked at before the event loop gets its turn: a host may send others without end.
constexpr int kPacketsAtOnce = 64;
constexpr std::size_t kLongestPacket = 1500;

std::optional<in_addr> NumericAddress(const std::string& text) {
    in_addr address{};
    const bool isWhole = text.find('\0') == std::string::npos;
    if (!isWhole || inet_pton(AF_INET, text.c_str(), &address) != 1)
        return std::nullopt;
    return address;
}

/// The Internet checksum: the one's complement of the one's complement sum of the 16-bit words (RFC 1071).
std::uint16_t Checksum(std::string_view bytes) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        std::array<char, 2> pair = {bytes[i], i + 1 < bytes.size() ? bytes[i + 1] : '\0'};
        std::uint16_t word = 0;
        std::memcpy(&word, pair.data(), sizeof(word));
        sum += word;
    }
    while (sum >> 16U != 0)
        sum = (sum & 0xFFFFU) + (sum >> 16U);
    return static_cast<std::uint16_t>(~sum);
}

/// When the kernel took the packet in, which is before the event loop could look at it.
std::chrono::system_clock::time_point Arrival(msghdr& message) {
    for (cmsghdr* part = CMSG_FIRSTHDR(&message); part != nullptr; part = CMSG_NXTHDR(&message, part)) {
        if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_TIMESTAMPNS)
            continue;
        timespec stamp{};
        std::memcpy(&stamp, CMSG_DATA(part), sizeof(stamp));
        const auto sinceEpoch = std::chrono::seconds(stamp.tv_sec) + std::chrono::nanoseconds(stamp.tv_nsec);
        return std::chrono::system_clock::time_point(sinceEpoch);
    }
    return std::chrono::system_clock::now();
}

/// A socket for echo requests; error 70 where the system allows neither kind.
class EchoSocket {
public:
    EchoSocket() : mDescriptor(Opened(), "echo") {}

    int Number() const { return mDescriptor.Number(); }
    /// A raw socket hears all messages to this system, its own requests to itself among them, each behind its
    /// IP header. The other kind hears the replies to its own requests alone.
    bool IsRaw() const { return mIsRaw; }

private:
    int Opened() {
        constexpr int kFlags = SOCK_NONBLOCK | SOCK_CLOEXEC;
        int number = socket(AF_INET, SOCK_DGRAM | kFlags, IPPROTO_ICMP);
        mIsRaw = number < 0;
        if (mIsRaw)
            number = socket(AF_INET, SOCK_RAW | kFlags, IPPROTO_ICMP);
        if (number < 0)
            RaiseSystem(errno, "echo requests");
        return number;
    }

    bool mIsRaw = false;
    Descriptor mDescriptor;
};

class SystemEchoProbe final : public EchoProbe {
public:
    std::int32_t RoundTripTime() const override { return mRoundTripTime.value_or(0); }
    void TimeOut(int milliseconds) override { mTimeOut = milliseconds; }
    void Data(const std::string& payload) override { mData = payload; }
    void Host(const std::string& address) override { mHost = NumericAddress(address); }
    void Send() override;
    bool Done() override {
        Receive();
        return mRoundTripTime.has_value();
    }

private:
    bool Connect();
    std::string Request() const;
    void Receive();
    bool IsReply(std::string_view packet) const;

    int mTimeOut = 0;
    std::string mData;
    std::optional<in_addr> mHost;
    std::optional<EchoSocket> mSocket;
    std::unique_ptr<QSocketNotifier> mWaker;
    std::uint16_t mSequence = 0;
    std::chrono::system_clock::time_point mSent;
    std::optional<std::int32_t> mRoundTripTime;
};

void SystemEchoProbe::Send() {
    static std::uint16_t lastSequence = 0;
    mSocket.emplace();
    if (!mHost || !Connect())
        return;
    mSequence = ++lastSequence;
    const std::string request = Request();
    mWaker = std::make_unique<QSocketNotifier>(mSocket->Number(), QSocketNotifier::Read);
    QObject::connect(mWaker.get(), &QSocketNotifier::activated, [this] { Receive(); });
    mSent = std::chrono::system_clock::now();
    // What the system refuses to send to this host is a request without a reply.
    static_cast<void>(send(mSocket->Number(), request.data(), request.size(), 0));
}

/// Leaves what other hosts send to the kernel.
bool SystemEchoProbe::Connect() {
    constexpr int kOn = 1;
    setsockopt(mSocket->Number(), SOL_SOCKET, SO_TIMESTAMPNS, &kOn, sizeof(kOn));
    sockaddr_in peer{};
    peer.sin_family = AF_INET;
    peer.sin_addr = *mHost;
    return connect(mSocket->Number(), reinterpret_cast<const sockaddr*>(&peer), sizeof(peer)) == 0;
}

std::string SystemEchoProbe::Request() const {
    icmphdr header{};
    header.type = ICMP_ECHO;
    // The kernel puts an identifier of its own into requests that are not raw.
    header.un.echo.id = static_cast<std::uint16_t>(getpid());
    header.un.echo.sequence = mSequence;
    std::string packet(sizeof(header), '\0');
    std::memcpy(packet.data(), &header, sizeof(header));
    packet += mData;
    header.checksum = Checksum(packet);
    std::memcpy(packet.data(), &header, sizeof(header));
    return packet;
}

void SystemEchoProbe::Receive() {
    std::array<char, kLongestPacket> bytes{};
    alignas(cmsghdr) std::array<char, 256> control{};
    for (int packets = 0; mWaker && !mRoundTripTime && packets < kPacketsAtOnce; ++packets) {
        iovec buffer{bytes.data(), bytes.size()};
        sockaddr_in source{};
        msghdr message{};
        message.msg_name = &source;
        message.msg_namelen = sizeof(source);
        message.msg_iov = &buffer;
        message.msg_iovlen = 1;
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        const ssize_t size = recvmsg(mSocket->Number(), &message, 0);
        if (size < 0)
            return;
        if (source.sin_addr.s_addr != mHost->s_addr ||
            !IsReply({bytes.data(), static_cast<std::size_t>(size)}))
            continue;
        const auto elapsed = std::chrono::floor<std::chrono::milliseconds>(Arrival(message) - mSent).count();
        if (elapsed <= mTimeOut)
            // The system's time may have been set back meanwhile.
            mRoundTripTime = elapsed < 0 ? 0 : static_cast<std::int32_t>(elapsed);
    }
}

bool SystemEchoProbe::IsReply(std::string_view packet) const {
    if (mSocket->IsRaw()) {
        if (packet.empty())
            return false;
        // The low half of the first byte counts the header's words of four bytes (RFC 791).
        const std::size_t ipHeader = (static_cast<unsigned char>(packet[0]) & 0x0FU) * std::size_t{4};
        if (packet.size() < ipHeader)
            return false;
        packet.remove_prefix(ipHeader);
    }
    icmphdr header{};
    if (packet.size() < sizeof(header))
        return false;
    std::memcpy(&header, packet.data(), sizeof(header));
    const bool isOwn = !mSocket->IsRaw() || header.un.echo.id == static_cast<std::uint16_t>(getpid());
    return header.type == ICMP_ECHOREPLY && header.code == 0 && isOwn &&
           header.un.echo.sequence == mSequence && packet.substr(sizeof(header)) == mData;
}

} // namespace

std::unique_ptr<EchoProbe> SystemEchoProbes::Create() {
    return std::make_unique<SystemEchoProbe>();
}
