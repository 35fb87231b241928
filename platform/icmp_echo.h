/// The ICMP echo service of the system, over IPv4.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

#include <chrono>
#include <optional>
#include <span>
#include <vector>

namespace tavix {

/// IP options of an echo request.
struct EchoOptions {
    BYTE timeToLive;
    BYTE typeOfService;
    bool dontFragment; ///< The request is sent whole or not at all.
};

/// What answered an echo request: the host itself, or a router or the own system that reports why
/// the request could not be delivered.
struct EchoReply {
    DWORD status;           ///< One of icmp_status: SUCCESS when the host answered.
    DWORD roundTripTime;    ///< In milliseconds, truncated.
    std::vector<BYTE> data; ///< The data echoed; empty unless the host answered.
};

/// One open socket for echoes: a datagram ICMP socket where the system permits it (the sysctl
/// net.ipv4.ping_group_range on Linux), else a raw one (which needs the right to it).
class TAVIX_API IcmpEcho {
public:
    /// Opens the service. A failure sets the last error: 5 where neither socket is permitted, 2
    /// where the system has no such service, 4 without a free descriptor, 8 without memory,
    /// else 31.
    IcmpEcho();
    ~IcmpEcho();
    IcmpEcho(const IcmpEcho &) = delete;
    IcmpEcho &operator=(const IcmpEcho &) = delete;

    bool IsOpen() const { return m_socket >= 0; }

    /// Sends one echo request to an IPv4 address (in network order) and waits up to timeout for
    /// what answers it, which identifier and sequence tell. Nothing when the request could not be
    /// sent or nothing answered; the last error is then the icmp_status that says why (TIMED_OUT,
    /// PACKET_TOO_BIG ...). May throw std::bad_alloc.
    std::optional<EchoReply> Send(DWORD address, std::span<const BYTE> data,
                                  const EchoOptions &options, std::chrono::milliseconds timeout);

private:
    int m_socket = -1;
    bool m_isRaw = false;
};

} // namespace tavix
