#include "TAVIX20/support/ping.h"

#include "TAVIX20/platform/icmp_message.h"
#include "TAVIX20/platform/last_error.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

/// Whether the system permits this process a socket for echoes.
bool IsPermitted() {
    for (const int type : {SOCK_DGRAM, SOCK_RAW})
        if (const int opened = socket(AF_INET, type, IPPROTO_ICMP); opened >= 0) {
            close(opened);
            return true;
        }
    return false;
}

std::ptrdiff_t OpenDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

/// Result, round-trip time, status and failure flag.
using Probe = std::array<long, 4>;

Probe Ping(const char *host, int ttl, int size, int dontFragment) {
    CPing::_PingReply reply{77, 77, 77};
    SetLastError(77);
    const int result = CPing::Ping(host, reply, static_cast<unsigned char>(ttl), 5000,
                                   static_cast<unsigned short>(size), 0x10, dontFragment);
    return {result, reply.roundTripTime, reply.status, reply.failed};
}

} // namespace

TEST(CPingTest, AHostWithoutAddressLeavesTheReplyAtZero) {
    const std::string tooLong(300, 'a');
    for (const char *host :
         {"no such host", "tab\there", "", tooLong.c_str(), (const char *)nullptr}) {
        EXPECT_EQ(Ping(host, 64, 32, 0), (Probe{0, 0, 0, 0}));
        EXPECT_EQ(GetLastError(), 11001U);
    }
}

TEST(CPingTest, AsksTheOwnHost) {
    const auto descriptors = OpenDescriptors();
    const bool permitted = IsPermitted();
    const struct {
        int ttl, size, dontFragment;
        DWORD error; // 0 where a reply is expected.
    } cases[] = {
        {64, 32, 0, 0},
        {1, 0, 1, 0},
        {255, 65507, 0, 0},
        {64, 65508, 0, tavix::icmp_status::PACKET_TOO_BIG},
        {64, 65535, 1, tavix::icmp_status::PACKET_TOO_BIG},
        {0, 32, 0, tavix::icmp_status::BAD_OPTION},
    };
    for (const auto &[ttl, size, dontFragment, error] : cases) {
        Probe probe = Ping("127.0.0.1", ttl, size, dontFragment);
        SCOPED_TRACE(testing::Message() << "ttl " << ttl << " size " << size);
        if (!permitted) {
            EXPECT_EQ(probe, (Probe{0, 0, 0, 0}));
            EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
        } else if (error != 0) {
            EXPECT_EQ(probe, (Probe{0, -1, 0, 1}));
            EXPECT_EQ(GetLastError(), error);
        } else {
            EXPECT_GE(probe[1], 0);
            probe[1] = 0;
            EXPECT_EQ(probe, (Probe{1, 0, 0, 0}));
        }
    }
    EXPECT_EQ(OpenDescriptors(), descriptors);
}
