// Regions of interest against a simulation pixel by pixel.

#include "TAVIX20/display/roi_element_array.h"

#include "TAVIX20/display/roi_stripes.h"
#include "TAVIX20/display/view_transform.h"
#include "platform/polygon_reference.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using TavixArray::CPointArray;
using TavixArray::CPointArrayArray;

constexpr int SIDE = 40;

_stRoiElement Element(const std::vector<POINT> &points, int method) {
    return {CPointArray(std::span<const POINT>(points)), method};
}

std::vector<POINT> Square(int left, int top, int side) {
    return {{left, top}, {left + side, top}, {left + side, top + side}, {left, top + side}};
}

struct Stroke {
    std::vector<POINT> points;
    int method;
};

/// Which pixels of the picture the strokes combine to.
std::vector<bool> Simulate(const std::vector<Stroke> &strokes) {
    std::vector<bool> mask(SIDE * SIDE);
    bool isStarted = false;
    for (const Stroke &stroke : strokes) {
        if (stroke.points.empty())
            continue;
        for (int i = 0; i < SIDE * SIDE; ++i) {
            const bool isIn = reference::IsInPolygon(stroke.points, ALTERNATE, i % SIDE, i / SIDE);
            auto pixel = mask[static_cast<std::size_t>(i)];
            if (!isStarted)
                pixel = isIn;
            else if (isIn && (stroke.method == 0 || stroke.method == 1))
                pixel = stroke.method == 1;
        }
        isStarted = true;
    }
    return mask;
}

std::vector<POINT> PointsOf(const CPointArray &points) {
    return {points.GetBufPtr(), points.GetBufPtr() + points.GetElementCount()};
}

bool IsInAny(const CPointArrayArray &lists, int x, int y) {
    for (int i = 0; i < lists.GetElementCount(); ++i)
        if (reference::IsInPolygon(PointsOf(lists[i]), ALTERNATE, x, y))
            return true;
    return false;
}

bool IsOddInAll(const CRoiElementArray &elements, int x, int y) {
    bool isOdd = false;
    for (const CPointArrayArray *lists : {&elements.OuterOutlines(), &elements.HoleOutlines()})
        for (int i = 0; i < lists->GetElementCount(); ++i)
            isOdd ^= reference::IsInPolygon(PointsOf((*lists)[i]), ALTERNATE, x, y);
    return isOdd;
}

TEST(RoiElementArrayTest, CombinesRandomStrokesLikeASimulation) {
    std::mt19937 random(5);
    const auto below = [&random](int end) { return static_cast<int>(random() % unsigned(end)); };
    for (int round = 0; round < 400; ++round) {
        std::vector<Stroke> strokes(static_cast<std::size_t>(1 + below(7)));
        CRoiElementArray elements;
        for (Stroke &stroke : strokes) {
            stroke.method = below(4) - 1;
            for (int points = below(9); points > 0; --points)
                stroke.points.push_back({below(SIDE), below(SIDE)});
            elements.Add(Element(stroke.points, stroke.method));
        }
        const std::vector<bool> mask = Simulate(strokes);
        const RegionHandle region(elements.CreateRegion());
        CPtrArray parts;
        elements.CreateRegions(parts);
        int count = 0;
        for (int i = 0; i < SIDE * SIDE; ++i) {
            const int x = i % SIDE;
            const int y = i / SIDE;
            const bool isIn = mask[static_cast<std::size_t>(i)];
            ASSERT_EQ(IsOddInAll(elements, x, y), isIn) << "refilled outlines, " << x << "," << y;
            const bool isHeld =
                IsInAny(elements.OuterOutlines(), x, y) && !IsInAny(elements.HoleOutlines(), x, y);
            ASSERT_EQ(PtInRegion(region.get(), x, y), isHeld ? 1 : 0);
            int holders = 0;
            for (int part = 0; part < parts.GetSize(); ++part)
                holders += PtInRegion(static_cast<HRGN>(parts[part]), x, y);
            ASSERT_EQ(holders, isHeld ? 1 : 0);
            count += isHeld ? 1 : 0;
        }
        EXPECT_EQ(elements.PixelCount(), count);
        for (int part = 0; part < parts.GetSize(); ++part)
            DeleteObject(static_cast<HRGN>(parts[part]));
        // A list at once: painted, or combined as a tree where much of its area is empty.
        std::vector<_stRoiElement> copies;
        for (const Stroke &stroke : strokes)
            copies.push_back(Element(stroke.points, stroke.method));
        for (const bool isSparse : {false, true}) {
            if (isSparse)
                copies.push_back(Element(Square(900'000, -900'000, 3), 1));
            CRoiElementArray assigned;
            assigned.Assign(copies);
            const RegionHandle all(assigned.CreateRegion());
            for (int i = 0; i < SIDE * SIDE; ++i)
                ASSERT_EQ(PtInRegion(all.get(), i % SIDE, i / SIDE),
                          PtInRegion(region.get(), i % SIDE, i / SIDE));
            EXPECT_EQ(assigned.PixelCount(), count + (isSparse ? 9 : 0));
        }
    }
}

