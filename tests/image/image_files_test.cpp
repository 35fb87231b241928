#include "image/image_samples.h"

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace {

using tavix_test::Bytes;
using tavix_test::PixelsOf;
using tavix_test::RandomImage;
using tavix_test::SamePixels;

using ImagePtr = std::unique_ptr<CTavixImage>;

/// A folder of this process, removed with its files at the end.
class TempFolder {
public:
    TempFolder() : m_path(testing::TempDir() + "tavix_image_files_" + std::to_string(getpid())) {
        std::filesystem::create_directories(m_path);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    std::string Path(const std::string &name) const { return m_path + '/' + name; }

private:
    std::string m_path;
};

std::string InTempDir(const std::string &name) {
    static const TempFolder folder;
    return folder.Path(name);
}

std::string WriteBytes(const std::string &name, const Bytes &bytes) {
    const std::string path = InTempDir(name);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char *>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return path;
}

Bytes Encoded(const std::string &extension, const cv::Mat &pixels) {
    Bytes bytes;
    cv::imencode(extension, pixels, bytes);
    return bytes;
}

cv::Mat RandomMat(int width, int height, int type) {
    cv::Mat pixels(height, width, type);
    cv::RNG random(7);
    random.fill(pixels, cv::RNG::UNIFORM, 0, CV_MAT_DEPTH(type) == CV_16U ? 65536 : 256);
    return pixels;
}

ImagePtr Load(const std::string &path) {
    return ImagePtr(CTavixImage::LoadImageA(path.c_str()));
}

/// All three ways of loading against pixels with 1 or 3 channels of 8 bits.
void ExpectLoadsAs(const std::string &path, const cv::Mat &pixels) {
    SCOPED_TRACE(path);
    cv::Mat grey = pixels, colour = pixels;
    if (pixels.channels() == 1)
        cv::cvtColor(pixels, colour, cv::COLOR_GRAY2BGR);
    else
        cv::cvtColor(pixels, grey, cv::COLOR_BGR2GRAY);
    const ImagePtr own = Load(path);
    ASSERT_TRUE(own);
    EXPECT_EQ(dynamic_cast<CTavixImage8 *>(own.get()) != nullptr, pixels.channels() == 1);
    EXPECT_TRUE(SamePixels(PixelsOf(*own), pixels));
    const ImagePtr as8(CTavixImage::LoadImage8(path.c_str()));
    ASSERT_TRUE(as8);
    EXPECT_TRUE(SamePixels(PixelsOf(*as8), grey));
    const ImagePtr as24(CTavixImage::LoadImage24(path.c_str()));
    ASSERT_TRUE(as24);
    EXPECT_TRUE(SamePixels(PixelsOf(*as24), colour));
}

void ExpectNotLoaded(const char *path) {
    SCOPED_TRACE(path ? path : "null");
    EXPECT_EQ(CTavixImage::LoadImageA(path), nullptr);
    EXPECT_EQ(CTavixImage::LoadImage8(path), nullptr);
    EXPECT_EQ(CTavixImage::LoadImage24(path), nullptr);
}

TEST(ImageFilesTest, LoadsWhatOpenCVReads) {
    std::vector<std::string> paths{TAVIX_TEST_DATA "/palette_color.png",
                                   TAVIX_TEST_DATA "/palette_gray.png",
                                   TAVIX_TEST_DATA "/coffee.png", TAVIX_EXAMPLE_DATA "/coins.png"};
    for (const char *extension : {".png", ".bmp", ".tiff", ".jpg"})
        for (const int type : {CV_8UC1, CV_8UC3}) {
            const cv::Mat pixels = RandomMat(37, 21, type);
            paths.push_back(InTempDir("plain" + std::to_string(type) + extension));
            cv::imwrite(paths.back(), pixels);
        }
    for (const std::string &path : paths) {
        const cv::Mat pixels = cv::imread(path, cv::IMREAD_UNCHANGED);
        ASSERT_TRUE(pixels.type() == CV_8UC1 || pixels.type() == CV_8UC3) << path;
        ExpectLoadsAs(path, pixels);
    }
}

TEST(ImageFilesTest, SixteenBitChannelsComeAsTheirHighByte) {
    for (const int type : {CV_16UC1, CV_16UC3}) {
        const cv::Mat deep = RandomMat(37, 21, type);
        cv::Mat high(deep.size(), CV_8UC(deep.channels()));
        std::transform(deep.ptr<std::uint16_t>(),
                       deep.ptr<std::uint16_t>() + high.total() * high.elemSize(), high.data,
                       [](std::uint16_t value) { return static_cast<uchar>(value >> 8); });
        const std::string path = InTempDir("deep.png");
        cv::imwrite(path, deep);
        ExpectLoadsAs(path, high);
    }
}

TEST(ImageFilesTest, FourChannelsGiveAnEmptyImage) {
    for (const int type : {CV_8UC4, CV_16UC4}) {
        const std::string path = WriteBytes("alpha.png", Encoded(".png", RandomMat(9, 5, type)));
        const ImagePtr own = Load(path);
        ASSERT_NE(dynamic_cast<CTavixImage24 *>(own.get()), nullptr);
        const ImagePtr as8(CTavixImage::LoadImage8(path.c_str()));
        ASSERT_TRUE(as8);
        const ImagePtr as24(CTavixImage::LoadImage24(path.c_str()));
        ASSERT_TRUE(as24);
        for (const ImagePtr *image : {&own, &as8, &as24})
            EXPECT_EQ((*image)->IsEmpty(), 1);
    }
}

TEST(ImageFilesTest, DamagedFilesComeAsOpenCVReadsThemOrNotAtAll) {
    const cv::Mat pixels = RandomMat(50, 40, CV_8UC3);
    std::vector<std::string> paths{TAVIX_TEST_DATA "/truncated.jpg"};
    for (const char *extension : {".png", ".bmp", ".jpg", ".tiff"}) {
        const Bytes whole = Encoded(extension, pixels);
        for (const std::size_t size : {std::size_t{4}, std::size_t{30}, whole.size() / 2}) {
            const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            paths.push_back(WriteBytes("cut" + std::to_string(size) + extension, cut));
        }
    }
    int unreadable = 0;
    for (const std::string &path : paths) {
        cv::Mat readable;
        try {
            readable = cv::imread(path, cv::IMREAD_UNCHANGED);
        } catch (const cv::Exception &) {
            readable.release();
        }
        if (readable.empty()) {
            ExpectNotLoaded(path.c_str());
            ++unreadable;
        } else {
            const ImagePtr image = Load(path);
            ASSERT_TRUE(image) << path;
            EXPECT_EQ(image->GetWidth(), readable.cols) << path;
            EXPECT_EQ(image->GetHeight(), readable.rows) << path;
        }
    }
    EXPECT_GE(unreadable, 8);
}

TEST(ImageFilesTest, WhatIsNoImageFileIsNotLoaded) {
    const std::string text = "no picture at all";
    ExpectNotLoaded(nullptr);
    ExpectNotLoaded("");
    ExpectNotLoaded(InTempDir("missing.png").c_str());
    ExpectNotLoaded(testing::TempDir().c_str());
    ExpectNotLoaded(WriteBytes("empty.png", {}).c_str());
    ExpectNotLoaded(WriteBytes("text.png", Bytes(text.begin(), text.end())).c_str());
}

/// The checksum of PNG chunks.
std::uint32_t Crc(const Bytes &bytes) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const unsigned char byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320U : 0);
    }
    return ~crc;
}

