#include "TAVIX20/containers/point_array_array.h"

#include "containers/array_model.h"
#include "containers/point_list.h"

namespace {

using TavixArray::CPointArray;
using TavixArray::CPointArrayArray;

struct ListTraits {
    using Array = CPointArrayArray;
    using Record = CPointArray;
    static Record Random(std::mt19937 &random) {
        Record points;
        for (auto left = random() % 5; left > 0; --left)
            points.Add(static_cast<int>(random() % 100), static_cast<int>(random() % 100));
        return points;
    }
    static Pairs Fields(const Record &points) { return PairsOf(points); }
    static void Add(Array &array, const Record &points, int form) {
        if (form == 0)
            return array.Add(points);
        Array one;
        one.Add(points);
        array.Add(one);
    }
    static void Insert(Array &array, int index, const Record &points, int) {
        array.Insert(index, points);
    }
    static void SetAt(Array &array, int index, const Record &points, int) {
        array.SetAt(index, points);
    }
};

TEST(PointArrayArrayTest, ActsAsItsModel) {
    ExpectActsAsModel<ListTraits>(51);
}

TEST(PointArrayArrayTest, CountsPoints) {
    CPointArrayArray lists;
    EXPECT_EQ(lists.GetPointTotalCount(), 0);
    EXPECT_EQ(lists.GetAvgPointCount(), 0);
    EXPECT_EQ(lists.GetMaxPointCount(), 0);
    EXPECT_EQ(lists.GetMinPointCount(), 0);
    lists.Add(ArrayOf({{1, 1}, {2, 2}}));
    EXPECT_EQ(lists.GetMinPointCount(), 2);
    lists.Add(ArrayOf({{1, 1}}));
    lists.Add(ArrayOf({{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}}));
    EXPECT_EQ(lists.GetPointTotalCount(), 8);
    EXPECT_EQ(lists.GetAvgPointCount(), 2);
    EXPECT_EQ(lists.GetMaxPointCount(), 5);
    EXPECT_EQ(lists.GetMinPointCount(), 1);
    lists.Remove(1);
    EXPECT_EQ(lists.GetMinPointCount(), 2);
    EXPECT_EQ(lists.GetAvgPointCount(), 3);
}

TEST(PointArrayArrayTest, StartsWithTenEmptyLists) {
    CPointArrayArray lists;
    EXPECT_EQ(lists.GetElementCount(), 0);
    lists.SetElementIndex(10);
    EXPECT_EQ(lists.GetPointTotalCount(), 0);
    lists[9].Add(1, 2);
    EXPECT_EQ(lists.GetPointTotalCount(), 1);
}

TEST(PointArrayArrayTest, CopiesAreDeep) {
    CPointArray points = ArrayOf({{1, 1}});
    CPointArrayArray lists;
    lists.Add(points);
    points.Add(2, 2);
    lists.Add(lists);
    lists[0].Add(3, 3);
    CPointArrayArray copy = lists;
    copy[1][0] = {9, 9};
    copy.Add(copy);
    EXPECT_EQ(lists.GetElementCount(), 2);
    EXPECT_EQ(PairsOf(lists[0]), (Pairs{{1, 1}, {3, 3}}));
    EXPECT_EQ(PairsOf(lists[1]), (Pairs{{1, 1}}));
    EXPECT_EQ(copy.GetElementCount(), 4);
    EXPECT_EQ(PairsOf(copy[2]), (Pairs{{1, 1}, {3, 3}}));
    EXPECT_EQ(PairsOf(copy[3]), (Pairs{{9, 9}}));
}

} // namespace
