#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/support/stdlib.h"

#include "containers/array_model.h"
#include "containers/point_list.h"

#include <map>
#include <memory>

namespace {

using TavixArray::CPointArray;

struct PointTraits {
    using Array = CPointArray;
    using Record = tagPOINT;
    static Record Random(std::mt19937 &random) {
        std::uniform_int_distribution<int> coordinate(-6, 6);
        const int x = coordinate(random);
        return {x, coordinate(random)};
    }
    static std::pair<int, int> Fields(const Record &point) { return {point.x, point.y}; }
    static void Add(Array &array, const Record &point, int form) {
        form == 0 ? array.Add(point.x, point.y) : array.Add(point);
    }
    static void Insert(Array &array, int index, const Record &point, int form) {
        form == 0 ? array.Insert(index, point.x, point.y) : array.Insert(index, point);
    }
    static void SetAt(Array &array, int index, const Record &point, int form) {
        form == 0 ? array.SetAt(index, point.x, point.y) : array.SetAt(index, point);
    }
};

TEST(PointArrayTest, ActsAsItsModel) {
    for (const unsigned seed : {1u, 2u, 3u})
        ASSERT_NO_FATAL_FAILURE(ExpectActsAsModel<PointTraits>(seed));
}

TEST(PointArrayTest, InsertOverwrites) {
    const struct {
        int index;
        Pairs expected;
    } cases[] = {
        {0, {{9, 9}, {2, 2}, {2, 2}, {3, 3}}},
        {1, {{1, 1}, {9, 9}, {3, 3}, {3, 3}}},
        {2, {{1, 1}, {2, 2}, {9, 9}, {3, 3}}},
        {3, {{1, 1}, {2, 2}, {3, 3}, {9, 9}}},
    };
    for (const auto &c : cases) {
        CPointArray array = ArrayOf({{1, 1}, {2, 2}, {3, 3}});
        array.Insert(c.index, 9, 9);
        EXPECT_EQ(PairsOf(array), c.expected) << c.index;
    }
}

TEST(PointArrayTest, StartsWithRoomForTheGivenCapacity) {
    CPointArray roomy(25);
    EXPECT_EQ(roomy.GetElementCount(), 0);
    for (int i = 0; i < 25; ++i)
        roomy.GetBufPtr()[i] = {i, -i};
    roomy.SetElementIndex(25);
    EXPECT_EQ(PairsOf(roomy).back(), std::pair(24, -24));
    for (const int none : {0, -5}) {
        CPointArray array(none);
        array.Add(tagPOINT{1, 2});
        EXPECT_EQ(PairsOf(array), (Pairs{{1, 2}})) << none;
    }
}

TEST(PointArrayTest, SetSizeLeavesTheCount) {
    CPointArray array = ArrayOf({{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}});
    array.SetSize(2);
    EXPECT_EQ(array.GetElementCount(), 5);
    EXPECT_EQ(array[1], (tagPOINT{2, 2}));
    array.Add(6, 6);
    EXPECT_EQ(array.GetElementCount(), 6);
    EXPECT_EQ(array[5], (tagPOINT{6, 6}));

    // One record more than asked for is there.
    array.SetSize(40);
    array.GetBufPtr()[40] = {7, 7};
    array.SetElementIndex(41);
    EXPECT_EQ(array[40], (tagPOINT{7, 7}));
    array.SetElementIndex(2);
    EXPECT_EQ(PairsOf(array), (Pairs{{1, 1}, {2, 2}}));
}

TEST(PointArrayTest, ComparesLopsidedly) {
    const CPointArray two = ArrayOf({{1, 2}, {3, 4}});
    const CPointArray three = ArrayOf({{1, 2}, {3, 4}, {5, 6}});
    const CPointArray differsInX = ArrayOf({{1, 2}, {0, 4}});
    const CPointArray differsInY = ArrayOf({{1, 2}, {3, 0}});
    const CPointArray turned = ArrayOf({{3, 4}, {1, 2}});
    const struct {
        const char *name;
        const CPointArray &other;
        int equal, unequal;
    } cases[] = {
        {"itself", two, 1, 0},          {"longer", three, 0, 0},
        {"empty", CPointArray(), 0, 0}, {"other x", differsInX, 0, 1},
        {"other y", differsInY, 0, 1},  {"other order", turned, 0, 1},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(two == c.other, c.equal) << c.name;
        EXPECT_EQ(two != c.other, c.unequal) << c.name;
    }
    EXPECT_EQ(CPointArray() == CPointArray(30), 1);
    EXPECT_EQ(CPointArray() != CPointArray(), 0);
    CPointArray trimmed = three;
    trimmed.SetElementIndex(2);
    EXPECT_EQ(two == trimmed, 1);
}

TEST(PointArrayTest, FindsFromTheStart) {
    const CPointArray array = ArrayOf({{1, 2}, {3, 4}, {1, 2}, {1, 4}});
    const struct {
        int x, y, start, expected;
    } cases[] = {{1, 2, 0, 0}, {1, 2, -7, 0}, {1, 2, 1, 2},   {1, 2, 3, -1}, {1, 4, 0, 3},
                 {1, 4, 3, 3}, {1, 4, 4, -1}, {1, 4, 99, -1}, {3, 2, 0, -1}};
    for (const auto &c : cases) {
        EXPECT_EQ(array.Find(c.x, c.y, c.start, 0), c.expected)
            << c.x << "," << c.y << "," << c.start;
        EXPECT_EQ(array.Find(tagPOINT{c.x, c.y}, c.start, 0), c.expected);
    }
    EXPECT_EQ(array.IsPoint(1, 2), 0);
    EXPECT_EQ(array.IsPoint(2, 1), -1);
    EXPECT_EQ(CPointArray().IsPoint(0, 0), -1);
    EXPECT_EQ(CPointArray().Find(0, 0, 0, 1), -1);
}

TEST(PointArrayTest, ThreadedFindAgreesOnUniquePoints) {
    for (const int count : {1, 2, 3, 5, 17, 1000, 50001}) {
        CPointArray array;
        for (int i = 0; i < count; ++i)
            array.Add(i % 251, i / 251);
        for (int i = 0; i < count; i += std::max(1, count / 41)) {
            ASSERT_EQ(array.Find(i % 251, i / 251, 0, 1), i) << count;
            ASSERT_EQ(array.Find(array[i], 0, 1), i) << count;
        }
        ASSERT_EQ(array.Find((count - 1) % 251, (count - 1) / 251, 0, 1), count - 1);
        ASSERT_EQ(array.Find(-1, 0, 0, 1), -1);
    }
}

TEST(PointArrayTest, ThreadedFindIgnoresTheStartOnlyAboveTheWorkerCount) {
    const int workers = CStdlib::GetNumOfProcessors();
    CPointArray array;
    for (int i = 0; i < workers; ++i)
        array.Add(i, 0);
    EXPECT_EQ(array.Find(0, 0, 1, 1), -1);
    array.Add(workers, 0);
    EXPECT_EQ(array.Find(0, 0, 1, 1), 0);
    EXPECT_EQ(array.Find(0, 0, 1, 0), -1);
}

TEST(PointArrayTest, ThreadedFindReportsTheFirstMatchOfASlice) {
    const int workers = CStdlib::GetNumOfProcessors();
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        const int count = 1 + static_cast<int>(random() % 30000);
        CPointArray array;
        for (int i = 0; i < count; ++i)
            array.Add(static_cast<int>(random() % 2000), 0);
        const int found = array.Find(7, 0, 0, 1);
        std::vector<int> allowed;
        const int slices = count > workers ? workers : 1;
        for (int k = 0; k < slices; ++k) {
            const int end = k == slices - 1 ? count : count / slices * (k + 1);
            const int first = array.Find(7, 0, count / slices * k, 0);
            if (first >= 0 && first < end)
                allowed.push_back(first);
        }
        if (allowed.empty())
            allowed.push_back(-1);
        ASSERT_NE(std::find(allowed.begin(), allowed.end(), found), allowed.end()) << found;
    }
}

