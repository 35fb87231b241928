#include "image/image_samples.h"

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include <QImage>

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace {

using namespace tavix_test;

using ImagePtr = std::unique_ptr<CTavixImage>;

cv::Mat RandomMat(int width, int height, int type) {
    cv::Mat pixels(height, width, type);
    cv::RNG(7).fill(pixels, cv::RNG::UNIFORM, 0, CV_MAT_DEPTH(type) == CV_16U ? 65536 : 255);
    return pixels;
}

/// What the three ways of loading make of a file.
struct Loaded {
    explicit Loaded(const char *path)
        : own(CTavixImage::LoadImageA(path)),
          as8(CTavixImage::LoadImage8(path)),
          as24(CTavixImage::LoadImage24(path)) {}
    ImagePtr own, as8, as24;
};

/// The pixels have 1 or 3 channels of 8 bits.
void ExpectLoadsAs(const std::string &path, const cv::Mat &pixels) {
    SCOPED_TRACE(path);
    cv::Mat grey = pixels, colour = pixels;
    if (pixels.channels() == 1)
        cv::cvtColor(pixels, colour, cv::COLOR_GRAY2BGR);
    else
        cv::cvtColor(pixels, grey, cv::COLOR_BGR2GRAY);
    const Loaded loaded(path.c_str());
    ASSERT_TRUE(loaded.own && loaded.as8 && loaded.as24);
    EXPECT_TRUE(SamePixels(PixelsOf(*loaded.own), pixels));
    EXPECT_TRUE(SamePixels(PixelsOf(*loaded.as8), grey));
    EXPECT_TRUE(SamePixels(PixelsOf(*loaded.as24), colour));
}

void ExpectNotLoaded(const char *path) {
    const Loaded loaded(path);
    EXPECT_FALSE(loaded.own || loaded.as8 || loaded.as24) << (path ? path : "null");
}

/// Has a folder of its own, which goes with its files at the end.
class ImageFilesTest : public testing::Test {
protected:
    ImageFilesTest() { std::filesystem::create_directories(m_folder); }
    ~ImageFilesTest() override { std::filesystem::remove_all(m_folder); }

    std::string Path(const std::string &name) const { return m_folder + '/' + name; }
    /// The path of a new file with the pixels.
    std::string Write(const std::string &name, const cv::Mat &pixels) const {
        cv::imwrite(Path(name), pixels);
        return Path(name);
    }

private:
    std::string m_folder = testing::TempDir() + "tavix_image_files_" + std::to_string(getpid());
};

/// What docs/formats.md says of each kind of file. 0 bits: an image without pixels.
TEST_F(ImageFilesTest, KindsOfFilesLoadAsDocumented) {
    const struct {
        const char *name;
        int type; ///< What OpenCV is given to write.
        int bitCount;
        int tolerance; ///< Of lossy files, and of those that round their high byte.
    } cases[] = {
        {"grey.png", CV_8UC1, 8, 0},       {"colour.png", CV_8UC3, 24, 0},
        {"alpha.png", CV_8UC4, 0, 0},      {"grey16.png", CV_16UC1, 8, 0},
        {"colour16.png", CV_16UC3, 24, 0}, {"alpha16.png", CV_16UC4, 0, 0},
        {"grey.bmp", CV_8UC1, 8, 0},       {"colour.bmp", CV_8UC3, 24, 0},
        {"alpha.bmp", CV_8UC4, 24, 0},     {"grey.tiff", CV_8UC1, 8, 0},
        {"colour.tiff", CV_8UC3, 24, 0},   {"alpha.tiff", CV_8UC4, 0, 0},
        {"grey16.tiff", CV_16UC1, 8, 0},   {"colour16.tiff", CV_16UC3, 24, 1},
        {"float.tiff", CV_32FC1, 8, 0},    {"grey.pgm", CV_8UC1, 8, 0},
        {"grey16.pgm", CV_16UC1, 8, 0},    {"colour.ppm", CV_8UC3, 24, 0},
        {"colour16.ppm", CV_16UC3, 24, 0}, {"grey.webp", CV_8UC1, 24, 0},
        {"colour.webp", CV_8UC3, 24, 0},   {"alpha.webp", CV_8UC4, 0, 0},
        {"grey.jpg", CV_8UC1, 8, 60},      {"colour.jpg", CV_8UC3, 24, 200},
    };
    for (const auto &[name, type, bitCount, tolerance] : cases) {
        SCOPED_TRACE(name);
        const cv::Mat written = RandomMat(37, 21, type);
        const Loaded loaded(Write(name, written).c_str());
        ASSERT_TRUE(loaded.own && loaded.as8 && loaded.as24);
        EXPECT_EQ(loaded.own->GetBitCount(), bitCount == 0 ? 24 : bitCount);
        for (const ImagePtr *image : {&loaded.own, &loaded.as8, &loaded.as24})
            EXPECT_EQ((*image)->IsEmpty(), bitCount == 0 ? 1 : 0);
        if (bitCount == 0)
            continue;
        cv::Mat expected, loadedPixels = PixelsOf(*loaded.own);
        const bool isDeep = written.depth() == CV_16U;
        written.convertTo(expected, CV_8U, isDeep ? 1 / 256.0 : 1, isDeep ? 1 / 512.0 - 0.5 : 0);
        if (expected.channels() == 4)
            cv::cvtColor(expected, expected, cv::COLOR_BGRA2BGR);
        if (expected.channels() == 1 && bitCount == 24)
            cv::cvtColor(expected, expected, cv::COLOR_GRAY2BGR);
        ASSERT_EQ(loadedPixels.type(), expected.type());
        EXPECT_LE(cv::norm(loadedPixels, expected, cv::NORM_INF), tolerance);
    }
}

TEST_F(ImageFilesTest, PalettesAndOneBitFilesLoadAsDocumented) {
    QImage colours(9, 7, QImage::Format_Indexed8), bits(9, 7, QImage::Format_Mono);
    colours.setColorTable({qRgb(9, 8, 7), qRgb(250, 40, 3), qRgb(5, 200, 100)});
    bits.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 9; ++x) {
            colours.setPixel(x, y, static_cast<unsigned>((x + y) % 3));
            bits.setPixel(x, y, static_cast<unsigned>((x * y) % 2));
        }
    QImage greys = colours, seeThrough = colours;
    greys.setColorTable({qRgb(7, 7, 7), qRgb(100, 100, 100), qRgb(201, 201, 201)});
    seeThrough.setColor(1, qRgba(1, 2, 3, 0));
    const struct {
        const char *name;
        const QImage &picture;
        int bitCount;
    } cases[] = {{"palette.png", colours, 24}, {"palette.bmp", colours, 24},
                 {"greys.png", greys, 24},     {"greys.bmp", greys, 8},
                 {"clear.png", seeThrough, 0}, {"bits.png", bits, 24},
                 {"bits.bmp", bits, 8}};
    for (const auto &[name, picture, bitCount] : cases) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(picture.save(QString::fromStdString(Path(name))));
        const Loaded loaded(Path(name).c_str());
        ASSERT_TRUE(loaded.own);
        EXPECT_EQ(loaded.own->GetBitCount(), bitCount == 0 ? 24 : bitCount);
        EXPECT_EQ(loaded.own->IsEmpty(), bitCount == 0 ? 1 : 0);
        const QImage shown = picture.convertToFormat(QImage::Format_BGR888);
        const cv::Mat expected(7, 9, CV_8UC3, const_cast<uchar *>(shown.constBits()),
                               static_cast<std::size_t>(shown.bytesPerLine()));
        EXPECT_TRUE(bitCount == 0 || SamePixels(PixelsOf(*loaded.as24), expected));
    }
    std::ofstream(Path("bits.pbm"), std::ios::binary) << "P4\n9 2\n\xAA\x80\x55\x7F";
    EXPECT_EQ(BytesOf(*Loaded(Path("bits.pbm").c_str()).own),
              (Bytes{0,   255, 0,   255, 0,   255, 0,   255, 0,   0, 0, 0,
                     255, 0,   255, 0,   255, 0,   255, 0,   255, 0, 0, 0}));
}

