#include "display/shown_window.h"

#include <QTemporaryDir>

#include <opencv2/core/core_c.h>
#include <opencv2/imgcodecs.hpp>

#include <climits>
#include <functional>
#include <initializer_list>
#include <tuple>
#include <vector>

namespace {

/// The window's image, for the length of a test's line.
std::unique_ptr<CTavixImage> Shown(const CTavixWnd &window) {
    return std::unique_ptr<CTavixImage>(window.GetImage());
}

bool ShowsNothing(const CTavixWnd &window) {
    return window.GetWidth() == 0 && window.GetHeight() == 0 && window.GetBitCount() == 24 &&
           window.GetImageLen() == 0 && window.GetZoomRatio() == 1.0 && Shown(window)->IsEmpty();
}

} // namespace

using WndImageTest = ShownWindowTest;

TEST_F(WndImageTest, CommandsDoWhatTheSameOperationDoesToAnImage) {
    using Command = std::function<void(CTavixWnd &)>;
    using Operation = std::function<void(CTavixImage &)>;
    std::vector<std::tuple<const char *, Command, Operation>> cases{
        {"Light", [](auto &w) { w.Light(40, -30); }, [](auto &i) { i.Light(40, -30); }},
        {"Gamma", [](auto &w) { w.Gamma(1.7); }, [](auto &i) { i.Gamma(1.7); }},
        {"Rotate", [](auto &w) { w.Rotate(33); }, [](auto &i) { i.Rotate(33, 0); }}};
#define ADD(NAME) cases.emplace_back(#NAME, &CTavixWnd::NAME, &CTavixImage::NAME)
    ADD(AutoContrast), ADD(HistoEqualize), ADD(HistoNormalize), ADD(HistoRoot), ADD(HistoLog);
    ADD(HistoStretch), ADD(Erode), ADD(Dilate), ADD(OpenBox), ADD(CloseBox), ADD(Sharpen);
    ADD(Blur), ADD(Median), ADD(Gaussian3x3), ADD(Gaussian5x5), ADD(Emboss), ADD(Laplacian);
    ADD(Rotate90L), ADD(Rotate90R), ADD(Rotate180), ADD(RotateHorzFlip), ADD(RotateVertFlip);
#undef ADD
    Show(200, 150);
    const CTavixImage8 grey = Noise(53, 41);
    const CTavixImage24 colour = ColourNoise(53, 41);
    for (const auto &[name, command, operation] : cases) {
        SCOPED_TRACE(name);
        command(window); // On nothing.
        for (const CTavixImage *image :
             std::initializer_list<const CTavixImage *>{&grey, &colour}) {
            window.SetImage(image);
            window.Zoom(2.0);
            command(window);
            const std::unique_ptr<CTavixImage> expected(image->Clone());
            operation(*expected);
            EXPECT_TRUE(Equal(*Shown(window), *expected));
            EXPECT_EQ(window.GetZoomFitToMode(), 0); // The size stays, so does the zoom.
        }
        window.SetImage(nullptr);
    }
    window.CannyEdge();
    EXPECT_TRUE(ShowsNothing(window));
    window.SetImage(&colour);
    const std::unique_ptr<CTavixImage8> edges(colour.CannyEdge());
    EXPECT_ANY_THROW(window.Invert());
    EXPECT_TRUE(Equal(*Shown(window), colour));
    window.CannyEdge();
    EXPECT_TRUE(Equal(*Shown(window), *edges));
}

TEST_F(WndImageTest, ACommandIsSeenAtOnce) {
    Show(200, 150);
    CTavixImage8 image(20, 20);
    image.Fill(100);
    window.SetImage(&image);
    const QPoint middle(100, 75);
    ASSERT_EQ(qRed(Grab(window).pixel(middle)), 100);
    window.Light(50, 0);
    EXPECT_EQ(qRed(Grab(window).pixel(middle)), 150);
    image.Fill(30);
    window.SetImage(&image); // Into the memory of the one before.
    EXPECT_EQ(qRed(Grab(window).pixel(middle)), 30);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
            window.SetPixel(x, y, 77);
    window.ImageUpdate();
    EXPECT_EQ(qRed(Grab(window).pixel(middle)), 77);
}

