/// CPing: asks whether a host answers on the network.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

/// An ICMP echo probe over IPv4. It needs a system that permits the process a datagram ICMP socket
/// (on Linux the sysctl net.ipv4.ping_group_range) or a raw one.
class TAVIX_API CPing {
public:
    /// What became of a probe.
    struct _PingReply {
        LONG roundTripTime; ///< In milliseconds, truncated; -1 after a failure.
        DWORD status;       ///< ICMP status of the reply, see Ping.
        LONG failed;        ///< 1 after a failure, else 0.
    };

    /// Sends one echo request of size bytes "E" and waits up to timeout milliseconds for one reply.
    /// host is a dotted IPv4 address or a name, whose first address is taken; ttl and tos are the
    /// time to live and the type of service of the packet, which is not fragmented on its way when
    /// dontFragment is not 0.
    ///
    /// Returns 1 when a reply came: from the host (status 0) or from whoever could not deliver the
    /// request, with the reason as status: 11002 network, 11003 host, 11004 protocol or 11005 port
    /// unreachable, 11009 packet too big, 11012 bad route, 11013 time to live expired in transit,
    /// 11014 during reassembly, 11015 parameter problem, 11016 source quench, 11050 another.
    ///
    /// Returns 0 with the last error set (GetLastError):
    /// - with every field of the reply 0 when host is null or cannot be resolved (11001), or the
    ///   service cannot be opened (5 where the process may not, 2 where there is none, 4, 8 or 31
    ///   when the system lacks resources);
    /// - with round-trip time -1, status 0 and the flag once the echo was tried: 11010 no reply in
    /// time,
    ///   59 a reply with other bytes than "E", 11001 one with more of them, 11009 too big to be
    ///   sent (more than 65507 bytes or, unfragmented, than the network takes), 11002 or 11003 no
    ///   route, 11006 no resources, 11007 ttl 0, 11018 a broadcast address, 11050 another reason.
    static int Ping(const char *host, _PingReply &reply, unsigned char ttl, unsigned long timeout,
                    unsigned short size, unsigned char tos, int dontFragment);

private:
    CPing() = default;
};
