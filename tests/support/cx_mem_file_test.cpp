#include "support/xml_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>

namespace {

/// The documented rules, with a string for the bytes.
struct Model {
    std::string bytes;
    long position = 0;
    long capacity = 0;

    void Expand(long wanted) {
        if (wanted > capacity)
            capacity = capacity == 0 ? wanted : (wanted + 1023) / 1024 * 1024;
    }
    void Write(const std::string &data) {
        const auto count = static_cast<long>(data.size());
        const auto size = static_cast<long>(bytes.size());
        if (capacity - size < count)
            Expand(capacity + count);
        position += count;
        Expand(position);
        bytes += data;
        bytes.resize(static_cast<std::size_t>(std::max(position, size)), '\0');
    }
    std::string Read(std::size_t count) {
        const auto start = std::min(static_cast<std::size_t>(position), bytes.size());
        std::string read = bytes.substr(start, count);
        position += static_cast<long>(read.size());
        return read;
    }
};

} // namespace

TEST(CxMemFileTest, BytesBehindTheLastValidOneAreHeldAsWell) {
    CxMemFile file(0);
    EXPECT_EQ(file.GetDataPointer(), nullptr);
    EXPECT_EQ(file.WriteString(std::string(3000, 'x').c_str()), 3000u);
    file.Empty();
    EXPECT_EQ(file.GetSize() + file.GetCurPos(), 0);
    EXPECT_EQ(file.GetCapacity(), 3000);

    file.WriteString(std::string(100, 'a').c_str());
    file.SetCurPos(0);
    file.WriteString("0123456789");
    EXPECT_EQ(file.GetSize(), 100); // the ten bytes behind them are not valid yet
    EXPECT_EQ(static_cast<const char *>(file)[100], '0');
    EXPECT_EQ(CxMemFile(-5).GetCapacity() + CxMemFile(77).GetCapacity(), 77);
}

TEST(CxMemFileTest, FollowsItsRulesThroughRandomOperations) {
    std::mt19937 random(7);
    for (int run = 0; run < 20; ++run) {
        CxMemFile file;
        Model model;
        for (int step = 0; step < 300; ++step) {
            const auto count = random() % (step % 9 == 0 ? 5000 : 40) + 1;
            if (const auto choice = random() % 8; choice < 4) {
                const std::string data(count, static_cast<char>('a' + random() % 26));
                ASSERT_EQ(file.Write(data.data(), static_cast<unsigned>(count)), count);
                model.Write(data);
            } else if (choice < 6) {
                std::string read(count, '\0');
                read.resize(file.Read(read.data(), static_cast<unsigned>(count)));
                ASSERT_EQ(read, model.Read(count));
            } else if (choice == 6) {
                const auto position = static_cast<int>(random() % (model.bytes.size() + 60));
                ASSERT_EQ(file.SetCurPos(position), position);
                model.Expand(position);
                model.position = position;
            }
            ASSERT_EQ(file.GetCapacity(), model.capacity);
            ASSERT_EQ(file.GetCurPos(), model.position);
            ASSERT_EQ(Bytes(file), model.bytes);
        }
    }
}

TEST(CxMemFileTest, WhatCannotBeHeldIsRefusedAndChangesNothing) {
    CxMemFile file;
    file.WriteString("abc");
    EXPECT_EQ(file.Write("x", UINT_MAX), 0u);
    EXPECT_EQ(file.SetCurPos(INT_MAX), -1); // would be rounded up past what an int tells
    EXPECT_EQ(file.Write(nullptr, 5) + file.WriteString(nullptr) + file.Write("x", 0), 0u);
    EXPECT_EQ(Bytes(file), "abc");
    EXPECT_EQ(file.GetCapacity(), 3);
    EXPECT_EQ(file.SetCurPos(-1), -1);
    EXPECT_EQ(file.GetCurPos() + file.IsLoading() + file.IsStoring() + file.Flush(), 6);
}
