#include "TAVIX20/containers/color_pixel_array.h"
#include "TAVIX20/containers/pixel_array_array.h"
#include "TAVIX20/containers/pixel_bunch_array.h"
#include "TAVIX20/containers/sort_byte_array.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include "containers/array_model.h"
#include "containers/point_list.h"

#include <map>
#include <memory>

namespace {

using namespace TavixArray;

using Pixel = _stPixel;
using Colour = _stColorPixel;
using Bunch = _stPixelBunch;
using PixelTraits =
    FieldTraits<CPixelArray, Pixel, &Pixel::x, &Pixel::y, &Pixel::grayLevel, &Pixel::parameter>;
using ColorTraits = FieldTraits<CColorPixelArray, Colour, &Colour::x, &Colour::y, &Colour::colour>;
using BunchTraits =
    FieldTraits<CPixelBunchArray, Bunch, &Bunch::grayLevel, &Bunch::totalCount, &Bunch::percent>;

TEST(PixelArraysTest, ActAndSortAsTheirModels) {
    ExpectActsAsModel<PixelTraits>(91);
    ExpectActsAsModel<ColorTraits>(92);
    ExpectActsAsModel<BunchTraits>(93);
    const auto sortX = [](auto &array) { array.SortX(); };
    ExpectSortsAsModel<PixelTraits>(sortX, &Pixel::x);
    ExpectSortsAsModel<ColorTraits>(sortX, &Colour::x);
    ExpectSortsAsModel<PixelTraits>([](auto &array) { array.SortY(); }, &Pixel::y);
    ExpectSortsAsModel<PixelTraits>(&CPixelArray::SortGrayLevel, &Pixel::grayLevel);
    ExpectSortsAsModel<PixelTraits>(&CPixelArray::SortParameter, &Pixel::parameter);
    ExpectSortsAsModel<BunchTraits>(&CPixelBunchArray::SortGrayLevel, &Bunch::grayLevel);
    ExpectSortsAsModel<BunchTraits>(&CPixelBunchArray::SortTotalCount, &Bunch::totalCount);
    ExpectSortsAsModel<BunchTraits>(&CPixelBunchArray::SortPercent, &Bunch::percent);
}

TEST(PixelArraysTest, TakeAndGiveFields) {
    CPixelArray pixels;
    EXPECT_EQ(pixels.GetMinLevel() + pixels.GetMaxLevel() + pixels.GetAvgLevel(), 0);
    for (const int level : {12, 255, 13})
        pixels.Add(-3, level, static_cast<BYTE>(level), 0.0);
    pixels.Insert(0, 5, -6, 10, 0.25);
    EXPECT_EQ(PixelTraits::Fields(pixels[0]), std::tuple(5, -6, 10, 0.25));
    EXPECT_EQ(pixels.GetMinLevel(), 10);
    EXPECT_EQ(pixels.GetMaxLevel(), 255);
    EXPECT_EQ(pixels.GetAvgLevel(), 133); // (10 + 255 + 255 + 13) / 4 is 133.25.
    CPointArray points;
    CSortByteArray levels;
    for (int call = 0; call < 2; ++call) {
        pixels.GetPointArray(points);
        pixels.GetLevelArray(levels);
    }
    EXPECT_EQ(PairsOf(points), (Pairs{{5, -6}, {-3, 255}, {-3, 255}, {-3, 13}}));
    EXPECT_EQ(levels.GetElementCount(), 4);
    EXPECT_EQ(levels.GetSum(), 533);
    CPixelArrayArray lists;
    EXPECT_EQ(lists.GetTotalPixelCount(), 0);
    for (const CPixelArray &list : {pixels, CPixelArray(), pixels})
        lists.Add(list);
    EXPECT_EQ(lists.GetTotalPixelCount(), 8);

    CColorPixelArray colours;
    colours.Add(1, 2, 0x12, 0x34, 0x56);
    ExpectHolds<ColorTraits>(colours, {{1, 2, 0x563412, {}}});
    EXPECT_EQ(colours[0].reserved[0] | colours[0].reserved[1] | colours[0].reserved[2], 0);

    CPixelBunchArray bunches;
    for (const Bunch &b :
         {Bunch{1, 2, 3.0}, {9, 2, 3.0}, {1, 1, 3.0}, {1, 2, 2.0}, {1, 2, 9.0}, {1, 2, 3.0}})
        bunches.Add(b);
    const int found[] = {0, 0, 5, 5, 5, 5, 5, -1};
    for (int start = -1; start < 7; ++start)
        EXPECT_EQ(bunches.Find({1, 2, 3.0}, start), found[start + 1]) << start;
}

/// Compares the image and the bounds of random samples with a map from places to values.
template <typename Image, typename SampleTraits, typename Value, typename Background>
void ExpectDrawsItsSamples(Value SampleTraits::Record::*value, Background background) {
    std::mt19937 random(96);
    for (int round = 0; round < 200; ++round) {
        typename SampleTraits::Array array;
        EXPECT_EQ(array.GetBounds(), CRect(0, 0, 0, 0));
        EXPECT_EQ(array.GetImage(background), nullptr);
        std::map<std::pair<int, int>, Value> places;
        CRect bounds(1000, 1000, -1000, -1000);
        for (int i = 0; i <= round % 9; ++i) {
            const auto s = SampleTraits::Random(random);
            array.Add(s);
            places[{s.x, s.y}] = s.*value;
            bounds = CRect(std::min(bounds.left, s.x), std::min(bounds.top, s.y),
                           std::max(bounds.right, s.x), std::max(bounds.bottom, s.y));
        }
        ASSERT_EQ(array.GetBounds(), bounds);
        const std::unique_ptr<Image> image(array.GetImage(background));
        ASSERT_TRUE(image);
        ASSERT_EQ(image->GetWidth(), bounds.Width() + 1);
        ASSERT_EQ(image->GetHeight(), bounds.Height() + 1);
        for (int y = bounds.top; y <= bounds.bottom; ++y)
            for (int x = bounds.left; x <= bounds.right; ++x)
                ASSERT_EQ(image->GetPixel(x - bounds.left, y - bounds.top),
                          (places.contains({x, y}) ? places[{x, y}] : background))
                    << "round " << round << " at " << x << ", " << y;
    }
    const tagPOINT tooFar[][2] = {{{INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX}},
                                  {{-1, -1}, {65534, 32767}}};
    for (const auto &[a, b] : tooFar) {
        typename SampleTraits::Array array;
        array.Add({a.x, a.y, {}, {}});
        array.Add({b.x, b.y, {}, {}});
        EXPECT_EQ(array.GetImage(background), nullptr) << b.x;
        array.Remove(0);
        const std::unique_ptr<Image> image(array.GetImage(background));
        EXPECT_TRUE(image && image->GetImageLen() == 4 && image->GetPixel(0, 0) == 0) << b.x;
    }
}

TEST(PixelArraysTest, DrawTheirSamples) {
    ExpectDrawsItsSamples<CTavixImage8, PixelTraits>(&Pixel::grayLevel, BYTE{77});
    ExpectDrawsItsSamples<CTavixImage24, ColorTraits>(&Colour::colour, 0x654321ul);
}

} // namespace
