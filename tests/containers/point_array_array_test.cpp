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
    static void Insert(Array &array, int at, const Record &points, int) {
        array.Insert(at, points);
    }
    static void SetAt(Array &array, int at, const Record &points, int) { array.SetAt(at, points); }
};

TEST(PointArrayArrayTest, ActsAsItsModel) {
    ExpectActsAsModel<ListTraits>(51);
}

TEST(PointArrayArrayTest, CountsPoints) {
    CPointArrayArray lists;
    const auto counts = [&] {
        return std::vector{lists.GetPointTotalCount(), lists.GetAvgPointCount(),
                           lists.GetMinPointCount(), lists.GetMaxPointCount()};
    };
    EXPECT_EQ(counts(), (std::vector{0, 0, 0, 0}));
    lists.SetElementIndex(10); // It starts with ten empty lists.
    EXPECT_EQ(counts(), (std::vector{0, 0, 0, 0}));
    lists[9].Add(1, 2);
    EXPECT_EQ(counts(), (std::vector{1, 0, 0, 1}));
    lists.RemoveAll();
    for (const std::size_t count : {2u, 1u, 5u})
        lists.Add(ArrayOf(Pairs(count)));
    EXPECT_EQ(counts(), (std::vector{8, 2, 1, 5}));
    lists.Remove(1);
    EXPECT_EQ(counts(), (std::vector{7, 3, 2, 5}));
}

} // namespace
