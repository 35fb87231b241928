#include "TAVIX20/platform/icmp_message.h"

#include <algorithm>
#include <cerrno>

#include <netinet/ip_icmp.h>

namespace tavix {

namespace {

// Offsets in an echo message; its words are in network order.
constexpr std::size_t TYPE = 0;
constexpr std::size_t CODE = 1;
constexpr std::size_t CHECKSUM = 2;
constexpr std::size_t IDENTIFIER = 4;
constexpr std::size_t SEQUENCE = 6;
constexpr std::size_t HEADER_SIZE = 8;

void PutWord(std::span<BYTE> bytes, std::size_t at, WORD value) {
    bytes[at] = static_cast<BYTE>(value >> 8);
    bytes[at + 1] = static_cast<BYTE>(value & 0xFF);
}

WORD GetWord(std::span<const BYTE> bytes, std::size_t at) {
    return static_cast<WORD>(bytes[at] << 8 | bytes[at + 1]);
}

bool IsEcho(std::span<const BYTE> message, BYTE type, EchoIdentity identity) {
    return message.size() >= HEADER_SIZE && message[TYPE] == type && message[CODE] == 0 &&
           EchoIdentity{GetWord(message, IDENTIFIER), GetWord(message, SEQUENCE)} == identity;
}

} // namespace

WORD InternetChecksum(std::span<const BYTE> bytes) {
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        sum += GetWord(bytes, i);
    if (bytes.size() % 2 != 0)
        sum += static_cast<std::uint64_t>(bytes.back()) << 8;
    while (sum > 0xFFFF)
        sum = (sum & 0xFFFF) + (sum >> 16);
    return static_cast<WORD>(~sum & 0xFFFF);
}

std::vector<BYTE> MakeEchoRequest(EchoIdentity identity, std::span<const BYTE> data) {
    std::vector<BYTE> message(HEADER_SIZE + data.size());
    message[TYPE] = ICMP_ECHO;
    PutWord(message, IDENTIFIER, identity.identifier);
    PutWord(message, SEQUENCE, identity.sequence);
    std::copy(data.begin(), data.end(), message.begin() + HEADER_SIZE);
    PutWord(message, CHECKSUM, InternetChecksum(message));
    return message;
}

std::optional<std::span<const BYTE>> MatchEchoReply(std::span<const BYTE> message,
                                                    EchoIdentity identity) {
    if (!IsEcho(message, ICMP_ECHOREPLY, identity) || InternetChecksum(message) != 0)
        return std::nullopt;
    return message.subspan(HEADER_SIZE);
}

bool IsEchoRequest(std::span<const BYTE> message, EchoIdentity identity) {
    return IsEcho(message, ICMP_ECHO, identity);
}

std::span<const BYTE> SkipIpHeader(std::span<const BYTE> packet) {
    constexpr std::size_t shortest = 20;
    const std::size_t size = packet.empty() ? 0 : (packet[0] & 0xFU) * 4;
    return size < shortest || packet.size() < size ? packet.first(0) : packet.subspan(size);
}

DWORD StatusOfIcmpError(BYTE type, BYTE code) {
    switch (type) {
    case ICMP_DEST_UNREACH:
        switch (code) {
        case ICMP_NET_UNREACH:
        case ICMP_NET_UNKNOWN:
        case ICMP_NET_ANO:
        case ICMP_NET_UNR_TOS:
            return icmp_status::NET_UNREACHABLE;
        case ICMP_PROT_UNREACH:
            return icmp_status::PROTOCOL_UNREACHABLE;
        case ICMP_PORT_UNREACH:
            return icmp_status::PORT_UNREACHABLE;
        case ICMP_FRAG_NEEDED:
            return icmp_status::PACKET_TOO_BIG;
        case ICMP_SR_FAILED:
            return icmp_status::BAD_ROUTE;
        default: // Also what a filter forbids.
            return icmp_status::HOST_UNREACHABLE;
        }
    case ICMP_SOURCE_QUENCH:
        return icmp_status::SOURCE_QUENCH;
    case ICMP_TIME_EXCEEDED:
        return code == ICMP_EXC_TTL ? icmp_status::TTL_EXPIRED_IN_TRANSIT
                                    : icmp_status::TTL_EXPIRED_IN_REASSEMBLY;
    case ICMP_PARAMETERPROB:
        return icmp_status::PARAMETER_PROBLEM;
    default:
        return icmp_status::GENERAL_FAILURE;
    }
}

DWORD StatusOfSendError(int error) {
    switch (error) {
    case EMSGSIZE:
        return icmp_status::PACKET_TOO_BIG;
    case ENETUNREACH:
    case ENETDOWN:
        return icmp_status::NET_UNREACHABLE;
    case EHOSTUNREACH:
    case EHOSTDOWN:
        return icmp_status::HOST_UNREACHABLE;
    case ENOBUFS:
    case ENOMEM:
    case EAGAIN:
        return icmp_status::NO_RESOURCES;
    case EACCES: // A broadcast address.
        return icmp_status::BAD_DESTINATION;
    default:
        return icmp_status::GENERAL_FAILURE;
    }
}

} // namespace tavix
