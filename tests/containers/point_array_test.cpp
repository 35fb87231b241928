#include "TAVIX20/containers/point_array.h"
#include "TAVIX20/containers/size_array.h"
#include "TAVIX20/support/stdlib.h"

#include "containers/array_model.h"
#include "containers/point_list.h"

#include <algorithm>
#include <memory>

namespace {

using TavixArray::CPointArray;
using TavixArray::CSizeArray;

using PointTraits = FieldTraits<CPointArray, tagPOINT, &tagPOINT::x, &tagPOINT::y>;
using SizeTraits = FieldTraits<CSizeArray, tagSIZE, &tagSIZE::cx, &tagSIZE::cy>;

TEST(PointArrayTest, PointsAndSizesActAndSortAsTheirModel) {
    for (const unsigned seed : {1u, 2u, 3u})
        ASSERT_NO_FATAL_FAILURE(ExpectActsAsModel<PointTraits>(seed));
    ExpectActsAsModel<SizeTraits>(41);
    ExpectSortsAsModel<PointTraits>(&CPointArray::SortX, &tagPOINT::x);
    ExpectSortsAsModel<PointTraits>(&CPointArray::SortY, &tagPOINT::y);
    ExpectSortsAsModel<SizeTraits>(&CSizeArray::SortWidth, &tagSIZE::cx);
    ExpectSortsAsModel<SizeTraits>(&CSizeArray::SortHeight, &tagSIZE::cy);
}

TEST(PointArrayTest, SetSizeLeavesTheCount) {
    CPointArray array = ArrayOf({{1, 1}, {2, 2}, {3, 3}});
    array.SetSize(2);
    array.Add(4, 4);
    EXPECT_EQ(PairsOf(array), (Pairs{{1, 1}, {2, 2}, {3, 3}, {4, 4}}));
    // One record more than asked for is there.
    array.SetSize(40);
    array.GetBufPtr()[40] = {7, 7};
    array.SetElementIndex(41);
    EXPECT_EQ(array[40], (tagPOINT{7, 7}));
}

TEST(PointArrayTest, ComparesLopsidedly) {
    const CPointArray two = ArrayOf({{1, 2}, {3, 4}});
    const struct {
        const char *name;
        Pairs other;
        int equal, unequal;
    } cases[] = {
        {"same", {{1, 2}, {3, 4}}, 1, 0},
        {"longer", {{1, 2}, {3, 4}, {5, 6}}, 0, 0},
        {"empty", {}, 0, 0},
        {"other x", {{1, 2}, {0, 4}}, 0, 1},
        {"other y", {{1, 2}, {3, 0}}, 0, 1},
        {"other order", {{3, 4}, {1, 2}}, 0, 1},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(two == ArrayOf(c.other), c.equal) << c.name;
        EXPECT_EQ(two != ArrayOf(c.other), c.unequal) << c.name;
    }
    EXPECT_EQ(CPointArray(-5) == CPointArray(30), 1);
    CPointArray trimmed = ArrayOf({{1, 2}, {3, 4}, {5, 6}});
    trimmed.SetElementIndex(2);
    EXPECT_EQ(two == trimmed, 1);
}

TEST(PointArrayTest, PointsAndSizesAreFoundFromTheStart) {
    const CPointArray points = ArrayOf({{1, 2}, {3, 4}, {1, 2}, {1, 4}});
    CSizeArray sizes;
    for (const auto &[width, height] : PairsOf(points))
        sizes.Add(width, height);
    const struct {
        int x, y, start, expected;
    } cases[] = {{1, 2, 0, 0}, {1, 2, -7, 0}, {1, 2, 1, 2},   {1, 2, 3, -1}, {1, 4, 0, 3},
                 {1, 4, 3, 3}, {1, 4, 4, -1}, {1, 4, 99, -1}, {3, 2, 0, -1}};
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.x << "," << c.y << " from " << c.start);
        EXPECT_EQ(points.Find(c.x, c.y, c.start, 0), c.expected);
        EXPECT_EQ(points.Find(tagPOINT{c.x, c.y}, c.start, 0), c.expected);
        EXPECT_EQ(sizes.Find(c.x, c.y, c.start), c.expected);
    }
    EXPECT_EQ(points.IsPoint(1, 4), 3);
    EXPECT_EQ(CPointArray().Find(0, 0, 0, 1), -1);
}

TEST(PointArrayTest, ThreadedFindReportsTheFirstMatchOfASlice) {
    const int workers = CStdlib::GetNumOfProcessors();
    std::mt19937 random(5);
    for (int round = 0; round < 400; ++round) {
        const auto most = static_cast<unsigned>(round % 2 == 0 ? 2 * workers : 30000);
        const int count = 1 + static_cast<int>(random() % most);
        const unsigned range = round % 3 == 0 ? 3000000 : round % 3 == 1 ? 3000 : 9;
        CPointArray array;
        for (int i = 0; i < count; ++i)
            array.Add(static_cast<int>(random() % range), 0);
        if (round % 5 == 0)
            array[round % 2 == 0 ? 0 : count - 1] = {7, 0};
        // Up to one point a worker the threads are not used, and the start counts.
        const int slices = count > workers ? workers : 1;
        std::vector<int> allowed;
        for (int k = 0; k < slices; ++k) {
            const int end = k == slices - 1 ? count : count / slices * (k + 1);
            const int first = array.Find(7, 0, slices == 1 ? 1 : count / slices * k, 0);
            if (first >= 0 && first < end)
                allowed.push_back(first);
        }
        if (allowed.empty())
            allowed.push_back(-1);
        const int found = array.Find(tagPOINT{7, 0}, 1, 1);
        ASSERT_EQ(std::count(allowed.begin(), allowed.end(), found), 1) << found;
    }
}

TEST(PointArrayTest, ReversesAndRemovesPoints) {
    CPointArray array = ArrayOf({{1, 1}, {2, 2}, {1, 1}, {3, 3}});
    array.RemovePoint(1, 1);
    array.RemovePoint(8, 8);
    array.ReverseElements();
    EXPECT_EQ(PairsOf(array), (Pairs{{3, 3}, {1, 1}, {2, 2}}));
    array.RemovePoint(2, 2);
    array.ReverseElements();
    EXPECT_EQ(PairsOf(array), (Pairs{{1, 1}, {3, 3}}));
}

TEST(PointArrayTest, CopiesMovesAndAppends) {
    const Pairs pairs{{1, 1}, {2, 2}};
    CPointArray array = ArrayOf(pairs);
    CPointArray &self = array;
    array = self;
    const std::unique_ptr<tagPOINT[]> points(array.GetPointPtr());
    EXPECT_EQ(PairsOf(CPointArray(points.get(), 2)), pairs);
    EXPECT_EQ(CPointArray().GetPointPtr(), nullptr);
    const CPointArray taken = std::move(array);
    EXPECT_EQ(PairsOf(taken), pairs);
    array = ArrayOf(pairs);
    EXPECT_EQ(&(array + array), &array);
    EXPECT_EQ(PairsOf(array), (Pairs{{1, 1}, {2, 2}, {1, 1}, {2, 2}}));
    array.AddPoints(array.GetBufPtr() + 1, 3);
    array + CPointArray();
    array.AddPoints(array.GetBufPtr(), 0);
    array.AddPoints(array.GetBufPtr(), -1);
    array.AddPoints(nullptr, 3);
    EXPECT_EQ(PairsOf(array), (Pairs{{1, 1}, {2, 2}, {1, 1}, {2, 2}, {2, 2}, {1, 1}, {2, 2}}));
}

} // namespace