TEST(PointArrayTest, SortsAsItsModel) {
    ExpectSortsAsModel<PointTraits>(&CPointArray::SortX, &tagPOINT::x);
    ExpectSortsAsModel<PointTraits>(&CPointArray::SortY, &tagPOINT::y);
}

TEST(PointArrayTest, SortsManyDescendingPointsStably) {
    constexpr int count = 100000;
    CPointArray byX;
    CPointArray byY;
    std::map<int, std::vector<int>> buckets;
    for (int i = 0; i < count; ++i) {
        const int key = (count - i) / 7 - 5000;
        byX.Add(key, i);
        byY.Add(i, key);
        buckets[key].push_back(i);
    }
    byX.SortX();
    byY.SortY();
    int at = 0;
    for (const auto &[key, members] : buckets)
        for (const int member : members) {
            ASSERT_EQ(byX[at], (tagPOINT{key, member})) << at;
            ASSERT_EQ(byY[at], (tagPOINT{member, key})) << at;
            ++at;
        }
    EXPECT_EQ(at, byX.GetElementCount());
}

TEST(PointArrayTest, ReversesAndRemovesPoints) {
    CPointArray array = ArrayOf({{1, 1}, {2, 2}, {1, 1}, {3, 3}});
    array.RemovePoint(1, 1);
    array.RemovePoint(8, 8);
    EXPECT_EQ(PairsOf(array), (Pairs{{2, 2}, {1, 1}, {3, 3}}));
    array.ReverseElements();
    EXPECT_EQ(PairsOf(array), (Pairs{{3, 3}, {1, 1}, {2, 2}}));
    array.RemovePoint(2, 2);
    array.ReverseElements();
    EXPECT_EQ(PairsOf(array), (Pairs{{1, 1}, {3, 3}}));
}