TEST(RoiElementArrayTest, StartsWithTheFirstElementThatHasPoints) {
    struct Case {
        std::vector<Stroke> strokes;
        double area;
    };
    const auto big = Square(0, 0, 10);
    const auto small = Square(2, 2, 3);
    const std::vector<Case> cases{
        {{{big, 0}}, 100},                          // A list that starts with a subtraction.
        {{{big, 5}, {small, 0}}, 91},               // Any method starts the region.
        {{{{}, 1}, {big, 0}}, 100},                 // One without points does not.
        {{{{{1, 1}}, 1}, {big, 1}}, 100},           // One point is an empty region
        {{{{{1, 1}, {5, 5}}, 1}, {big, 0}}, 0},     // that still counts as the first.
        {{{big, 1}, {small, 5}}, 100},              // Another method has no effect.
        {{{{{0, 0}, {1 << 30, 0}, {0, 9}}, 1}}, 0}, // No region has such a point.
        {{{Square(0, 0, 30), 1}, {Square(5, 5, 20), 0}, {Square(10, 10, 5), 1}}, 500}, // Island.
    };
    for (const Case &test : cases) {
        CRoiElementArray elements;
        for (const Stroke &stroke : test.strokes)
            elements.Add(Element(stroke.points, stroke.method));
        EXPECT_EQ(elements.PixelCount(), test.area) << &test - cases.data();
        EXPECT_EQ(elements.GetCount(), static_cast<int>(test.strokes.size()));
        elements.RemoveAll();
        EXPECT_EQ(elements.CreateRegion(), nullptr);
    }
}

TEST(RoiElementArrayTest, ClientOutlinesFollowTheViewAndClose) {
    CRoiElementArray elements;
    elements.Add(Element(Square(2, 3, 4), 1));
    tavix::ViewTransform view;
    view.SetImageSize({100, 100});
    view.SetClientSize({50, 50});
    view.SetZoom(1.5);
    view.SetScroll({1, 2});
    elements.UpdateClientOutlines(view);
    const std::vector<POINT> expected{{2, 2}, {8, 2}, {8, 8}, {2, 8}, {2, 2}};
    EXPECT_EQ(PointsOf(elements.ClientOuterOutlines()[0]), expected);
}

TEST(RoiStripesTest, DrawsThePatternOfItsPhaseAndNothingElse) {
    CPointArrayArray outlines;
    outlines.Add(CPointArray(
        std::span<const POINT>(std::vector<POINT>{{3, 2}, {60, 2}, {60, 20}, {3, 20}, {3, 2}})));
    constexpr unsigned rows[] = {0xF0, 0x78, 0x3C, 0x1E, 0x0F, 0x87, 0xC3, 0xE1};
    tavix::RoiStripes stripes;
    for (int step = 0; step < 10; ++step) {
        stripes.Advance();
        ASSERT_EQ(stripes.Phase(), step % 9);
        QImage direct(50, 30, QImage::Format_RGB32);
        direct.fill(qRgb(1, 2, 3));
        QImage brushed = direct.convertToFormat(QImage::Format_RGB888);
        for (QImage *image : {&direct, &brushed}) {
            QPainter painter(image);
            stripes.Draw(painter, outlines, QRect(0, 0, 50, 30));
        }
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 50; ++x) {
                const bool isOnLine = x >= 3 && y >= 2 && y <= 20 && (x == 3 || y == 2 || y == 20);
                const bool isWhite = rows[(step % 9 + y) % 8] >> (7 - x % 8) & 1;
                const QRgb expected = !isOnLine ? qRgb(1, 2, 3) : isWhite ? 0xFFFFFFFF : 0xFF000000;
                ASSERT_EQ(direct.pixel(x, y), expected) << x << "," << y << " step " << step;
                ASSERT_EQ(brushed.pixel(x, y), expected);
            }
    }
}

} // namespace
