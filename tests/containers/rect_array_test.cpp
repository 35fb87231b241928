#include "TAVIX20/containers/rect_array.h"

#include "containers/array_model.h"

#include <algorithm>
#include <numeric>

namespace {

using TavixArray::CRectArray;

using RectTraits = FieldTraits<CRectArray, tagRECT, &tagRECT::left, &tagRECT::top, &tagRECT::right,
                               &tagRECT::bottom>;

int Width(const tagRECT &rect) {
    return rect.right - rect.left;
}

int Height(const tagRECT &rect) {
    return rect.bottom - rect.top;
}

TEST(RectArrayTest, ActsAndSortsAsItsModel) {
    ExpectActsAsModel<RectTraits>(21);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortLeft, &tagRECT::left);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortTop, &tagRECT::top);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortRight, &tagRECT::right);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortBottom, &tagRECT::bottom);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortWidth, Width);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortHeight, Height);
    ExpectSortsAsModel<RectTraits>(&CRectArray::SortArea,
                                   [](const tagRECT &r) { return Width(r) * Height(r); });
    CRectArray array; // Areas beyond 32 bits.
    for (const int side : {70000, 65536, 40000})
        array.Add(0, 0, side, side);
    array.SortArea();
    ExpectHolds<RectTraits>(array,
                            {{0, 0, 40000, 40000}, {0, 0, 65536, 65536}, {0, 0, 70000, 70000}});
}

TEST(RectArrayTest, ExtremesAndAverages) {
    using Rects = CRectArray;
    const struct {
        std::function<int(const tagRECT &)> key;
        int (Rects::*smallest)() const;
        int (Rects::*largest)() const;
        int (Rects::*average)() const;
    } cases[] = {
        {&tagRECT::left, &Rects::GetSmallestLeft, &Rects::GetLargestLeft, nullptr},
        {&tagRECT::top, &Rects::GetSmallestTop, &Rects::GetLargestTop, nullptr},
        {&tagRECT::right, &Rects::GetSmallestRight, &Rects::GetLargestRight, nullptr},
        {&tagRECT::bottom, &Rects::GetSmallestBottom, &Rects::GetLargestBottom, nullptr},
        {Width, &Rects::GetMinWidth, &Rects::GetMaxWidth, &Rects::GetAvgWidth},
        {Height, &Rects::GetMinHeight, &Rects::GetMaxHeight, &Rects::GetAvgHeight},
    };
    std::mt19937 random(22);
    for (int round = 0; round < 200; ++round) {
        // All positive, around 0, all negative: an extreme may lie on either side of 0.
        const int by = (round % 3 - 1) * 30, count = round % 10;
        CRectArray array;
        for (const tagRECT &r : RandomRecords<RectTraits>(random, count).second)
            array.Add(r.left + by, r.top + by, r.right + 2 * by, r.bottom + 3 * by);
        for (const auto &c : cases) {
            std::vector<int> keys(count == 0 ? 1 : 0);
            for (int i = 0; i < count; ++i)
                keys.push_back(c.key(array[i]));
            const auto [smallest, largest] = std::ranges::minmax(keys);
            const int sum = std::accumulate(keys.begin(), keys.end(), 0);
            ASSERT_EQ((array.*c.smallest)(), smallest) << &c - cases;
            ASSERT_EQ((array.*c.largest)(), largest) << &c - cases;
            if (c.average) {
                ASSERT_EQ((array.*c.average)(), sum / std::max(count, 1)) << &c - cases;
            }
        }
    }
}

} // namespace
