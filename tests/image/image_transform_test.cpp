#include "image/image_test.h"

#include <opencv2/imgproc.hpp>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <memory>

namespace {

using namespace tavix_test;

/// The image with other pixels and its own padding.
Bytes WithPixels(const CTavixImage &image, const cv::Mat &pixels) {
    Bytes bytes = BytesOf(image);
    const auto stride = bytes.size() / static_cast<std::size_t>(pixels.rows);
    for (int y = 0; y < pixels.rows; ++y)
        std::memcpy(&bytes[static_cast<std::size_t>(y) * stride], pixels.ptr(y),
                    static_cast<std::size_t>(pixels.cols) * pixels.elemSize());
    return bytes;
}

template <typename Image>
class ImageTransformTest : public ImageTest<Image> {};
TYPED_TEST_SUITE(ImageTransformTest, ImageTypes);

TYPED_TEST(ImageTransformTest, ResizesAsOpenCVWithClearedPadding) {
    const int interpolations[] = {cv::INTER_NEAREST, cv::INTER_AREA, cv::INTER_LINEAR};
    this->ForRandomImages(40, 70, [&](const TypeParam &image) {
        const cv::Size target(this->Within(1, 90), this->Within(1, 90));
        for (const int mode : {0, 1, 2, 3, -1}) {
            cv::Mat expected = cv::Mat::zeros(target, PixelsOf(image).type());
            if (mode >= 0 && mode <= 2)
                cv::resize(PixelsOf(image), expected, target, 0, 0, interpolations[mode]);
            TypeParam resized = image;
            resized.Resize(target.width, target.height, mode);
            EXPECT_EQ(BytesOf(resized),
                      WithPixels(TypeParam(target.width, target.height), expected))
                << mode;
        }
    });
    TypeParam image(5, 7);
    image.Resize(0.5, 0);
    EXPECT_EQ(cv::Size(image.GetWidth(), image.GetHeight()), cv::Size(2, 3));
    for (const double scale : {0.0, 0.3, -1.0, 1e9, DBL_MAX, double{NAN}, double{INFINITY}})
        image.Resize(scale, 0);
    image.Resize(0, 5, 1);
    image.Resize(INT_MAX, INT_MAX, 1);
    image.Resize(-4, 5, 9);
    EXPECT_EQ(cv::Size(image.GetWidth(), image.GetHeight()), cv::Size(2, 3));
}

TYPED_TEST(ImageTransformTest, TurnsAndMirrorsAsOpenCVAndLeavesPadding) {
    using Operation = void (*)(TypeParam &);
    const struct {
        const char *name;
        double angle; ///< NAN where it is a flip.
        int flipCode;
        Operation apply;
    } cases[] = {
        {"Rotate(30)", 30, 0, [](TypeParam &image) { image.Rotate(30, 200); }},
        {"Rotate(-123.4)", -123.4, 0, [](TypeParam &image) { image.Rotate(-123.4, 7); }},
        {"Rotate90L", 90, 0, [](TypeParam &image) { image.Rotate90L(); }},
        {"Rotate90R", -90, 0, [](TypeParam &image) { image.Rotate90R(); }},
        {"Rotate180", 180, 0, [](TypeParam &image) { image.Rotate180(); }},
        {"RotateHorzFlip", NAN, 1, [](TypeParam &image) { image.RotateHorzFlip(); }},
        {"RotateVertFlip", NAN, 0, [](TypeParam &image) { image.RotateVertFlip(); }},
    };
    this->ForRandomImages(40, 70, [&](const TypeParam &image) {
        for (const auto &[name, angle, flipCode, apply] : cases) {
            const cv::Mat pixels = PixelsOf(image);
            cv::Mat map, expected;
            if (std::isnan(angle)) {
                cv::flip(pixels, expected, flipCode);
            } else {
                const cv::Point2f centre(static_cast<float>(pixels.cols / 2),
                                         static_cast<float>(pixels.rows / 2));
                cv::getRotationMatrix2D(centre, angle, 1).convertTo(map, CV_32F);
                cv::warpAffine(pixels, expected, map, pixels.size());
            }
            TypeParam changed = image;
            apply(changed);
            EXPECT_EQ(BytesOf(changed), WithPixels(image, expected)) << name;
        }
    });
}

TYPED_TEST(ImageTransformTest, RefusedTransformsChangeNothing) {
    const auto wide = this->Random(40000, 1);
    TypeParam image = wide, empty, released(3, 3);
    for (const double angle : {20.0, double{NAN}, double{INFINITY}})
        image.Rotate(angle, 0);
    EXPECT_EQ(BytesOf(image), BytesOf(wide));
    released.Release();
    for (TypeParam *without : {&empty, &released}) {
        without->Resize(4, 4, 1);
        without->Rotate90L();
        without->RotateHorzFlip();
        without->CropImage(0, 0, 2, 2);
        without->Offset(1, 1);
        EXPECT_EQ(without->IsEmpty(), 1);
        EXPECT_EQ(without->CropImage2(0, 0, 2, 2), nullptr);
    }
}

TYPED_TEST(ImageTransformTest, CropsAreTheCopiedRectangle) {
    this->ForRandomImages(200, 70, [&](const TypeParam &image) {
        const int x1 = this->Within(-20, 90), y1 = this->Within(-20, 90);
        const int x2 = this->Within(-20, 90), y2 = this->Within(-20, 90);
        const std::unique_ptr<unsigned char[]> copy(image.GetImagePtr(x1, y1, x2, y2));
        const TypeParam expected(std::abs(x2 - x1) + 1, std::abs(y2 - y1) + 1, copy.get());
        const std::unique_ptr<TypeParam> cut(image.CropImage2(x1, y1, x2, y2));
        TypeParam cropped = image;
        cropped.CropImage(x1, y1, x2, y2);
        for (const TypeParam &crop : {*cut, cropped}) {
            EXPECT_EQ(crop.GetWidth(), expected.GetWidth());
            EXPECT_EQ(BytesOf(crop), BytesOf(expected));
        }
    });
    TypeParam image(3, 3);
    image.CropImage(INT_MIN, INT_MIN, INT_MAX, INT_MAX);
    EXPECT_EQ(image.GetWidth(), 3);
    EXPECT_EQ(image.CropImage2(0, 0, INT_MAX - 1, INT_MAX - 1), nullptr);
}

TYPED_TEST(ImageTransformTest, OffsetMovesTheBufferAsOneRunOfBytes) {
    this->ForRandomImages(60, 70, [&](const TypeParam &image) {
        for (const auto &[dx, dy] :
             {std::pair{1, 0}, {0, 1}, {-3, 2}, {2, -40}, {70, -1}, {-1, 0}}) {
            TypeParam moved = image;
            moved.Offset(dx, dy);
            const Bytes before = BytesOf(image);
            Bytes expected(before.size(), 0);
            const auto length = static_cast<std::ptrdiff_t>(before.size());
            const std::ptrdiff_t shift = length / image.GetHeight() * dy + dx * this->PIXEL_BYTES;
            for (std::ptrdiff_t i = 0; i < length; ++i)
                if (i + shift >= 0 && i + shift < length)
                    expected[static_cast<std::size_t>(i)] =
                        before[static_cast<std::size_t>(i + shift)];
            EXPECT_EQ(BytesOf(moved), expected) << dx << ", " << dy;
        }
        TypeParam cleared = image;
        cleared.Offset(INT_MIN, INT_MIN);
        EXPECT_EQ(BytesOf(cleared), Bytes(BytesOf(image).size(), 0));
    });
}

} // namespace
