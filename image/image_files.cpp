// Image files through OpenCV's readers and writers. cvLoadImage and cvSaveImage are gone from
// OpenCV 4.6; cv::imread and cv::imwrite stand behind the same outcomes.

#include "TAVIX20/image/image_files.h"

#include "TAVIX20/image/image_buffers.h"
#include "TAVIX20/image/image_interop.h"
#include "TAVIX20/image/layout.h"
#include "TAVIX20/image/tavix_image24.h"
#include "TAVIX20/image/tavix_image8.h"

#include <opencv2/imgcodecs.hpp>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace {

using namespace std::string_view_literals;

// Files come from anywhere, so only formats whose readers survive damaged files reach OpenCV. Its
// reader of DICOM files, which start at byte 128, ends the process on some, and that of Radiance
// files leaves some open for good.

/// The starts of files for which OpenCV surely takes its own reader.
constexpr std::array OWN_SIGNATURES{
    "BM"sv, "\xFF\xD8\xFF"sv, "\x89PNG\r\n\x1A\n"sv, "II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv};
/// The starts of files that OpenCV might also take for DICOM: PNM, PFM and PAM, WebP, Sun raster,
/// JPEG 2000.
constexpr std::array SHARED_SIGNATURES{"P"sv, "RIFF"sv, "\x59\xA6\x6A\x95"sv,
                                       "\0\0\0\x0CjP  \r\n\x87\n"sv, "\xFF\x4F\xFF\x51"sv};
constexpr std::string_view DICOM_SIGNATURE = "DICM";
constexpr std::size_t DICOM_OFFSET = 128;

/// Whether OpenCV is to see the file. It also reports one that cannot be opened on standard error.
bool IsReadableFile(const char *path) {
    std::error_code error;
    if (!path || std::filesystem::is_directory(path, error))
        return false;
    std::array<char, DICOM_OFFSET + DICOM_SIGNATURE.size()> start{};
    std::ifstream(path, std::ios::binary).read(start.data(), start.size());
    const std::string_view bytes(start.data(), start.size());
    const auto isStart = [bytes](std::string_view signature) {
        return bytes.starts_with(signature);
    };
    return std::ranges::any_of(OWN_SIGNATURES, isStart) ||
           (std::ranges::any_of(SHARED_SIGNATURES, isStart) && !bytes.ends_with(DICOM_SIGNATURE));
}

bool IsImage(const cv::Mat &pixels) {
    return pixels.channels() == 1 || pixels.channels() == 3;
}

/// The file's pixels with its own channels, 8 bits each; an empty matrix on any failure.
cv::Mat ReadFile(const char *path) {
    if (!IsReadableFile(path))
        return {};
    try {
        cv::Mat pixels = cv::imread(path, cv::IMREAD_UNCHANGED);
        if (pixels.empty() || !IsImage(pixels) || pixels.depth() == CV_8U)
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
    if (!IsImage(pixels))
        return new CTavixImage24; // Callers tell such files by an image without pixels.
    return tavix::CopyMat(pixels).release();
}

std::unique_ptr<CTavixImage> tavix::LoadFileToShow(const char *path) {
    const cv::Mat pixels = ReadFile(path);
    if (pixels.empty() || IsImage(pixels))
        return CopyMat(pixels);
    try {
        // OpenCV's own rule brings other depths and channels to 8 bits and three.
        return CopyMat(cv::imread(path, cv::IMREAD_COLOR | cv::IMREAD_IGNORE_ORIENTATION));
    } catch (const std::exception &) {
        return nullptr;
    }
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
