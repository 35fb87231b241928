#include "TAVIX20/image/image_interop.h"
#include "image/image_test.h"

#include <QPainter>

namespace {

using namespace tavix_test;

template <typename Image>
class ImageInteropTest : public ImageTest<Image> {};
TYPED_TEST_SUITE(ImageInteropTest, ImageTypes);

/// The pixels of a QImage of the formats that images have.
cv::Mat MatOf(const QImage &image) {
    return cv::Mat(image.height(), image.width(),
                   image.format() == QImage::Format_BGR888 ? CV_8UC3 : CV_8UC1,
                   const_cast<uchar *>(image.constBits()),
                   static_cast<std::size_t>(image.bytesPerLine()))
        .clone();
}

TYPED_TEST(ImageInteropTest, ViewsShowTheBufferItselfAndCopiesDoNot) {
    for (const int width : {1, 4, 33}) {
        auto image = this->Random(width, 5);
        const TypeParam &constant = image;
        cv::Mat matrix = tavix::ViewAsMat(image);
        QImage view = tavix::ViewAsQImage(image);
        const QImage copy = tavix::ToQImage(image);
        const cv::Mat before = PixelsOf(image);
        EXPECT_EQ(matrix.data, image.GetImagePtr());
        EXPECT_EQ(tavix::ViewAsMat(constant).data, image.GetImagePtr());
        for (const QImage &picture : {view, copy, tavix::ViewAsQImage(constant)})
            EXPECT_TRUE(SamePixels(MatOf(picture), before));
        matrix.setTo(cv::Scalar::all(77));
        EXPECT_TRUE(SamePixels(PixelsOf(image), matrix));
        EXPECT_TRUE(SamePixels(MatOf(view), matrix));
        EXPECT_TRUE(SamePixels(MatOf(copy), before));
        QPainter(&view).fillRect(view.rect(), Qt::black);
        tavix::ViewAsQImage(constant).fill(Qt::white);
        EXPECT_EQ(image.GetPixel(0, 0), 0U);
    }
    EXPECT_TRUE(tavix::ViewAsMat(TypeParam()).empty());
    EXPECT_TRUE(tavix::ToQImage(TypeParam()).isNull());
}

TYPED_TEST(ImageInteropTest, ImagesOverMatricesShareTheirPixelsWhereRowsHaveNoGap) {
    const int type = this->PIXEL_BYTES == 1 ? CV_8UC1 : CV_8UC3;
    for (const int width : {1, 3, 4, 8, 30}) {
        cv::Mat matrix(6, width, type);
        cv::RNG(3).fill(matrix, cv::RNG::UNIFORM, 0, 256);
        const cv::Mat before = matrix.clone();
        auto image = tavix::ViewMat(matrix);
        ASSERT_TRUE(dynamic_cast<TypeParam *>(image.get()));
        EXPECT_TRUE(SamePixels(PixelsOf(*image), before));
        EXPECT_EQ(image->GetImagePtr() == matrix.data, width % 4 == 0) << width;
        EXPECT_NE(tavix::CopyMat(matrix)->GetImagePtr(), matrix.data);
        // The image keeps the pixels, and gives them back when its size changes.
        cv::Mat again = matrix;
        matrix.release();
        image->RotateVertFlip();
        image->Resize(7, 7, 0);
        image->RotateHorzFlip();
        cv::Mat flipped;
        cv::flip(before, flipped, 0);
        EXPECT_TRUE(SamePixels(again, width % 4 == 0 ? flipped : before));
    }
    const cv::Mat parent(8, 16, type, cv::Scalar::all(9));
    const auto part = tavix::ViewMat(parent(cv::Rect(4, 2, 4, 4)));
    static_cast<TypeParam &>(*part).Fill(0);
    EXPECT_EQ(cv::norm(parent, cv::NORM_INF), 9);
    for (const cv::Mat &other : {cv::Mat(), cv::Mat(3, 3, CV_16UC1), cv::Mat(3, 3, CV_8UC4)})
        EXPECT_FALSE(tavix::ViewMat(other));
}

TEST(ImageInteropTest, ImagesOverQImagesShareTheirPixelsAndOthersAreConverted) {
    const struct {
        QImage::Format format;
        int bitCount;
        bool isShared;
    } cases[] = {{QImage::Format_Grayscale8, 8, true}, {QImage::Format_Indexed8, 8, true},
                 {QImage::Format_BGR888, 24, true},    {QImage::Format_RGB888, 24, false},
                 {QImage::Format_ARGB32, 24, false},   {QImage::Format_Grayscale16, 8, false}};
    for (const auto &[format, bitCount, isShared] : cases) {
        SCOPED_TRACE(format);
        QImage picture(7, 3, QImage::Format_RGB32);
        picture.fill(Qt::white);
        picture.setPixel(2, 1, qRgb(10, 200, 60));
        picture.convertTo(format);
        const QImage other = picture;
        auto image = tavix::ViewQImage(picture);
        EXPECT_EQ(image->GetBitCount(), bitCount);
        EXPECT_EQ(image->GetImagePtr() == picture.constBits(), isShared);
        EXPECT_EQ(BytesOf(*image).size(), static_cast<std::size_t>(bitCount == 8 ? 24 : 72));
        if (bitCount == 24)
            EXPECT_EQ(static_cast<CTavixImage24 &>(*image).GetPixel(2, 1), RGB(10, 200, 60));
        else
            EXPECT_EQ(static_cast<CTavixImage8 &>(*image).GetPixel(2, 1),
                      format == QImage::Format_Indexed8 ? other.pixelIndex(2, 1)
                                                        : qGray(other.pixel(2, 1)));
        image->Offset(1, 0);
        EXPECT_EQ(picture != other, isShared);
        const QImage shifted = picture;
        picture = QImage();
        EXPECT_EQ(BytesOf(*image).size(), static_cast<std::size_t>(bitCount == 8 ? 24 : 72));
    }
    QImage none;
    EXPECT_FALSE(tavix::ViewQImage(none));
}

} // namespace
