#include "TAVIX20/display/view_transform.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

using tavix::ViewTransform;

namespace {

ViewTransform Make(CSize image, CSize client) {
    ViewTransform view;
    view.SetImageSize(image);
    view.SetClientSize(client);
    view.Fit(client);
    return view;
}

} // namespace

TEST(ViewTransformTest, FitTakesTheSmallerRatioOfTheAreaLessFive) {
    struct Case {
        CSize image;
        CSize client;
        double ratio;
    };
    for (const Case &c : {Case{{640, 480}, {645, 245}, 0.5}, Case{{100, 400}, {205, 405}, 1.0},
                          Case{{10, 10}, {105, 205}, 10.0}, Case{{0, 10}, {105, 205}, 1.0},
                          Case{{10, 10}, {5, 205}, 1.0}}) {
        const ViewTransform view = Make(c.image, c.client);
        EXPECT_DOUBLE_EQ(view.Zoom(), c.ratio);
        EXPECT_DOUBLE_EQ(view.FitRatio(), c.ratio);
        EXPECT_TRUE(view.IsFitted());
    }
}

TEST(ViewTransformTest, StepsClampSnapAndFit) {
    struct Case {
        double zoom;
        double step; ///< Negative: out.
        double expected;
        bool fitted;
    };
    // The image fits at 0.5.
    for (const Case &c :
         {Case{24.8, 0.5, 25.0, false}, Case{25.0, 0.5, 25.0, false}, Case{1.0, 0.5, 1.5, false},
          Case{40.0, 1.0, 25.0, false}, Case{2.0, -0.5, 1.5, false}, Case{0.8, -0.5, 0.5, true},
          Case{0.9, -0.5, 0.5, false}, Case{1.0, -0.5, 0.5, false}, Case{40.0, -1.0, 25.0, false},
          Case{1.0, -1.0, 0.5, true}}) {
        SCOPED_TRACE(testing::Message() << c.zoom << " by " << c.step);
        ViewTransform view = Make({640, 480}, {645, 245});
        view.SetZoom(c.zoom);
        view.SetScroll({50, 50});
        if (c.step > 0)
            EXPECT_EQ(view.StepIn(c.step), c.zoom != 25.0);
        else
            EXPECT_TRUE(view.StepOut(-c.step, {645, 245}));
        EXPECT_DOUBLE_EQ(view.Zoom(), c.expected);
        EXPECT_EQ(view.IsFitted(), c.fitted);
        if (c.expected == 0.5) {
            EXPECT_EQ(view.Scroll(), CPoint(0, 0));
        }
    }
}

TEST(ViewTransformTest, SteppingKeepsTheImagePointUnderTheCentre) {
    ViewTransform view = Make({1000, 800}, {400, 300});
    view.SetZoom(2.0);
    view.SetScroll({700, 500});
    const CPoint centre(200, 150);
    const CPoint anchor = view.ClientToImage(centre);
    for (int i = 0; i < 6; ++i) {
        if (i < 3)
            view.StepIn(0.5);
        else
            view.StepOut(0.5, {400, 300});
        const CPoint now = view.ImageToClient(anchor);
        // The anchor is a whole image pixel, so it may come to lie up to one of them off.
        EXPECT_LE(std::abs(now.x - centre.x), view.Zoom()) << view.Zoom();
        EXPECT_LE(std::abs(now.y - centre.y), view.Zoom()) << view.Zoom();
    }
}

TEST(ViewTransformTest, CoordinatesTruncateTowardZero) {
    ViewTransform view = Make({100, 50}, {640, 480});
    view.SetZoom(1.5); // Scaled 150 x 75, centred: origin (245, 202).
    EXPECT_EQ(view.Origin(), CPoint(245, 202));
    EXPECT_EQ(view.ImageToClient({3, 5}), CPoint(245 + 4, 202 + 7));
    EXPECT_EQ(view.ImageToClient({-3, -5}), CPoint(245 - 4, 202 - 7));
    EXPECT_EQ(view.ClientToImage({249, 209}), CPoint(2, 4));
    EXPECT_EQ(view.ClientToImage({244, 201}), CPoint(0, 0)); // -0.67 truncates to 0.
    EXPECT_FALSE(view.PixelAt({244, 210}) || view.PixelAt({249, 201}));
    EXPECT_FALSE(view.PixelAt({245 + 150, 210}) || view.PixelAt({249, 202 + 75}));
    EXPECT_EQ(view.PixelAt({245, 202 + 74}), CPoint(0, 49));
    view.SetZoom(10.0); // 1000 x 500: larger than the client.
    view.SetScroll({5000, -3});
    EXPECT_EQ(view.Scroll(), CPoint(360, 0));
    EXPECT_EQ(view.MaxScroll(), CPoint(360, 20));
    EXPECT_EQ(view.ImageToClient({40, 2}), CPoint(40, 20));
    EXPECT_EQ(view.ClientToImage({49, 29}), CPoint(40, 2));
    view.ScrollToCentre({220, 1000});
    EXPECT_EQ(view.Scroll(), CPoint(260, 20));
    view.ScrollToCentre({INT_MIN, INT_MAX});
    EXPECT_EQ(view.Scroll(), CPoint(0, 20));
}

TEST(ViewTransformTest, WithoutAnImageTheZoomStaysOne) {
    ViewTransform view;
    view.SetClientSize({640, 480});
    view.SetZoom(3.0);
    EXPECT_FALSE(view.StepIn(0.5));
    EXPECT_FALSE(view.StepOut(0.5, {640, 480}));
    EXPECT_DOUBLE_EQ(view.Zoom(), 1.0);
    ViewTransform shown = Make({10, 10}, {100, 100});
    for (double bad : {0.0, -1.0, std::nan(""), HUGE_VAL})
        shown.SetZoom(bad);
    EXPECT_TRUE(shown.IsFitted());
}

TEST(ViewTransformTest, PaintedBlocksTileTheClientWithoutGapOrOverlap) {
    for (double zoom : {0.37, 1.0, 1.25, 1.5, 2.9, 7.0, 12.34}) {
        ViewTransform view = Make({60, 40}, {200, 100});
        view.SetZoom(zoom);
        view.SetScroll({37, 11});
        for (int x = 0; x < 60; ++x) {
            const CRect block = view.PaintedRect({x, 3, x + 1, 4});
            EXPECT_EQ(block.right, view.PaintedRect({x + 1, 3, x + 2, 4}).left);
            // A client pixel belongs to the block that its centre falls into.
            for (int c = block.left; c < block.right; ++c) {
                const double centre = (c + 0.5 - view.Origin().x + view.Scroll().x) / view.Zoom();
                EXPECT_GE(centre, x - 1e-9);
                EXPECT_LT(centre, x + 1 + 1e-9);
            }
        }
    }
}
