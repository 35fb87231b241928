#include "TAVIX20/containers/double_array.h"
#include "TAVIX20/containers/long_array.h"
#include "TAVIX20/containers/sort_byte_array.h"
#include "TAVIX20/containers/sort_string_array.h"
#include "TAVIX20/containers/ushort_array.h"

#include "containers/array_model.h"

#include <bit>
#include <cstdlib>
#include <limits>
#include <string>

namespace {

using namespace TavixArray;

/// The double array with the subscript that the models use.
struct Doubles : CDoubleArray {
    double &operator[](int index) { return GetAt(index); }
};

template <typename ValueArray, typename Value>
struct Traits {
    using Array = ValueArray;
    using Record = Value;
    static Value Random(std::mt19937 &random) {
        if constexpr (std::is_same_v<Value, CString>) {
            CString text;
            for (auto length = random() % 7; length > 0; --length)
                text += "0123459 -+aB\xE4"[random() % 13];
            return text;
        } else if (std::is_same_v<Value, double> && random() % 12 == 0) {
            return std::numeric_limits<Value>::quiet_NaN();
        } else {
            return static_cast<Value>(random() % 13 - 6);
        }
    }
    static auto Fields(const Value &value) {
        if constexpr (std::is_same_v<Value, double>)
            return std::bit_cast<std::uint64_t>(value);
        else
            return value;
    }
    static void Add(Array &array, const Value &v, int form) {
        if constexpr (std::is_same_v<Value, CString>)
            form == 0 ? array.Add(v) : array.Add(v.GetString());
        else
            array.Add(v);
    }
    static void Insert(Array &array, int i, const Value &v, int) { array.Insert(i, v); }
    static void SetAt(Array &array, int i, const Value &v, int) { array.SetAt(i, v); }
};

using ByteTraits = Traits<CSortByteArray, unsigned char>;
using StringTraits = Traits<CSortStringArray, CString>;

template <typename AnyTraits>
class ValueArrayTest : public testing::Test {};
using AllTraits = testing::Types<Traits<CLongArray, LONG>, Traits<CUShortArray, unsigned short>,
                                 ByteTraits, Traits<Doubles, double>, StringTraits>;
TYPED_TEST_SUITE(ValueArrayTest, AllTraits);

TYPED_TEST(ValueArrayTest, ActsAsItsModelFindsSortsThreeAndMoreAndClearsAllRoom) {
    ExpectActsAsModel<TypeParam>(81);
    std::mt19937 random(82);
    for (int size = 0; size < 90; ++size) {
        auto [array, model] = RandomRecords<TypeParam>(random, size % 30);
        const int count = array.GetElementCount(), start = size % 7 - 2;
        const auto value = TypeParam::Random(random);
        int found = -1;
        for (int i = count - 1; i >= std::max(start, 0); --i)
            found = array[i] == value ? i : found;
        EXPECT_EQ(array.Find(value, start), found) << size;
        if (count > 2)
            BubbleSort(model, std::identity());
        array.Sort();
        ASSERT_NO_FATAL_FAILURE(ExpectHolds<TypeParam>(array, model)) << "size " << size;
        array.SetElementIndex(count / 2);
        array.Init();
        EXPECT_EQ(array.GetElementCount(), count / 2);
        for (int i = 0; i < std::max(count, 10); ++i)
            EXPECT_EQ(array[i], typename TypeParam::Record{}) << i;
    }
}

TEST(ValueArraysTest, SumUp) {
    CLongArray longs;
    CUShortArray words;
    CSortByteArray bytes;
    CDoubleArray doubles;
    EXPECT_EQ(longs.GetAverage() + words.GetAverage() + bytes.GetAverage(), 0.0);
    EXPECT_EQ(longs.GetSum() + longs.GetMax() + longs.GetMin() + bytes.GetMax(), 0);
    EXPECT_EQ(doubles.GetStdDev() + doubles.GetStdDev(3.0) + doubles.GetAverage(), 0.0);
    for (const LONG value : {INT32_MAX, 1, -7})
        longs.Add(value);
    const LONG sums[] = {0, INT32_MAX, INT32_MIN, INT32_MAX - 6};
    for (int n = 0; n < 4; ++n)
        EXPECT_EQ(longs.GetSum(n), sums[n]) << n;
    EXPECT_EQ(longs.GetSum(), sums[3]);
    EXPECT_DOUBLE_EQ(longs.GetAverage(), 2147483641.0 / 3);
    EXPECT_EQ(std::pair(longs.GetMin(), longs.GetMax()), std::pair(-7, INT32_MAX));
    longs.SetAll(longs[1]);
    EXPECT_EQ(longs.GetSum(4), 3); // The fourth value is not counted.

    for (int i = 0; i < 70000; ++i)
        words.Add(65535);
    EXPECT_EQ(words.GetSum(), 4587450000); // Above 32 bits.
    for (const BYTE value : {BYTE{200}, BYTE{100}, BYTE{255}})
        bytes.Add(value);
    EXPECT_EQ(std::pair(bytes.GetSum(), bytes.GetAverage()), std::pair(std::int64_t{555}, 185.0));
    EXPECT_EQ(std::pair(bytes.GetMin(), bytes.GetMax()), std::pair(BYTE{100}, BYTE{255}));
    for (const double value : {2.0, 4.0, 4.0, 4.0, 5.0, 5.0, 7.0, 9.0})
        doubles.Add(value);
    EXPECT_EQ(doubles.GetAverage(), 5.0);
    EXPECT_EQ(doubles.GetStdDev(), 2.0);                       // The squares sum to 32 = 8 * 4.
    EXPECT_DOUBLE_EQ(doubles.GetStdDev(8.0), std::sqrt(13.0)); // 4 + (8 - 5)^2.
}

TEST(SortByteArrayTest, DiffValueListsWhatIsMissing) {
    std::mt19937 random(85);
    const unsigned char ends[] = {0, 1, 100, 104, 254, 255};
    for (int round = 0; round < 2000; ++round) {
        CSortByteArray array, out;
        for (auto n = random() % 400; n > 0; --n)
            array.Add(static_cast<unsigned char>(random()));
        std::vector<unsigned char> model(random() % 3);
        for (const unsigned char value : model)
            out.Add(value);
        const unsigned char from = ends[random() % 6], to = ends[random() % 6];
        const int limit = static_cast<int>(random() % 8) * (round % 2 == 0 ? 1 : 40) - 1;
        for (int v = from; v < to && static_cast<int>(model.size()) < limit; ++v)
            if (array.Find(static_cast<unsigned char>(v), -1) < 0)
                model.push_back(static_cast<unsigned char>(v));
        array.DiffValue(from, to, limit, out);
        ASSERT_NO_FATAL_FAILURE(ExpectHolds<ByteTraits>(out, model)) << round;
    }
}

TEST(SortStringArrayTest, SortsByTheNumbersAtPositions) {
    std::mt19937 random(86);
    for (int round = 0; round < 600; ++round) {
        auto [array, model] = RandomRecords<StringTraits>(random, round % 25);
        const bool isWhole = round % 3 == 0;
        const int first = static_cast<int>(random() % 9) - 2, last = static_cast<int>(random() % 9);
        isWhole ? array.SortNumber() : array.SortNumber(first, last);
        BubbleSort(model, [&](const CString &text) {
            std::string part;
            for (int i = 0; i < text.GetLength(); ++i)
                if (isWhole || (i >= first && i <= last))
                    part += text[i];
            return std::atoi(part.c_str());
        });
        ASSERT_NO_FATAL_FAILURE(ExpectHolds<StringTraits>(array, model)) << round;
    }
    CSortStringArray extremes;
    for (const char *text : {"9999999999999999999999", "2147483646", "-3000000000"})
        extremes.Add(text);
    extremes.SortNumber(INT32_MAX, INT32_MIN);
    EXPECT_EQ(extremes.Find("2147483646", 0), 1);
    extremes.SortNumber(INT32_MIN, INT32_MAX);
    EXPECT_EQ(extremes[0], "-3000000000");
    EXPECT_EQ(extremes[2], "9999999999999999999999");
    extremes.Insert(0, "first");
    extremes.SetAt(1, static_cast<const char *>(nullptr));
    EXPECT_EQ(extremes.Find("", 0), 1);
    EXPECT_EQ(extremes.Find("first", -1), 0);
}

} // namespace
