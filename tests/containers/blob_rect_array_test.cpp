#include "TAVIX20/containers/blob_rect_array.h"
#include "TAVIX20/support/stdlib.h"

#include "containers/array_model.h"

#include <cmath>
#include <tuple>

namespace {

auto Fields(const _stBlobRect &b) {
    return std::tuple(b.left, b.top, b.right, b.bottom, b.pixelCount, b.value1, b.value2,
                      b.reserved[0], b.reserved[1]);
}

/// A record with every field set, reversed edges included.
_stBlobRect RandomBlob(std::mt19937 &random) {
    std::uniform_int_distribution<long> edge(-6, 6);
    _stBlobRect blob{};
    for (long *field : {&blob.left, &blob.top, &blob.right, &blob.bottom, &blob.pixelCount})
        *field = edge(random);
    for (long *field : {&blob.value1, &blob.value2, &blob.reserved[0], &blob.reserved[1]})
        *field = static_cast<long>(random());
    return blob;
}

using Blobs = std::vector<_stBlobRect>;

Blobs RandomBlobs(std::mt19937 &random, int count) {
    Blobs blobs;
    for (int i = 0; i < count; ++i)
        blobs.push_back(RandomBlob(random));
    return blobs;
}

CBlobRectArray ArrayOf(const Blobs &blobs) {
    CBlobRectArray array;
    for (const _stBlobRect &blob : blobs)
        array.Add(blob);
    return array;
}

void ExpectEqual(const CBlobRectArray &array, const Blobs &expected) {
    ASSERT_EQ(array.GetElementCount(), static_cast<int>(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i)
        ASSERT_EQ(Fields(array[static_cast<int>(i)]), Fields(expected[i])) << i;
}

TEST(BlobRectArrayTest, AddsSetsAndRemoves) {
    CBlobRectArray array;
    array.Add(1, 2, 3, 4, 5);
    array.Add(11, 12, 13, 14, 15, 16, 17);
    const _stBlobRect full{21, 22, 23, 24, 25, 26, 27, {28, 29}};
    array.Add(full);
    ExpectEqual(array, {{1, 2, 3, 4, 5, 0, 0, {}}, {11, 12, 13, 14, 15, 16, 17, {}}, full});
    array.SetAt(2, -1, -2, -3, -4, -5);
    array.Remove(0);
    array.GetAt(0).value1 = 99;
    ExpectEqual(array, {{11, 12, 13, 14, 15, 99, 17, {}}, {-1, -2, -3, -4, -5, 26, 27, {28, 29}}});
    const CBlobRectArray copy = array;
    EXPECT_EQ(&(array + array), &array);
    array[0].left = 0;
    array.RemoveAll();
    EXPECT_EQ(array.GetElementCount(), 0);
    array + copy + copy + array;
    EXPECT_EQ(array.GetElementCount(), 8);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(Fields(array[i]), Fields(copy[i % 2])) << i;
}

TEST(BlobRectArrayTest, KeepsRecordsThroughTheScanSequence) {
    std::mt19937 random(61);
    const Blobs blobs = RandomBlobs(random, 37);
    CBlobRectArray array;
    array.SetCount(13 * 7);
    EXPECT_EQ(array.GetElementCount(), 91);
    for (int i = 0; i < 91; ++i)
        ASSERT_EQ(Fields(array[i]), Fields(_stBlobRect{})) << i;
    array.SetElementIndex(0);
    for (const _stBlobRect &blob : blobs)
        array.Add(blob);
    array.SetCount(array.GetElementCount());
    ExpectEqual(array, blobs);
    array.SetCount(-1);
    ExpectEqual(array, blobs);
    array.SetCount(5);
    ExpectEqual(array, Blobs(blobs.begin(), blobs.begin() + 5));
    array.Add(blobs[5]);
    ExpectEqual(array, Blobs(blobs.begin(), blobs.begin() + 6));
}

TEST(BlobRectArrayTest, SortsExchangeFiveFields) {
    const struct {
        const char *name;
        void (CBlobRectArray::*sort)();
        long (*key)(const _stBlobRect &);
    } cases[] = {
        {"left", &CBlobRectArray::SortLeft, [](const _stBlobRect &b) { return b.left; }},
        {"top", &CBlobRectArray::SortTop, [](const _stBlobRect &b) { return b.top; }},
        {"right", &CBlobRectArray::SortRight, [](const _stBlobRect &b) { return b.right; }},
        {"bottom", &CBlobRectArray::SortBottom, [](const _stBlobRect &b) { return b.bottom; }},
        {"width", &CBlobRectArray::SortWidth,
         [](const _stBlobRect &b) { return b.right - b.left; }},
        {"height", &CBlobRectArray::SortHeight,
         [](const _stBlobRect &b) { return b.bottom - b.top; }},
        {"pixels", &CBlobRectArray::SortPixelCount,
         [](const _stBlobRect &b) { return b.pixelCount; }},
    };
    std::mt19937 random(62);
    for (const auto &c : cases)
        for (int size = 0; size < 50; ++size) {
            Blobs model = RandomBlobs(random, size);
            CBlobRectArray array = ArrayOf(model);
            (array.*c.sort)();
            BubbleSort(model, c.key, [](_stBlobRect &a, _stBlobRect &b) {
                std::swap(a.left, b.left);
                std::swap(a.top, b.top);
                std::swap(a.right, b.right);
                std::swap(a.bottom, b.bottom);
                std::swap(a.pixelCount, b.pixelCount);
            });
            ASSERT_NO_FATAL_FAILURE(ExpectEqual(array, model)) << c.name << " " << size;
        }
}

TEST(BlobRectArrayTest, AveragesTruncate) {
    CBlobRectArray array;
    EXPECT_EQ(array.GetAverageLeft(), 0);
    EXPECT_EQ(array.GetAverageCenterY(), 0);
    EXPECT_EQ(array.CenterPoint(), (POINT{0, 0}));
    EXPECT_EQ(array.GetBounds(), (RECT{0, 0, 0, 0}));

    array.Add(10, -11, 15, -2, 0);
    EXPECT_EQ(array.GetAverageCenterX(), 12);
    EXPECT_EQ(array.GetAverageCenterY(), -7); // -11 + 9 / 2.
    array.Add(20, -20, 15, -17, 0);
    EXPECT_EQ(array.GetAverageLeft(), 15);
    EXPECT_EQ(array.GetAverageTop(), -15);
    EXPECT_EQ(array.GetAverageRight(), 15);
    EXPECT_EQ(array.GetAverageBottom(), -9);
    EXPECT_EQ(array.GetAverageCenterX(), 15);  // (12 + 18) / 2, the second 20 + -5 / 2.
    EXPECT_EQ(array.GetAverageCenterY(), -13); // (-7 + -19) / 2.
    EXPECT_EQ(array.CenterPoint(), (POINT{15, -13}));
    EXPECT_EQ(array.GetBounds(), (RECT{10, -20, 15, -2}));
    array.Add(-1, -30, 18, -29, 0);
    EXPECT_EQ(array.GetAverageLeft(), 9);
    EXPECT_EQ(array.GetAverageTop(), -20);
    EXPECT_EQ(array.GetAverageRight(), 16);
    EXPECT_EQ(array.GetAverageBottom(), -16);
    EXPECT_EQ(array.GetBounds(), (RECT{-1, -30, 18, -2}));
}

TEST(BlobRectArrayTest, RoiOverKillRemovesWhatLiesOutsideBothWays) {
    CBlobRectArray array;
    array.Add(50, 200, 60, 210, 0);
    array.Add(150, 150, 160, 160, 0);
    EXPECT_EQ(array.ROIOverKill(0, 0, 100, 100), 1);
    EXPECT_EQ(array.GetAt(0).left, 50);
    // A record around the whole region has all edges outside.
    array.Add(-1, -1, 101, 101, 0);
    array.Add(-1, -1, 100, 101, 0);
    EXPECT_EQ(array.ROIOverKill(0, 0, 100, 100), 1);
    EXPECT_EQ(array.GetAt(1).right, 100);

    std::mt19937 random(63);
    std::uniform_int_distribution<int> edge(-7, 7);
    for (int round = 0; round < 500; ++round) {
        Blobs model = RandomBlobs(random, round % 12);
        CBlobRectArray blobs = ArrayOf(model);
        const int x1 = edge(random), y1 = edge(random), x2 = edge(random), y2 = edge(random);
        int removed = 0;
        for (std::size_t i = 0; i < model.size();) {
            const _stBlobRect &b = model[i];
            const bool leftOut = b.left < x1 || b.left > x2;
            const bool rightOut = b.right < x1 || b.right > x2;
            const bool topOut = b.top < y1 || b.top > y2;
            const bool bottomOut = b.bottom < y1 || b.bottom > y2;
            if (leftOut && rightOut && topOut && bottomOut) {
                model.erase(model.begin() + static_cast<std::ptrdiff_t>(i));
                ++removed;
            } else {
                ++i;
            }
        }
        ASSERT_EQ(blobs.ROIOverKill(x1, y1, x2, y2), removed);
        ASSERT_NO_FATAL_FAILURE(ExpectEqual(blobs, model)) << round;
    }
}

TEST(BlobRectArrayTest, DistanceOverKillRemovesWhatLiesFarFromItsSuccessor) {
    const auto centre = [](const _stBlobRect &b) {
        return std::pair(static_cast<int>(b.left + (b.right - b.left) / 2),
                         static_cast<int>(b.top + (b.bottom - b.top) / 2));
    };
    std::mt19937 random(64);
    for (int round = 0; round < 900; ++round) {
        Blobs model = RandomBlobs(random, round % 15);
        CBlobRectArray blobs = ArrayOf(model);
        const double limit = static_cast<double>(random() % 24) / 2;
        int removed = 0;
        for (int i = 0; i < static_cast<int>(model.size()) - 1;) {
            const auto at = model.begin() + i;
            const auto [x1, y1] = centre(at[0]);
            const auto [x2, y2] = centre(at[1]);
            if (static_cast<double>(CStdlib::Distance(x1, y1, x2, y2)) > limit) {
                model.erase(at);
                ++removed;
            } else {
                ++i;
            }
        }
        ASSERT_EQ(blobs.DistanceOverKill(limit), removed);
        ASSERT_NO_FATAL_FAILURE(ExpectEqual(blobs, model)) << round;
    }

    // The distance is truncated before it is compared: 1.41 is not above 1.
    CBlobRectArray diagonal;
    diagonal.Add(0, 0, 0, 0, 1);
    diagonal.Add(1, 1, 1, 1, 1);
    EXPECT_EQ(diagonal.DistanceOverKill(1.0), 0);
    EXPECT_EQ(diagonal.DistanceOverKill(0.9), 1);
    EXPECT_EQ(diagonal.GetAt(0).left, 1);
    EXPECT_EQ(diagonal.DistanceOverKill(-1.0), 0);
}

} // namespace
