#include "TAVIX20/containers/rect_array.h"

#include "containers/array_model.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

using TavixArray::CRectArray;

struct RectTraits {
    using Array = CRectArray;
    using Record = tagRECT;
    static Record Random(std::mt19937 &random) {
        std::uniform_int_distribution<int> edge(-5, 5);
        Record rect{};
        for (LONG *field : {&rect.left, &rect.top, &rect.right, &rect.bottom})
            *field = edge(random);
        return rect;
    }
    static auto Fields(const Record &r) { return std::tuple(r.left, r.top, r.right, r.bottom); }
    static void Add(Array &array, const Record &r, int form) {
        form == 0 ? array.Add(r.left, r.top, r.right, r.bottom) : array.Add(r);
    }
    static void Insert(Array &array, int index, const Record &r, int) { array.Insert(index, r); }
    static void SetAt(Array &array, int index, const Record &r, int form) {
        form == 0 ? array.SetAt(index, r.left, r.top, r.right, r.bottom) : array.SetAt(index, r);
    }
};

int Width(const tagRECT &rect) {
    return rect.right - rect.left;
}

int Height(const tagRECT &rect) {
    return rect.bottom - rect.top;
}

TEST(RectArrayTest, ActsAsItsModel) {
    ExpectActsAsModel<RectTraits>(21);
}

TEST(RectArrayTest, SortsAsItsModel) {
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortLeft, &tagRECT::left);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortTop, &tagRECT::top);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortRight, &tagRECT::right);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortBottom, &tagRECT::bottom);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortWidth, Width);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortHeight, Height);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortArea,
                                   [](const tagRECT &r) { return Width(r) * Height(r); });
}

TEST(RectArrayTest, SortsAreasBeyond32Bits) {
    CRectArray array;
    array.Add(0, 0, 70000, 70000);
    array.Add(0, 0, 65536, 65536);
    array.Add(0, 0, 40000, 50000);
    array.SortArea();
    EXPECT_EQ(array[0].right, 40000);
    EXPECT_EQ(array[1].right, 65536);
    EXPECT_EQ(array[2].right, 70000);
}

TEST(RectArrayTest, ExtremesAndAverages) {
    const auto offset = [](tagRECT r, int by) {
        return tagRECT{r.left + by, r.top + by, r.right + 2 * by, r.bottom + 3 * by};
    };
    std::mt19937 random(22);
    for (int round = 0; round < 200; ++round) {
        // All positive, around 0, all negative: an extreme may lie on either side of 0.
        const int by = (round % 3 - 1) * 30;
        CRectArray array;
        std::vector<std::vector<int>> values(6);
        const int count = 1 + round % 9;
        for (int i = 0; i < count; ++i) {
            const tagRECT r = offset(RectTraits::Random(random), by);
            array.Add(r);
            const int fields[] = {r.left, r.top, r.right, r.bottom, Width(r), Height(r)};
            for (std::size_t k = 0; k < 6; ++k)
                values[k].push_back(fields[k]);
        }
        for (auto &list : values)
            std::sort(list.begin(), list.end());
        const auto average = [&](const std::vector<int> &list) {
            double sum = 0;
            for (const int value : list)
                sum += value;
            return static_cast<int>(std::trunc(sum / count));
        };
        ASSERT_EQ(array.GetSmallestLeft(), values[0].front());
        ASSERT_EQ(array.GetLargestLeft(), values[0].back());
        ASSERT_EQ(array.GetSmallestTop(), values[1].front());
        ASSERT_EQ(array.GetLargestTop(), values[1].back());
        ASSERT_EQ(array.GetSmallestRight(), values[2].front());
        ASSERT_EQ(array.GetLargestRight(), values[2].back());
        ASSERT_EQ(array.GetSmallestBottom(), values[3].front());
        ASSERT_EQ(array.GetLargestBottom(), values[3].back());
        ASSERT_EQ(array.GetMinWidth(), values[4].front());
        ASSERT_EQ(array.GetMaxWidth(), values[4].back());
        ASSERT_EQ(array.GetAvgWidth(), average(values[4]));
        ASSERT_EQ(array.GetMinHeight(), values[5].front());
        ASSERT_EQ(array.GetMaxHeight(), values[5].back());
        ASSERT_EQ(array.GetAvgHeight(), average(values[5]));
    }
}

TEST(RectArrayTest, EmptyArraysHaveNoExtremes) {
    const CRectArray array;
    for (const auto member :
         {&CRectArray::GetMaxWidth, &CRectArray::GetMinWidth, &CRectArray::GetAvgWidth,
          &CRectArray::GetMaxHeight, &CRectArray::GetMinHeight, &CRectArray::GetAvgHeight,
          &CRectArray::GetSmallestLeft, &CRectArray::GetLargestLeft, &CRectArray::GetSmallestTop,
          &CRectArray::GetLargestTop, &CRectArray::GetSmallestRight, &CRectArray::GetLargestRight,
          &CRectArray::GetSmallestBottom, &CRectArray::GetLargestBottom})
        EXPECT_EQ((array.*member)(), 0);
}

} // namespace
