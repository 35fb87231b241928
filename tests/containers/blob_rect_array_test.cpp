#include "TAVIX20/containers/blob_rect_array.h"
#include "TAVIX20/support/stdlib.h"

#include "containers/array_model.h"

namespace {

using Blob = _stBlobRect;

struct BlobTraits : FieldTraits<CBlobRectArray, Blob, &Blob::left, &Blob::top, &Blob::right,
                                &Blob::bottom, &Blob::pixelCount, &Blob::value1, &Blob::value2> {
    static Blob Random(std::mt19937 &random) {
        Blob blob = FieldTraits::Random(random);
        for (long &field : blob.reserved)
            field = static_cast<long>(random());
        return blob;
    }
    static auto Fields(const Blob &b) {
        return std::tuple(FieldTraits::Fields(b), b.reserved[0], b.reserved[1]);
    }
};

constexpr auto ExpectBlobs = ExpectHolds<BlobTraits>;

TEST(BlobRectArrayTest, AddsSetsAndRemoves) {
    CBlobRectArray array;
    array.Add(1, 2, 3, 4, 5);
    array.Add(11, 12, 13, 14, 15, 16, 17);
    array.Add({21, 22, 23, 24, 25, 26, 27, {28, 29}});
    ExpectBlobs(array, {{1, 2, 3, 4, 5, 0, 0, {}},
                        {11, 12, 13, 14, 15, 16, 17, {}},
                        {21, 22, 23, 24, 25, 26, 27, {28, 29}}});
    array.SetAt(2, -1, -2, -3, -4, -5);
    array.Remove(0);
    array.GetAt(0).value1 = 99;
    const Blob a{11, 12, 13, 14, 15, 99, 17, {}};
    const Blob b{-1, -2, -3, -4, -5, 26, 27, {28, 29}};
    EXPECT_EQ(&(array + array), &array);
    ExpectBlobs(array, {a, b, a, b});
}

TEST(BlobRectArrayTest, SetCountKeepsTheFirstRecords) {
    CBlobRectArray array;
    array.SetCount(13 * 7);
    ExpectBlobs(array, std::vector<Blob>(91));
    std::mt19937 random(61);
    std::vector<Blob> blobs;
    std::tie(array, blobs) = RandomRecords<BlobTraits>(random, 37);
    for (const int count : {37, -1}) {
        array.SetCount(count);
        ExpectBlobs(array, blobs);
    }
    array.SetCount(5);
    array.Add(blobs[5]);
    blobs.resize(6);
    ExpectBlobs(array, blobs);
}

TEST(BlobRectArrayTest, SortsExchangeFiveFields) {
    const auto expectSorts = [](auto sort, auto key) {
        ExpectSortsAsModel<BlobTraits>(sort, key, [](Blob &a, Blob &b) {
            for (const auto field :
                 {&Blob::left, &Blob::top, &Blob::right, &Blob::bottom, &Blob::pixelCount})
                std::swap(a.*field, b.*field);
        });
    };
    expectSorts(&CBlobRectArray::SortLeft, &Blob::left);
    expectSorts(&CBlobRectArray::SortTop, &Blob::top);
    expectSorts(&CBlobRectArray::SortRight, &Blob::right);
    expectSorts(&CBlobRectArray::SortBottom, &Blob::bottom);
    expectSorts(&CBlobRectArray::SortWidth, [](const Blob &b) { return b.right - b.left; });
    expectSorts(&CBlobRectArray::SortHeight, [](const Blob &b) { return b.bottom - b.top; });
    expectSorts(&CBlobRectArray::SortPixelCount, &Blob::pixelCount);
}

TEST(BlobRectArrayTest, AveragesTruncate) {
    CBlobRectArray array;
    const auto averages = [&] {
        return std::vector{array.GetAverageLeft(),    array.GetAverageTop(),
                           array.GetAverageRight(),   array.GetAverageBottom(),
                           array.GetAverageCenterX(), array.GetAverageCenterY()};
    };
    EXPECT_EQ(averages(), std::vector<long>(6));
    EXPECT_EQ(array.GetBounds(), (RECT{0, 0, 0, 0}));
    array.Add(10, -11, 15, -2, 0);
    array.Add(20, -20, 15, -17, 0);
    // The centres are (12 + 18) / 2, the second 20 + -5 / 2, and (-7 + -19) / 2.
    EXPECT_EQ(averages(), (std::vector<long>{15, -15, 15, -9, 15, -13}));
    EXPECT_EQ(array.CenterPoint(), (POINT{15, -13}));
    EXPECT_EQ(array.GetBounds(), (RECT{10, -20, 15, -2}));
}

TEST(BlobRectArrayTest, OverKillRemovesWhatLiesOutsideBothWaysOrFarFromItsSuccessor) {
    const auto distance = [](const Blob &a, const Blob &b) {
        const auto middle = [](long from, long to) {
            return static_cast<int>(from + (to - from) / 2);
        };
        return CStdlib::Distance(middle(a.left, a.right), middle(a.top, a.bottom),
                                 middle(b.left, b.right), middle(b.top, b.bottom));
    };
    std::mt19937 random(63);
    for (int round = 0; round < 1500; ++round) {
        auto [array, model] = RandomRecords<BlobTraits>(random, round % 15);
        const bool byDistance = round % 2 == 0;
        const double limit = static_cast<double>(random() % 24) / 2;
        int roi[4];
        for (int &edge : roi)
            edge = std::uniform_int_distribution(-7, 11)(random);
        const auto isOut = [](long value, int low, int high) {
            return value < low || value > high;
        };
        int removed = 0;
        for (auto at = model.begin(); at != model.end();) {
            const bool isDoomed =
                byDistance
                    ? at + 1 != model.end() && static_cast<double>(distance(at[0], at[1])) > limit
                    : isOut(at->left, roi[0], roi[2]) && isOut(at->right, roi[0], roi[2]) &&
                          isOut(at->top, roi[1], roi[3]) && isOut(at->bottom, roi[1], roi[3]);
            removed += isDoomed ? 1 : 0;
            at = isDoomed ? model.erase(at) : at + 1;
        }
        ASSERT_EQ(byDistance ? array.DistanceOverKill(limit)
                             : array.ROIOverKill(roi[0], roi[1], roi[2], roi[3]),
                  removed);
        ASSERT_NO_FATAL_FAILURE(ExpectBlobs(array, model)) << round;
    }
}

} // namespace