TEST(PointArrayTest, CopiesAreDeep) {
    CPointArray array = ArrayOf({{1, 1}, {2, 2}});
    CPointArray copy = array;
    CPointArray assigned = ArrayOf({{7, 7}, {8, 8}, {9, 9}});
    assigned = array;
    CPointArray &self = array;
    array = self;
    array[0] = {5, 5};
    EXPECT_EQ(PairsOf(array), (Pairs{{5, 5}, {2, 2}}));
    EXPECT_EQ(PairsOf(copy), (Pairs{{1, 1}, {2, 2}}));
    EXPECT_EQ(PairsOf(assigned), (Pairs{{1, 1}, {2, 2}}));
    copy.Add(3, 3);
    assigned.Insert(0, 4, 4);
    EXPECT_EQ(PairsOf(copy), (Pairs{{1, 1}, {2, 2}, {3, 3}}));
    EXPECT_EQ(PairsOf(assigned), (Pairs{{4, 4}, {2, 2}, {2, 2}}));

    CPointArray taken = std::move(array);
    EXPECT_EQ(PairsOf(taken), (Pairs{{5, 5}, {2, 2}}));
    array = CPointArray();
    array.Add(6, 6);
    EXPECT_EQ(PairsOf(array), (Pairs{{6, 6}}));

    const std::unique_ptr<tagPOINT[]> points(taken.GetPointPtr());
    ASSERT_NE(points, nullptr);
    taken[1] = {0, 0};
    EXPECT_EQ(PairsOf(CPointArray(points.get(), 2)), (Pairs{{5, 5}, {2, 2}}));
    EXPECT_EQ(CPointArray().GetPointPtr(), nullptr);
}

TEST(PointArrayTest, AppendsListsAndItself) {
    CPointArray array = ArrayOf({{1, 1}, {2, 2}});
    array.Add(array);
    EXPECT_EQ(PairsOf(array), (Pairs{{1, 1}, {2, 2}, {1, 1}, {2, 2}}));
    EXPECT_EQ(&(array + array), &array);
    EXPECT_EQ(array.GetElementCount(), 8);
    array.AddPoints(array.GetBufPtr() + 1, 7);
    EXPECT_EQ(array.GetElementCount(), 15);
    EXPECT_EQ(array[8], (tagPOINT{2, 2}));
    array + CPointArray();
    array.AddPoints(array.GetBufPtr(), 0);
    array.AddPoints(array.GetBufPtr(), -1);
    array.AddPoints(nullptr, 3);
    EXPECT_EQ(array.GetElementCount(), 15);
}

} // namespace