TEST_F(ImageFilesTest, WholeAndDamagedFilesComeAsOpenCVReadsThemOrNotAtAll) {
    std::vector<std::string> paths{TAVIX_TEST_DATA "/palette_color.png",
                                   TAVIX_TEST_DATA "/palette_gray.png",
                                   TAVIX_TEST_DATA "/coffee.png", TAVIX_EXAMPLE_DATA "/coins.png",
                                   TAVIX_TEST_DATA "/truncated.jpg"};
    for (const std::string extension : {".png", ".bmp", ".jpg", ".tiff"})
        for (const std::uintmax_t size : {0, 4, 30, 1500}) {
            paths.push_back(
                Write("cut" + std::to_string(size) + extension, RandomMat(50, 40, CV_8UC3)));
            std::filesystem::resize_file(paths.back(), size);
        }
    int readable = 0;
    for (const std::string &path : paths) {
        cv::Mat pixels;
        EXPECT_NO_THROW(pixels = cv::imread(path, cv::IMREAD_UNCHANGED));
        pixels.empty() ? ExpectNotLoaded(path.c_str()) : ExpectLoadsAs(path, pixels);
        readable += pixels.empty() ? 0 : 1;
    }
    EXPECT_GE(readable, 4);
    EXPECT_LE(readable, 9);
}

