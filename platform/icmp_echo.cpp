// Errors that routers or the own system report reach both kinds of socket through the socket's
// error queue, together with the beginning of the request that they are about.

#include "TAVIX20/platform/icmp_echo.h"

#include "TAVIX20/platform/icmp_message.h"
#include "TAVIX20/platform/last_error.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <QRandomGenerator>

#include <arpa/inet.h>
#include <linux/errqueue.h>
#include <linux/icmp.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tavix {

namespace {

using Clock = std::chrono::steady_clock;

bool SetOption(int socket, int level, int name, int value) {
    return setsockopt(socket, level, name, &value, sizeof value) == 0;
}

/// A socket, or -1 with errno set.
int OpenSocket(int type) {
    return socket(AF_INET, type | SOCK_CLOEXEC | SOCK_NONBLOCK, IPPROTO_ICMP);
}

/// The last error for an errno that kept the service from opening.
DWORD ErrorOfOpen(int error) {
    const bool isMissing =
        error == EAFNOSUPPORT || error == EPROTONOSUPPORT || error == ESOCKTNOSUPPORT;
    return isMissing ? ERROR_FILE_NOT_FOUND : ErrorFromErrno(error);
}

/// Waits until the socket has a message or an error. False when the time is over.
bool WaitForAnswer(int socket, Clock::time_point deadline) {
    for (;;) {
        const auto left = std::chrono::nanoseconds(deadline - Clock::now());
        const auto wait = left.count() > 0 ? left : std::chrono::nanoseconds(0);
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(wait);
        const timespec time{seconds.count(), (wait - seconds).count()};
        pollfd waiting{socket, POLLIN, 0};
        const int ready = ppoll(&waiting, 1, &time, nullptr);
        if (ready > 0)
            return true;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

/// The status of the next entry of the error queue, when that is about the request of identity.
std::optional<DWORD> ReadError(int socket, EchoIdentity identity) {
    std::array<BYTE, 64> request;
    alignas(cmsghdr) std::array<BYTE, 512> control;
    iovec block{request.data(), request.size()};
    msghdr header{};
    header.msg_iov = &block;
    header.msg_iovlen = 1;
    header.msg_control = control.data();
    header.msg_controllen = control.size();
    const ssize_t size = recvmsg(socket, &header, MSG_ERRQUEUE | MSG_DONTWAIT);
    if (size < 0 ||
        !IsEchoRequest(std::span(request).first(static_cast<std::size_t>(size)), identity))
        return std::nullopt;
    for (cmsghdr *part = CMSG_FIRSTHDR(&header); part; part = CMSG_NXTHDR(&header, part)) {
        if (part->cmsg_level != IPPROTO_IP || part->cmsg_type != IP_RECVERR)
            continue;
        sock_extended_err error;
        std::memcpy(&error, CMSG_DATA(part), sizeof error);
        if (error.ee_origin == SO_EE_ORIGIN_ICMP)
            return StatusOfIcmpError(error.ee_type, error.ee_code);
    }
    return std::nullopt;
}

} // namespace

IcmpEcho::IcmpEcho() {
    m_socket = OpenSocket(SOCK_DGRAM);
    // The system gives a datagram socket its identifier when it is bound.
    const sockaddr_in any{AF_INET, 0, {INADDR_ANY}, {}};
    if (m_socket >= 0 &&
        bind(m_socket, reinterpret_cast<const sockaddr *>(&any), sizeof any) != 0) {
        close(m_socket);
        m_socket = -1;
    }
    if (m_socket < 0) {
        m_socket = OpenSocket(SOCK_RAW);
        m_isRaw = true;
    }
    if (m_socket < 0) {
        SetLastError(ErrorOfOpen(errno));
        return;
    }
    SetOption(m_socket, IPPROTO_IP, IP_RECVERR, 1);
    if (m_isRaw) // Sees every ICMP message that comes in; echo replies are enough.
        SetOption(m_socket, SOL_RAW, ICMP_FILTER, static_cast<int>(~(1U << ICMP_ECHOREPLY)));
}

IcmpEcho::~IcmpEcho() {
    if (m_socket >= 0)
        close(m_socket);
}

std::optional<EchoReply> IcmpEcho::Send(DWORD address, std::span<const BYTE> data,
                                        const EchoOptions &options,
                                        std::chrono::milliseconds timeout) {
    const auto fail = [](DWORD status) {
        SetLastError(status);
        return std::nullopt;
    };
    // To probe is not to trust what earlier packets taught the system of the path.
    const int discovery = options.dontFragment ? IP_PMTUDISC_PROBE : IP_PMTUDISC_DONT;
    if (!SetOption(m_socket, IPPROTO_IP, IP_TTL, options.timeToLive) ||
        !SetOption(m_socket, IPPROTO_IP, IP_TOS, options.typeOfService) ||
        !SetOption(m_socket, IPPROTO_IP, IP_MTU_DISCOVER, discovery))
        return fail(icmp_status::BAD_OPTION);

    const std::uint32_t random = QRandomGenerator::system()->generate();
    EchoIdentity identity{static_cast<WORD>(random >> 16), static_cast<WORD>(random & 0xFFFF)};
    if (!m_isRaw) {
        sockaddr_in own{};
        socklen_t size = sizeof own;
        if (getsockname(m_socket, reinterpret_cast<sockaddr *>(&own), &size) != 0)
            return fail(icmp_status::GENERAL_FAILURE);
        identity.identifier = ntohs(own.sin_port);
    }

    const std::vector<BYTE> request = MakeEchoRequest(identity, data);
    std::vector<BYTE> buffer(65536); // No IPv4 packet is longer.
    int stale; // What an earlier request brought would be the answer to sending this one.
    socklen_t staleSize = sizeof stale;
    getsockopt(m_socket, SOL_SOCKET, SO_ERROR, &stale, &staleSize);
    const sockaddr_in target{AF_INET, 0, {address}, {}};
    const auto sent = Clock::now();
    if (sendto(m_socket, request.data(), request.size(), 0,
               reinterpret_cast<const sockaddr *>(&target), sizeof target) < 0)
        return fail(StatusOfSendError(errno));

    while (WaitForAnswer(m_socket, sent + timeout)) {
        const ssize_t size = recv(m_socket, buffer.data(), buffer.size(), 0);
        const auto time =
            std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - sent);
        const auto roundTripTime = static_cast<DWORD>(time.count());
        if (size >= 0) {
            const auto packet = std::span(buffer).first(static_cast<std::size_t>(size));
            const auto message = m_isRaw ? SkipIpHeader(packet) : packet;
            if (const auto echoed = MatchEchoReply(message, identity))
                return EchoReply{
                    icmp_status::SUCCESS, roundTripTime, {echoed->begin(), echoed->end()}};
        }
        if (const auto status = ReadError(m_socket, identity))
            return EchoReply{*status, roundTripTime, {}};
    }
    return fail(icmp_status::TIMED_OUT);
}

} // namespace tavix