TEST_F(WndImageTest, ImagesGoInAndOutAsCopies) {
    const CTavixImage8 grey = Noise(13, 7);
    const CTavixImage24 colour = ColourNoise(13, 7);
    for (const CTavixImage *image :
         {static_cast<const CTavixImage *>(&grey), static_cast<const CTavixImage *>(&colour)}) {
        auto *structure = static_cast<IplImage *>(image->GetIplImage());
        window.SetImage(structure);
        cvReleaseImage(&structure);
        EXPECT_TRUE(Equal(*Shown(window), *image));
        EXPECT_EQ(window.GetImageLen(), image->GetImageLen());
        std::unique_ptr<CTavixImage> part(window.GetImage(3, 2, 15, 4));
        std::unique_ptr<CTavixImage> expected(image->Clone());
        expected->CropImage(3, 2, 17, 5);
        EXPECT_TRUE(Equal(*part, *expected));
        for (const int size : {0, -1, INT_MAX}) {
            part.reset(window.GetImage(3, 2, size, 4));
            EXPECT_TRUE(part->IsEmpty());
        }
        const bool is8 = image == &grey;
        const auto same = [](CTavixImage *got, CTavixImage *wanted) {
            return Equal(*std::unique_ptr<CTavixImage>(got), *std::unique_ptr<CTavixImage>(wanted));
        };
        EXPECT_TRUE(same(window.GetImage8(), image->GetImage8()));
        EXPECT_TRUE(same(window.GetImage24(), image->GetImage24()));
        const auto plane = [&](auto member) { return is8 ? grey.GetImage8() : (colour.*member)(); };
        EXPECT_TRUE(same(window.GetRedSpace(), plane(&CTavixImage24::GetRedSpace)));
        EXPECT_TRUE(same(window.GetGreenSpace(), plane(&CTavixImage24::GetGreenSpace)));
        EXPECT_TRUE(same(window.GetBlueSpace(), plane(&CTavixImage24::GetBlueSpace)));
        // Pixels of the other depth are not there.
        window.SetPixel(12, 6, 9);
        window.SetPixel24(11, 6, 0x123456);
        EXPECT_EQ(window.GetPixel(12, 6), is8 ? 9 : 0);
        EXPECT_EQ(window.GetPixel24(11, 6), is8 ? 0U : 0x123456U);
        for (const CPoint &outside : {CPoint(-1, 0), CPoint(0, 7), CPoint(INT_MAX, INT_MIN)})
            EXPECT_EQ(window.GetPixel24(outside.x, outside.y), 0U);
    }
    window.SetImage(static_cast<IplImage *>(nullptr));
    EXPECT_TRUE(ShowsNothing(window));
    EXPECT_EQ(window.CreateImage(5, 4, 8), 1);
    EXPECT_TRUE(Equal(*Shown(window), CTavixImage8(5, 4)));
    EXPECT_EQ(window.GetZoomFitToMode(), 1);
    for (const auto &[width, height, bits] : {std::tuple(5, 4, 32), {-1, 4, 8}, {INT_MAX, 9, 24}})
        EXPECT_EQ(window.CreateImage(width, height, bits), 0);
    EXPECT_TRUE(ShowsNothing(window));
    const std::unique_ptr<CTavixImage> nothing8(window.GetRedSpace()),
        part(window.GetImage(0, 0, 2, 2));
    EXPECT_TRUE(nothing8->IsEmpty() && part->IsEmpty());
    EXPECT_EQ(window.SaveImage("nothing.png"), 0);
}

TEST_F(WndImageTest, OffsetMovesBytesTowardTheEnd) {
    const CTavixImage8 image = Noise(6, 5); // 8 bytes a row.
    for (const auto &[dx, dy] : {std::pair(1, 0),
                                 {0, 1},
                                 {-1, 0},
                                 {-3, 2},
                                 {9, -2},
                                 {0, 0},
                                 {0, 5},
                                 {40, 0},
                                 {INT_MIN, INT_MIN},
                                 {INT_MAX, INT_MAX}}) {
        window.SetImage(&image);
        window.Offset(dx, dy);
        CTavixImage8 expected(6, 5);
        for (std::int64_t i = 0; i < 40; ++i) {
            const std::int64_t to = i + 8 * std::int64_t{dy} + dx;
            if (to >= 0 && to < 40)
                expected.GetImagePtr()[to] = image.GetImagePtr()[i];
        }
        EXPECT_TRUE(Equal(*Shown(window), expected)) << dx << ' ' << dy;
    }
}

