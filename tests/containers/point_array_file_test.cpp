#include "TAVIX20/containers/point_array.h"

#include "containers/point_list.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using TavixArray::CPointArray;

class PointArrayFileTest : public testing::Test {
protected:
    void TearDown() override { std::filesystem::remove(m_path); }

    void Write(const std::string &bytes) const { std::ofstream(m_path, std::ios::binary) << bytes; }
    std::string Read() const {
        std::ifstream file(m_path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const std::string m_path = testing::TempDir() + "tavix_points_" +
                               testing::UnitTest::GetInstance()->current_test_info()->name() +
                               ".txt";
};

TEST_F(PointArrayFileTest, WritesOneLineAPoint) {
    Write("a longer text that must not survive");
    const CPointArray array = ArrayOf({{1, 2}, {-3, 4}, {INT32_MIN, INT32_MAX}});
    EXPECT_EQ(array.SaveFile(m_path.c_str()), 1);
    EXPECT_EQ(Read(), "1,2\r\n-3,4\r\n-2147483648,2147483647\r\n");
    CPointArray read;
    EXPECT_EQ(read.OpenFile(m_path.c_str()), 1);
    EXPECT_EQ(read == array, 1);
    EXPECT_EQ(CPointArray().SaveFile(m_path.c_str()), 1);
    EXPECT_EQ(Read(), "");
}

TEST_F(PointArrayFileTest, ReadsLinesOfTwoFields) {
    const struct {
        const char *name;
        std::string text;
        Pairs expected;
    } cases[] = {
        {"other counts, last line open", "5,6\n7\n8,9,10\n7,8\r\n9,10", {{5, 6}, {7, 8}, {9, 10}}},
        {"empty lines", "\n\r\n1,2\n\n3,4\n", {{1, 2}, {3, 4}}},
        {"blanks", " 1 , 2 \n\t3,\t4\r\n", {{1, 2}, {3, 4}}},
        {"empty fields", ",\n1,\n,2\n1,2,\n,1,2\n,,\n", {{0, 0}, {1, 0}, {0, 2}}},
        {"no numbers", "a,b\n1x,2.9\n+3,--4\n0x10,1e3\n", {{0, 0}, {1, 2}, {3, 0}, {0, 1}}},
        {"beyond 32 bits",
         "2147483648,-2147483649\n99999999999999999999,-99999999999999999999\n",
         {{INT32_MAX, INT32_MIN}, {INT32_MAX, INT32_MIN}}},
        {"zero bytes", std::string("1\0,2\n3,4\0\n", 10), {{1, 2}, {3, 4}}},
    };
    for (const auto &c : cases) {
        Write(c.text);
        CPointArray array = ArrayOf({{99, 99}});
        EXPECT_EQ(array.OpenFile(m_path.c_str()), 1) << c.name;
        EXPECT_EQ(PairsOf(array), c.expected) << c.name;
    }
}

TEST_F(PointArrayFileTest, FailuresLeaveTheArray) {
    const std::string folder = testing::TempDir();
    const std::string nowhere = m_path + ".folder/points.txt";
    CPointArray array = ArrayOf({{1, 2}});
    EXPECT_EQ(array.OpenFile(m_path.c_str()), 0);
    for (const char *path :
         {folder.c_str(), nowhere.c_str(), "", static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(array.OpenFile(path), 0) << (path ? path : "null");
        EXPECT_EQ(array.SaveFile(path), 0) << (path ? path : "null");
    }
    EXPECT_EQ(PairsOf(array), (Pairs{{1, 2}}));
}

} // namespace