TEST_F(ImageFilesTest, WhatIsNoImageOrTooLargeIsNotLoaded) {
    ExpectNotLoaded(nullptr);
    ExpectNotLoaded(Path("missing.png").c_str());
    ExpectNotLoaded(testing::TempDir().c_str());
    ExpectNotLoaded(Write("radiance.hdr", RandomMat(9, 9, CV_32FC3)).c_str());
    ExpectNotLoaded(TAVIX_TEST_DATA "/fuzz/image_file/aborts.dcm");
    for (const auto &[width, height] :
         {std::pair{INT32_MAX, INT32_MAX}, {900000, 900000}, {INT32_MAX, 1}, {0, 8}}) {
        const std::string path = Write("claim.bmp", RandomMat(8, 8, CV_8UC3));
        const int dimensions[] = {width, height};
        std::fstream(path, std::ios::binary | std::ios::in | std::ios::out)
            .seekp(18)
            .write(reinterpret_cast<const char *>(dimensions), sizeof dimensions);
        ExpectNotLoaded(path.c_str());
    }
}

TEST_F(ImageFilesTest, SavedPixelsComeBack) {
    std::mt19937 random(5);
    for (const std::string &path : {Path("trip.png"), Path("trip.bmp")})
        for (const int width : {1, 2, 3, 33}) {
            const auto grey = RandomImage<CTavixImage8>(width, 6, random);
            const auto colour = RandomImage<CTavixImage24>(width, 6, random);
            for (const CTavixImage *image :
                 std::initializer_list<const CTavixImage *>{&grey, &colour}) {
                EXPECT_EQ(image->SaveImage(path.c_str()), 1);
                EXPECT_TRUE(SamePixels(cv::imread(path, cv::IMREAD_UNCHANGED), PixelsOf(*image)));
                ExpectLoadsAs(path, PixelsOf(*image));
            }
        }
}

TEST_F(ImageFilesTest, OnlyAnImageWithoutPixelsIsReportedAsNotSaved) {
    const std::string path = Path("nothing.png");
    EXPECT_EQ(CTavixImage24().SaveImage(path.c_str()), 0);
    EXPECT_EQ(CTavixImage8(5, 0).SaveImage(path.c_str()), 0);
    EXPECT_FALSE(std::filesystem::exists(path));
    for (const char *name : {"no_folder/a.png", "a.unknown", "without_extension"}) {
        EXPECT_EQ(CTavixImage8(5, 3).SaveImage(Path(name).c_str()), 1) << name;
        EXPECT_FALSE(std::filesystem::exists(Path(name))) << name;
    }
}

} // namespace
