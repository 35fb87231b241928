#include "TAVIX20/platform/icmp_message.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string_view>

namespace {

using Bytes = std::vector<BYTE>;

} // namespace

TEST(IcmpMessageTest, ChecksumIsThatOfTheInternet) {
    // The example of RFC 1071: the sum is 0xDDF2.
    EXPECT_EQ(tavix::InternetChecksum(Bytes{0x00, 0x01, 0xF2, 0x03, 0xF4, 0xF5, 0xF6, 0xF7}),
              0x220D);
    EXPECT_EQ(tavix::InternetChecksum(Bytes{}), 0xFFFF);
    EXPECT_EQ(tavix::InternetChecksum(Bytes{0x12, 0x34, 0x56}), 0xFFFF - 0x6834); // An odd byte.
    EXPECT_EQ(tavix::InternetChecksum(Bytes(65536, 0xFF)), 0);
}

TEST(IcmpMessageTest, ARequestIsToldByItsIdentity) {
    const Bytes request = tavix::MakeEchoRequest({0x1234, 0xABCD}, Bytes{'E', 'E', 'E'});
    // 0x0800 + 0x1234 + 0xABCD + 0x4545 + 0x4500 = 0x15046, so 0x5047.
    EXPECT_EQ(request, (Bytes{8, 0, 0xAF, 0xB8, 0x12, 0x34, 0xAB, 0xCD, 'E', 'E', 'E'}));
    EXPECT_TRUE(tavix::IsEchoRequest(std::span(request).first(8), {0x1234, 0xABCD}));
    EXPECT_FALSE(tavix::IsEchoRequest(std::span(request).first(7), {0x1234, 0xABCD}));
    EXPECT_FALSE(tavix::IsEchoRequest(request, {0x1234, 0xABCE}));
}

TEST(IcmpMessageTest, AReplyMatchesOnlyItsRequest) {
    // The checksum of the request with type 0 in place of 8.
    const Bytes right{0, 0, 0xB7, 0xB8, 0x12, 0x34, 0xAB, 0xCD, 'E', 'E', 'E'};
    const auto echoed = tavix::MatchEchoReply(right, {0x1234, 0xABCD});
    ASSERT_TRUE(echoed);
    EXPECT_EQ(Bytes(echoed->begin(), echoed->end()), (Bytes{'E', 'E', 'E'}));
    EXPECT_FALSE(tavix::MatchEchoReply(right, {0x1235, 0xABCD}));
    EXPECT_FALSE(tavix::MatchEchoReply(right, {0x1234, 0xABCC}));
    for (std::size_t i = 0; i < right.size(); ++i) { // Whichever byte is wrong or missing.
        Bytes wrong = right;
        wrong[i] ^= 0x40;
        EXPECT_FALSE(tavix::MatchEchoReply(wrong, {0x1234, 0xABCD})) << i;
        EXPECT_FALSE(tavix::MatchEchoReply(std::span(right).first(i), {0x1234, 0xABCD})) << i;
    }
}

TEST(IcmpMessageTest, IpHeadersHaveSeveralLengths) {
    const struct {
        BYTE first;
        std::size_t size, left;
    } cases[] = {{0x45, 20, 0}, {0x45, 28, 8}, {0x46, 28, 4}, {0x4F, 60, 0}, {0x4F, 59, 0},
                 {0x45, 19, 0}, {0x44, 28, 0}, {0x40, 28, 0}, {0x45, 0, 0}};
    for (const auto &[first, size, left] : cases) {
        Bytes packet(size);
        if (size > 0)
            packet[0] = first;
        EXPECT_EQ(tavix::SkipIpHeader(packet).size(), left) << int{first} << ' ' << size;
    }
}

TEST(IcmpMessageTest, ErrorsHaveTheirStatus) {
    const struct {
        BYTE type, code;
        DWORD status;
    } reported[] = {{3, 0, 11002},  {3, 1, 11003},  {3, 2, 11004},  {3, 3, 11005},  {3, 4, 11009},
                    {3, 5, 11012},  {3, 6, 11002},  {3, 7, 11003},  {3, 13, 11003}, {4, 0, 11016},
                    {11, 0, 11013}, {11, 1, 11014}, {12, 0, 11015}, {200, 0, 11050}};
    for (const auto &[type, code, status] : reported)
        EXPECT_EQ(tavix::StatusOfIcmpError(type, code), status) << int{type} << ' ' << int{code};
    const std::pair<int, DWORD> refused[] = {{EMSGSIZE, 11009},     {ENETUNREACH, 11002},
                                             {EHOSTUNREACH, 11003}, {ENOBUFS, 11006},
                                             {EACCES, 11018},       {EPERM, 11050}};
    for (const auto &[error, status] : refused)
        EXPECT_EQ(tavix::StatusOfSendError(error), status) << error;
}
