#include "image/image_samples.h"

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

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
    cv::RNG(7).fill(pixels, cv::RNG::UNIFORM, 0, CV_MAT_DEPTH(type) == CV_16U ? 65536 : 256);
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

TEST_F(ImageFilesTest, LoadsWhatOpenCVReads) {
    std::vector<std::string> paths{TAVIX_TEST_DATA "/palette_color.png",
                                   TAVIX_TEST_DATA "/palette_gray.png",
                                   TAVIX_TEST_DATA "/coffee.png", TAVIX_EXAMPLE_DATA "/coins.png"};
    for (const std::string extension : {".png", ".bmp", ".tiff", ".jpg"}) {
        paths.push_back(Write("8" + extension, RandomMat(37, 21, CV_8UC1)));
        paths.push_back(Write("24" + extension, RandomMat(37, 21, CV_8UC3)));
    }
    for (const std::string &path : paths)
        ExpectLoadsAs(path, cv::imread(path, cv::IMREAD_UNCHANGED));
}

TEST_F(ImageFilesTest, SixteenBitChannelsComeAsTheirHighByte) {
    for (const int type : {CV_16UC1, CV_16UC3}) {
        const cv::Mat deep = RandomMat(37, 21, type);
        cv::Mat high(deep.size(), CV_8UC(deep.channels()));
        for (std::size_t i = 0; i < high.total() * high.elemSize(); ++i)
            high.data[i] = static_cast<uchar>(deep.ptr<std::uint16_t>()[i] >> 8);
        ExpectLoadsAs(Write("deep.png", deep), high);
    }
}

TEST_F(ImageFilesTest, FourChannelsGiveAnEmptyImage) {
    for (const int type : {CV_8UC4, CV_16UC4}) {
        const Loaded loaded(Write("alpha.png", RandomMat(9, 5, type)).c_str());
        ASSERT_TRUE(loaded.own && loaded.as8 && loaded.as24);
        EXPECT_EQ(loaded.own->GetBitCount(), 24);
        for (const ImagePtr *image : {&loaded.own, &loaded.as8, &loaded.as24})
            EXPECT_EQ((*image)->IsEmpty(), 1);
    }
}

TEST_F(ImageFilesTest, DamagedFilesComeAsOpenCVReadsThemOrNotAtAll) {
    std::vector<std::string> paths{TAVIX_TEST_DATA "/truncated.jpg"};
    for (const std::string extension : {".png", ".bmp", ".jpg", ".tiff"})
        for (const std::uintmax_t size : {0, 4, 30, 1500}) {
            paths.push_back(
                Write("cut" + std::to_string(size) + extension, RandomMat(50, 40, CV_8UC3)));
            std::filesystem::resize_file(paths.back(), size);
        }
    int unreadable = 0;
    for (const std::string &path : paths) {
        cv::Mat pixels;
        EXPECT_NO_THROW(pixels = cv::imread(path, cv::IMREAD_UNCHANGED));
        if (!pixels.empty()) {
            ExpectLoadsAs(path, pixels);
            continue;
        }
        ExpectNotLoaded(path.c_str());
        ++unreadable;
    }
    EXPECT_GE(unreadable, 12);
}

TEST_F(ImageFilesTest, WhatIsNoImageOrTooLargeIsNotLoaded) {
    ExpectNotLoaded(nullptr);
    ExpectNotLoaded(Path("missing.png").c_str());
    ExpectNotLoaded(testing::TempDir().c_str());
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

template <typename Image>
void ExpectRoundTrip(const std::string &path) {
    std::mt19937 random(5);
    for (const int width : {1, 2, 3, 33}) {
        const auto image = RandomImage<Image>(width, 6, random);
        EXPECT_EQ(image.SaveImage(path.c_str()), 1);
        EXPECT_TRUE(SamePixels(cv::imread(path, cv::IMREAD_UNCHANGED), PixelsOf(image)));
        ExpectLoadsAs(path, PixelsOf(image));
    }
}

TEST_F(ImageFilesTest, SavedPixelsComeBack) {
    for (const char *name : {"trip.png", "trip.bmp"}) {
        ExpectRoundTrip<CTavixImage8>(Path(name));
        ExpectRoundTrip<CTavixImage24>(Path(name));
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
