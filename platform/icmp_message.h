/// ICMP echo messages as bytes, and the numbers by which their fate is reported.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/types.h"

#include <optional>
#include <span>
#include <vector>

namespace tavix {

/// The status of an echo.
namespace icmp_status {
inline constexpr DWORD SUCCESS = 0;
inline constexpr DWORD BUFFER_TOO_SMALL = 11001;
inline constexpr DWORD NET_UNREACHABLE = 11002;
inline constexpr DWORD HOST_UNREACHABLE = 11003;
inline constexpr DWORD PROTOCOL_UNREACHABLE = 11004;
inline constexpr DWORD PORT_UNREACHABLE = 11005;
inline constexpr DWORD NO_RESOURCES = 11006;
inline constexpr DWORD BAD_OPTION = 11007;
inline constexpr DWORD PACKET_TOO_BIG = 11009;
inline constexpr DWORD TIMED_OUT = 11010;
inline constexpr DWORD BAD_ROUTE = 11012;
inline constexpr DWORD TTL_EXPIRED_IN_TRANSIT = 11013;
inline constexpr DWORD TTL_EXPIRED_IN_REASSEMBLY = 11014;
inline constexpr DWORD PARAMETER_PROBLEM = 11015;
inline constexpr DWORD SOURCE_QUENCH = 11016;
inline constexpr DWORD BAD_DESTINATION = 11018;
inline constexpr DWORD GENERAL_FAILURE = 11050;
} // namespace icmp_status

/// What tells one echo from another.
struct EchoIdentity {
    WORD identifier;
    WORD sequence;
    bool operator==(const EchoIdentity &) const = default;
};

/// The Internet checksum (RFC 1071) of the bytes, in network order; 0 over a message that carries
/// its right checksum.
TAVIX_API WORD InternetChecksum(std::span<const BYTE> bytes);

/// An echo request with its checksum.
TAVIX_API std::vector<BYTE> MakeEchoRequest(EchoIdentity identity, std::span<const BYTE> data);

/// The data of the echo reply to identity, when message (without its IP header) is that. The
/// checksum must be right.
TAVIX_API std::optional<std::span<const BYTE>> MatchEchoReply(std::span<const BYTE> message,
                                                              EchoIdentity identity);

/// Whether message begins with the header of the echo request of identity.
TAVIX_API bool IsEchoRequest(std::span<const BYTE> message, EchoIdentity identity);

/// What follows the IPv4 header of a packet; empty when the packet is too short.
TAVIX_API std::span<const BYTE> SkipIpHeader(std::span<const BYTE> packet);

/// The status that an ICMP error message of this type and code reports (RFC 792, RFC 1122).
TAVIX_API DWORD StatusOfIcmpError(BYTE type, BYTE code);

/// The status for a request that the system refused to send with this errno.
TAVIX_API DWORD StatusOfSendError(int error);

} // namespace tavix