void AppendBigEndian(Bytes &bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<unsigned char>(value >> shift));
}

/// A PNG file of these dimensions whose data is that of a small picture.
Bytes PngClaiming(std::uint32_t width, std::uint32_t height) {
    const Bytes small = Encoded(".png", RandomMat(8, 8, CV_8UC3));
    Bytes header{'I', 'H', 'D', 'R'};
    AppendBigEndian(header, width);
    AppendBigEndian(header, height);
    header.insert(header.end(), small.begin() + 24, small.begin() + 29);
    Bytes file(small.begin(), small.begin() + 12);
    file.insert(file.end(), header.begin(), header.end());
    AppendBigEndian(file, Crc(header));
    file.insert(file.end(), small.begin() + 33, small.end());
    return file;
}

TEST(ImageFilesTest, EnormousDimensionsAreNotLoaded) {
    ExpectLoadsAs(WriteBytes("claim.png", PngClaiming(8, 8)), RandomMat(8, 8, CV_8UC3));
    const std::pair<std::uint32_t, std::uint32_t> sizes[] = {
        {0x7FFFFFFF, 0x7FFFFFFF}, {900000, 900000}, {0x7FFFFFFF, 1},
        {1, 0x7FFFFFFF},          {0xFFFFFFFF, 8},  {0, 8}};
    for (const auto &[width, height] : sizes) {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        ExpectNotLoaded(WriteBytes("claim.png", PngClaiming(width, height)).c_str());
    }
}

template <typename Image>
void ExpectRoundTrip() {
    std::mt19937 random(5);
    for (const int width : {1, 2, 3, 5, 7, 33}) {
        const auto image = RandomImage<Image>(width, 6, random);
        for (const char *name : {"trip.png", "trip.bmp"}) {
            const std::string path = InTempDir(name);
            std::filesystem::remove(path);
            EXPECT_EQ(image.SaveImage(path.c_str()), 1);
            EXPECT_TRUE(SamePixels(cv::imread(path, cv::IMREAD_UNCHANGED), PixelsOf(image)));
            const ImagePtr loaded = Load(path);
            ASSERT_TRUE(loaded);
            EXPECT_TRUE(SamePixels(PixelsOf(*loaded), PixelsOf(image)));
        }
    }
}

TEST(ImageFilesTest, SavedPixelsComeBack) {
    ExpectRoundTrip<CTavixImage8>();
    ExpectRoundTrip<CTavixImage24>();
}

TEST(ImageFilesTest, NothingIsSavedOfAnImageWithoutPixels) {
    const std::string path = InTempDir("nothing.png");
    const ImagePtr cloned(CTavixImage24().Clone());
    const CTavixImage8 empty8, flat(5, 0);
    const CTavixImage24 empty24;
    for (const CTavixImage *image :
         {static_cast<const CTavixImage *>(&empty8), static_cast<const CTavixImage *>(&flat),
          static_cast<const CTavixImage *>(&empty24),
          static_cast<const CTavixImage *>(cloned.get())}) {
        EXPECT_EQ(image->SaveImage(path.c_str()), 0);
        EXPECT_FALSE(std::filesystem::exists(path));
    }
}

TEST(ImageFilesTest, AFailedWriteIsReportedAsOne) {
    for (const char *name : {"no_folder/a.png", "a.unknown", "without_extension"}) {
        const std::string path = InTempDir(name);
        EXPECT_NO_THROW(EXPECT_EQ(CTavixImage8(5, 3).SaveImage(path.c_str()), 1)) << name;
        EXPECT_NO_THROW(EXPECT_EQ(CTavixImage24(5, 3).SaveImage(path.c_str()), 1)) << name;
        EXPECT_FALSE(std::filesystem::exists(path)) << name;
    }
}

} // namespace
