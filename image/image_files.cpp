// Image files through OpenCV's readers and writers. cvLoadImage and cvSaveImage are gone from
// OpenCV 4.6; cv::imread and cv::imwrite stand behind the same outcomes.

#include "TAVIX20/image/image_buffers.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgcodecs.hpp>

#include <cstdio>
#include <filesystem>

namespace {

/// OpenCV reports a file that cannot be opened on standard error; asking first keeps that quiet.
bool IsReadableFile(const char *path) {
    std::error_code error;
    if (!path || std::filesystem::is_directory(path, error))
        return false;
    std::FILE *const file = std::fopen(path, "rb");
    if (!file)
        return false;
    std::fclose(file);
    return true;
}

/// The file's pixels with its own channels, 8 bits each; an empty matrix on any failure.
cv::Mat ReadFile(const char *path) {
    if (!IsReadableFile(path))
        return {};
    try {
        cv::Mat pixels = cv::imread(path, cv::IMREAD_UNCHANGED);
        const bool isImage = pixels.channels() == 1 || pixels.channels() == 3;
        if (pixels.empty() || !isImage || pixels.depth() == CV_8U)
            return pixels;
        cv::Mat reduced = cv::imread(path, cv::IMREAD_ANYCOLOR | cv::IMREAD_IGNORE_ORIENTATION);
        if (reduced.empty()) // OpenCV does not reduce floating-point TIFF files.
            pixels.convertTo(reduced, CV_8U);
        return reduced;
    } catch (const std::exception &) {
        return {};
    }
}

int Save(const CTavixImage &image, const char *path) {
    if (image.GetWidth() <= 0 || image.GetHeight() <= 0 || image.GetImageLen() == 0)
        return 0;
    // The matrix borrows the buffer and is only read.
    const cv::Mat pixels(
        image.GetHeight(), image.GetWidth(), image.GetBitCount() == 8 ? CV_8UC1 : CV_8UC3,
        const_cast<unsigned char *>(image.GetImagePtr()),
        static_cast<std::size_t>(tavix::RowStride(image.GetBitCount(), image.GetWidth())));
    try {
        if (path)
            cv::imwrite(path, pixels);
    } catch (const std::exception &) {
        return 1; // A failed write is reported like a good one.
    }
    return 1;
}

} // namespace

CTavixImage *CTavixImage::LoadImageA(const char *path) {
    const cv::Mat pixels = ReadFile(path);
    if (pixels.empty())
        return nullptr;
    if (pixels.channels() != 1 && pixels.channels() != 3)
        return new CTavixImage24; // Callers tell such files by an image without pixels.
    return tavix::CopyRows(8 * pixels.channels(), pixels.cols, pixels.rows, pixels.data,
                           static_cast<std::ptrdiff_t>(pixels.step))
        .release();
}

CTavixImage8 *CTavixImage::LoadImage8(const char *path) {
    std::unique_ptr<CTavixImage> loaded(LoadImageA(path));
    if (!loaded)
        return nullptr;
    if (loaded->GetBitCount() == 8)
        return static_cast<CTavixImage8 *>(loaded.release());
    return loaded->GetImage8();
}

CTavixImage24 *CTavixImage::LoadImage24(const char *path) {
    std::unique_ptr<CTavixImage> loaded(LoadImageA(path));
    if (!loaded)
        return nullptr;
    if (loaded->GetBitCount() == 24)
        return static_cast<CTavixImage24 *>(loaded.release());
    return loaded->GetImage24();
}

int CTavixImage8::SaveImage(const char *path) const {
    return Save(*this, path);
}

int CTavixImage24::SaveImage(const char *path) const {
    return Save(*this, path);
}
