#include "TAVIX20/image/image_interop.h"

#include "TAVIX20/image/image_buffers.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

namespace tavix {

namespace {

std::size_t StrideOf(const CTavixImage &image) {
    return static_cast<std::size_t>(RowStride(image.GetBitCount(), image.GetWidth()));
}

QImage::Format FormatOf(const CTavixImage &image) {
    return image.GetBitCount() == 8 ? QImage::Format_Grayscale8 : QImage::Format_BGR888;
}

/// 8 or 24, or 0 for a matrix that no image has.
int BitCountOf(const cv::Mat &matrix) {
    const bool isImage = matrix.dims == 2 && !matrix.empty() &&
                         (matrix.type() == CV_8UC1 || matrix.type() == CV_8UC3);
    return isImage ? 8 * matrix.channels() : 0;
}

/// The bits per pixel of a format that images have themselves, or 0.
int BitCountOf(const QImage &image) {
    switch (image.format()) {
    case QImage::Format_Grayscale8:
    case QImage::Format_Indexed8:
        return 8;
    case QImage::Format_BGR888:
        return 24;
    default:
        return 0;
    }
}

/// An image over foreign pixels that live as long as the owner; null for a size that is too large.
template <typename Owner>
std::unique_ptr<CTavixImage> OverPixels(int bitCount, int width, int height, unsigned char *pixels,
                                        const Owner &owner) {
    if (!ImageLength(bitCount, width, height))
        return nullptr;
    std::unique_ptr<CTavixImage> image;
    if (bitCount == 8)
        image = std::make_unique<CTavixImage8>();
    else
        image = std::make_unique<CTavixImage24>();
    ImageBuffers::Adopt(*image, BufferPtr(pixels, {std::make_shared<Owner>(owner)}), width, height);
    return image;
}

} // namespace

cv::Mat ViewAsMat(CTavixImage &image) {
    if (image.GetImageLen() == 0)
        return {};
    const int type = image.GetBitCount() == 8 ? CV_8UC1 : CV_8UC3;
    return {image.GetHeight(), image.GetWidth(), type, image.GetImagePtr(), StrideOf(image)};
}

cv::Mat ViewAsMat(const CTavixImage &image) {
    return ViewAsMat(const_cast<CTavixImage &>(image));
}

QImage ViewAsQImage(CTavixImage &image) {
    if (image.GetImageLen() == 0)
        return {};
    return {image.GetImagePtr(), image.GetWidth(), image.GetHeight(),
            static_cast<qsizetype>(StrideOf(image)), FormatOf(image)};
}

QImage ViewAsQImage(const CTavixImage &image) {
    if (image.GetImageLen() == 0)
        return {};
    return {image.GetImagePtr(), image.GetWidth(), image.GetHeight(),
            static_cast<qsizetype>(StrideOf(image)), FormatOf(image)};
}

QImage ToQImage(const CTavixImage &image) {
    return ViewAsQImage(image).copy();
}

QPixmap ToQPixmap(const CTavixImage &image) {
    return QPixmap::fromImage(ViewAsQImage(image));
}

std::unique_ptr<CTavixImage> ViewMat(const cv::Mat &matrix) {
    const int bitCount = BitCountOf(matrix);
    const std::size_t rowBytes = static_cast<std::size_t>(matrix.cols) * matrix.elemSize();
    // A gap between rows may hold pixels of a larger matrix, which an image takes for padding.
    const bool hasLayout = bitCount != 0 && rowBytes % 4 == 0 && matrix.step == rowBytes;
    if (!hasLayout)
        return CopyMat(matrix);
    return OverPixels(bitCount, matrix.cols, matrix.rows, matrix.data, matrix);
}

std::unique_ptr<CTavixImage> CopyMat(const cv::Mat &matrix) {
    const int bitCount = BitCountOf(matrix);
    if (bitCount == 0)
        return nullptr;
    return CopyRows(bitCount, matrix.cols, matrix.rows, matrix.data,
                    static_cast<std::ptrdiff_t>(matrix.step));
}

std::unique_ptr<CTavixImage> ViewQImage(QImage &image) {
    const int bitCount = BitCountOf(image);
    if (bitCount == 0 || image.bytesPerLine() != RowStride(bitCount, image.width()))
        return CopyQImage(image);
    unsigned char *const pixels = image.bits();
    if (!pixels)
        return nullptr;
    return OverPixels(bitCount, image.width(), image.height(), pixels, image);
}

std::unique_ptr<CTavixImage> CopyQImage(const QImage &image) {
    QImage source = image;
    if (BitCountOf(source) == 0)
        source.convertTo(image.isGrayscale() ? QImage::Format_Grayscale8 : QImage::Format_BGR888);
    if (source.isNull())
        return nullptr;
    return CopyRows(BitCountOf(source), source.width(), source.height(), source.constBits(),
                    static_cast<std::ptrdiff_t>(source.bytesPerLine()));
}

} // namespace tavix