TEST_F(WndImageTest, LoadsFilesOfAnyChannelsAndEmptiesOnFailure) {
    const QTemporaryDir folder;
    const auto path = [&](const char *name) { return folder.filePath(name).toStdString(); };
    cv::Mat noise(9, 14, CV_8UC4);
    cv::randu(noise, 0, 256);
    cv::imwrite(path("rgba.png"), noise);
    cv::imwrite(path("rgba.tiff"), noise);
    noise.convertTo(noise, CV_16U, 257);
    cv::imwrite(path("rgba16.png"), noise);
    struct Case {
        std::string file;
        int bits; ///< 0: cannot be read.
    };
    for (const Case &c :
         {Case{path("rgba.png"), 24}, Case{path("missing.png"), 0}, Case{path("rgba.tiff"), 24},
          Case{path("rgba16.png"), 24}, Case{path(""), 0}, Case{TAVIX_TEST_DATA "/coffee.png", 24},
          Case{TAVIX_TEST_DATA "/palette_gray.png", 24}, Case{__FILE__, 0},
          Case{TAVIX_EXAMPLE_DATA "/coins.png", 8}}) {
        SCOPED_TRACE(c.file);
        window.CreateImage(3, 3, 8);
        window.Zoom(2.0);
        EXPECT_EQ(window.LoadImageA(c.file.c_str()), c.bits != 0);
        EXPECT_EQ(window.GetZoomFitToMode(), 1);
        if (c.bits == 0) {
            EXPECT_TRUE(ShowsNothing(window));
            continue;
        }
        EXPECT_EQ(window.GetBitCount(), c.bits);
        const cv::Mat read =
            cv::imread(c.file, c.bits == 8 ? cv::IMREAD_GRAYSCALE : cv::IMREAD_COLOR);
        const std::unique_ptr<CTavixImage> shown = Shown(window);
        ASSERT_EQ(cv::Size(shown->GetWidth(), shown->GetHeight()), read.size());
        const int rowBytes = read.cols * c.bits / 8;
        const int stride = shown->GetImageLen() / shown->GetHeight();
        for (int y = 0; y < read.rows; ++y)
            ASSERT_TRUE(
                std::equal(read.ptr(y), read.ptr(y) + rowBytes, shown->GetImagePtr() + y * stride));
    }
    EXPECT_EQ(window.LoadImageA(nullptr), 0);
}

TEST_F(WndImageTest, SavesWithAndWithoutWhatLiesOverThePicture) {
    const QTemporaryDir folder;
    const std::string file = folder.filePath("saved.png").toStdString();
    CTavixImage8 image = Noise(30, 20);
    window.SetImage(&image);
    window.Zoom(7.0);
    window.AddRectangle(4, 5, 10, 8, 0, 1, 0x0000FF, "box");
    EXPECT_EQ(window.SaveImage(file.c_str()), 1);
    std::unique_ptr<CTavixImage> saved(CTavixImage::LoadImageA(file.c_str()));
    EXPECT_TRUE(Equal(*saved, image));

    EXPECT_EQ(window.SaveImage(file.c_str(), true), 1);
    const std::unique_ptr<CTavixImage24> expected(image.GetImage24());
    for (int i = 0; i < 10; ++i)
        for (const int y : {5, 12})
            expected->SetPixel(4 + i, y, 0x0000FF);
    for (int i = 0; i < 8; ++i)
        for (const int x : {4, 13})
            expected->SetPixel(x, 5 + i, 0x0000FF);
    saved.reset(CTavixImage::LoadImageA(file.c_str()));
    EXPECT_TRUE(Equal(*saved, *expected));
    window.ShowObject(0);
    window.SaveImage(file.c_str(), true);
    saved.reset(CTavixImage::LoadImage8(file.c_str()));
    EXPECT_TRUE(Equal(*saved, image));
}

TEST_F(WndImageTest, FramesShowTheWholePictureAsAWindowWould) {
    const CTavixImage24 image = ColourNoise(70, 50);
    EXPECT_TRUE(window.GetFrame().isNull());
    for (const double zoom : {0.4, 1.0, 2.5}) {
        Show(180, 130); // Larger than the picture, so that all of it is seen.
        window.SetImage(&image);
        window.AddRectangle(3, 3, 50, 40, 0, 2, 0x0000FF, "box");
        window.Zoom(zoom);
        const QImage frame = window.GetFrame(zoom);
        CPoint corner(0, 0);
        window.ImagePtToClientPoint(corner);
        EXPECT_EQ(frame, Grab(window).copy(QRect(QPoint(corner), frame.size())));
    }
    for (const double zoom : {0.0, -1.0, std::nan(""), HUGE_VAL, 1e-3, 1e6})
        EXPECT_TRUE(window.GetFrame(zoom).isNull());
    // Longer than a tile, and than QPainter's coordinates reach.
    const CTavixImage8 strip = Noise(3, 40000);
    window.RemoveAllGraphics();
    window.SetImage(&strip);
    const QImage frame = window.GetFrame();
    ASSERT_EQ(frame.size(), QSize(3, 40000));
    int wrong = 0;
    for (int y = 0; y < 40000; ++y)
        for (int x = 0; x < 3; ++x)
            wrong += qRed(frame.pixel(x, y)) != strip.GetPixel(x, y);
    EXPECT_EQ(wrong, 0);
}
