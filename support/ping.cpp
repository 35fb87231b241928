#include "TAVIX20/support/ping.h"

#include "TAVIX20/platform/icmp_echo.h"
#include "TAVIX20/platform/icmp_message.h"
#include "TAVIX20/platform/last_error.h"

#include <algorithm>
#include <limits>
#include <new>
#include <optional>
#include <string_view>
#include <vector>

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>

namespace {

constexpr DWORD UNEXPECTED_NETWORK_ERROR = 59;
constexpr DWORD HOST_NOT_FOUND_ERROR = 11001;

/// No name contains these, so nobody needs to be asked.
bool CanBeName(std::string_view text) {
    constexpr std::size_t longest = 255;
    return !text.empty() && text.size() <= longest &&
           std::ranges::none_of(text, [](char c) { return (c >= 0 && c <= ' ') || c == 0x7F; });
}

/// The IPv4 address of a host, in network order.
std::optional<DWORD> Resolve(const char *host) {
    if (!host)
        return std::nullopt;
    if (const in_addr_t address = inet_addr(host); address != INADDR_NONE)
        return address;
    if (!CanBeName(host))
        return std::nullopt;
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_DGRAM; // One entry for each address.
    addrinfo *found = nullptr;
    if (getaddrinfo(host, nullptr, &hints, &found) != 0)
        return std::nullopt;
    const DWORD address = reinterpret_cast<const sockaddr_in *>(found->ai_addr)->sin_addr.s_addr;
    freeaddrinfo(found);
    return address;
}

/// The reply to an echo of size bytes "E", when there is one whose data are "E", too.
std::optional<tavix::EchoReply> SendEcho(tavix::IcmpEcho &echo, DWORD address, std::size_t size,
                                         const tavix::EchoOptions &options,
                                         std::chrono::milliseconds timeout) {
    const std::vector<BYTE> data(size, 'E');
    auto reply = echo.Send(address, data, options, timeout);
    if (!reply)
        return std::nullopt;
    if (reply->data.size() > std::max<std::size_t>(size, 8)) {
        SetLastError(tavix::icmp_status::BUFFER_TOO_SMALL);
        return std::nullopt;
    }
    if (std::ranges::any_of(reply->data, [](BYTE byte) { return byte != 'E'; })) {
        SetLastError(UNEXPECTED_NETWORK_ERROR);
        return std::nullopt;
    }
    return reply;
}

} // namespace

int CPing::Ping(const char *host, _PingReply &reply, unsigned char ttl, unsigned long timeout,
                unsigned short size, unsigned char tos, int dontFragment) {
    reply = {};
    const std::optional<DWORD> address = Resolve(host);
    if (!address) {
        SetLastError(HOST_NOT_FOUND_ERROR);
        return 0;
    }
    tavix::IcmpEcho echo;
    if (!echo.IsOpen())
        return 0;
    constexpr unsigned long longest = std::numeric_limits<LONG>::max();
    const std::chrono::milliseconds wait(std::min(timeout, longest));
    try {
        const auto answer = SendEcho(echo, *address, size, {ttl, tos, dontFragment != 0}, wait);
        if (answer) {
            reply.roundTripTime = static_cast<LONG>(answer->roundTripTime);
            reply.status = answer->status;
            return 1;
        }
    } catch (const std::bad_alloc &) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    }
    reply.roundTripTime = -1;
    reply.failed = 1;
    return 0;
}
