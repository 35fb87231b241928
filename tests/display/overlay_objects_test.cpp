#include "TAVIX20/display/draw_boxes.h"
#include "TAVIX20/display/draw_lines.h"
#include "TAVIX20/display/draw_measures.h"
#include "TAVIX20/display/draw_obj_array.h"
#include "TAVIX20/display/draw_points.h"
#include "TAVIX20/display/draw_polygons.h"
#include "TAVIX20/display/draw_text.h"
#include "TAVIX20/display/object_keys.h"
#include "TAVIX20/display/view_transform.h"
#include "TAVIX20/platform/dc.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <typeinfo>

namespace {

using Object = std::unique_ptr<CDrawObj>;

constexpr tagPOINT STAR[] = {{40, 20}, {60, 70}, {15, 35}, {70, 38}, {18, 66}};

template <typename Class, typename... Arguments>
Object Make(const Arguments &...arguments) {
    return std::make_unique<Class>(arguments...);
}

template <typename Class, typename... Arguments>
Object Measure(const Arguments &...arguments) {
    auto object = std::make_unique<Class>(arguments...);
    object->SetCalibration(0.37);
    object->SetTextColor(0x102030);
    object->SetFont(9, "Sans");
    return object;
}

struct Kind {
    const char *shape;
    Object object;
    std::size_t handles;
};

/// One object of every class.
std::vector<Kind> Kinds() {
    const std::span<const tagPOINT> star(STAR);
    const CPoint a(20, 30);
    const CPoint b(61, 44);
    std::vector<Kind> kinds;
    kinds.push_back({"POINT", Make<CDrawPointObj>(a), 1});
    kinds.push_back({"CROSS_POINT", Make<CDrawCrossPointObj>(a, CSize(5, 3)), 1});
    kinds.push_back({"LINE", Make<CDrawLineObj>(a, b), 2});
    kinds.push_back({"H_STYLE_LINE", Make<CDrawHStyleLineObj>(a, b, 9), 2});
    kinds.push_back({"ARROW_LINE", Make<CDrawArrowLineObj>(a, b, 7, 5, 3), 2});
    kinds.push_back({"RETICLE_LINE", Make<CDrawReticleLineObj>(a, b), 2});
    kinds.push_back({"RECTANGLE", Make<CDrawRectObj>(20, 30, 33, 21), 8});
    kinds.push_back({"FILL_RECTANGLE", Make<CFillRectObj>(20, 30, 33, 21), 8});
    kinds.push_back({"ELLIPSE", Make<CDrawEllipseObj>(20, 30, 33, 21), 8});
    kinds.push_back({"FILL_ELLIPSE", Make<CFillEllipseObj>(20, 30, 33, 21), 8});
    kinds.push_back({"POLYLINE", Make<CDrawPolylineObj>(star), 5});
    kinds.push_back({"POLYGON", Make<CDrawPolygonObj>(star), 5});
    kinds.push_back({"FILL_POLYGON", Make<CFillPolygonObj>(star), 5});
    kinds.push_back({"HATCH_POLYGON", Make<CFillHatchPolygonObj>(star, 4), 5});
    kinds.push_back({"TEXT", Make<CDrawTextObj>(a, 5, 12, "50 % ;= \nWide"), 1});
    kinds.push_back({"MEASURE_POINT", Measure<CMeasurePointObj>(a), 1});
    kinds.push_back({"MEASURE_DISTANCE", Measure<CMeasureDistanceObj>(a, b), 2});
    kinds.push_back({"MEASURE_CYCLE", Measure<CMeasureCycleObj>(tagPOINTD{40, 41}, 17.0), 2});
    kinds.push_back({"MEASURE_POLYLINE", Measure<CMeasurePolylineObj>(star), 5});
    kinds.push_back({"MEASURE_POLYGON", Measure<CMeasurePolygonObj>(star), 5});
    for (const Kind &kind : kinds)
        kind.object->SetName("name");
    return kinds;
}

std::string Keys(const CDrawObj &object) {
    return object.GetObjectString().GetString();
}

tavix::ViewTransform ViewAt(double zoom) {
    tavix::ViewTransform view;
    view.SetImageSize({100, 90});
    view.SetClientSize({520, 480});
    view.SetZoom(zoom);
    view.SetScroll({31, 17});
    return view;
}

/// Under a painter that clips, QPainter draws everything; else the canvas writes into the image.
QImage Drawn(const CDrawObj &object, const tavix::ViewTransform &view, const QRect &clip,
             bool clips = true) {
    QImage screen(520, 480, QImage::Format_RGB32);
    screen.fill(Qt::black);
    QPainter painter(&screen);
    if (clips)
        painter.setClipRect(clip);
    tavix::CanvasStorage storage;
    tavix::ObjectCanvas canvas(painter, view, clip, storage);
    object.Draw(canvas);
    return screen;
}

} // namespace

TEST(OverlayObjectsTest, CopiesAndKeyListsOfEveryClass) {
    for (const Kind &kind : Kinds()) {
        SCOPED_TRACE(kind.shape);
        CDrawObj &object = *kind.object;
        const std::string keys = Keys(object);
        EXPECT_TRUE(keys.starts_with(std::string("SHAPE=") + kind.shape + ";"));
        const Object copy = object.Clone();
        EXPECT_TRUE(typeid(*copy) == typeid(object));
        EXPECT_STREQ(copy->GetName(), "name");
        EXPECT_EQ(Keys(*copy), keys);

        object.SetObjectString(keys);
        EXPECT_EQ(Keys(object), keys);
        for (const tavix::KeyEntry &entry : tavix::ParseKeys(keys)) {
            if (entry.key == "TEXT" || entry.key == "FONT_FACE")
                continue;
            for (const char *value : {"", "x", "1.5x, 2", "nan", "1e300, 1", "99999999999999"})
                object.SetObjectString(std::string(entry.key) + "=" + value);
        }
        object.SetObjectString("NO_SUCH_KEY=1;;=;no equals sign;SHAPE=OTHER;PEN_WIDTH=0");
        if (std::string(kind.shape) == "MEASURE_CYCLE")
            object.CopyFrom(*copy); // Any finite number is an angle or a radius.
        EXPECT_EQ(Keys(object), keys);

        copy->Offset({7, -3});
        copy->SetStyle(3, PS_DASH, 0xA1B2C3);
        EXPECT_NE(Keys(*copy), keys);
        object.SetObjectString(Keys(*copy));
        EXPECT_EQ(Keys(object), Keys(*copy));
        EXPECT_EQ(object.GetBoundRect(), copy->GetBoundRect());
    }
}

TEST(OverlayObjectsTest, KeyListsSayWhatWasMeasured) {
    constexpr tagPOINT square[] = {{10, 10}, {14, 10}, {14, 13}, {10, 13}};
    const auto measured = [](auto object) {
        object.SetCalibration(2.0);
        return Keys(object);
    };
    const std::string pen = "STROKE_COLOR=0x00ff00;PEN_WIDTH=1;PEN_STYLE=0;";
    const std::string text = "TEXT_COLOR=0xffffff;FONT_SIZE=10";
    const std::string corners =
        "POINT=10.00, 10.00;POINT=14.00, 10.00;POINT=14.00, 13.00;POINT=10.00, 13.00;";
    const std::span<const tagPOINT> points(square);
    EXPECT_EQ(measured(CMeasurePointObj({-3, 4})),
              "SHAPE=MEASURE_POINT;POINT=-3.00, 4.00;" + pen + text);
    EXPECT_EQ(measured(CMeasureDistanceObj({1, 2}, {4, 6})),
              "SHAPE=MEASURE_DISTANCE;START=1.00, 2.00;END=4.00, 6.00;" + pen + text +
                  ";DISTANCE=10.00 um");
    EXPECT_EQ(measured(CMeasurePolylineObj(points)),
              "SHAPE=MEASURE_POLYLINE;" + corners + pen + text + ";LENGTH=22.00 um");
    EXPECT_EQ(measured(CMeasurePolygonObj(points)),
              "SHAPE=MEASURE_POLYGON;" + corners + pen + text + ";LENGTH=28.00 um;AREA=48.00 um2");
    CMeasureCycleObj cycle({1.5, 2.0}, 5.0);
    cycle.SetCalibration(2.0);
    EXPECT_EQ(Keys(cycle), "SHAPE=MEASURE_CYCLE;CENTER=1.50, 2.00;DIAMETER=20.00 um;"
                           "RADIUS=10.00 um;START Angle=0.00;END Angle=360.00;" +
                               pen + text + ";LENGTH=62.83 um;AREA=314.16 um2");
    // In a whole list, what was edited counts, not what depends on it.
    std::string edited = Keys(cycle);
    edited.replace(edited.find("RADIUS=10.00"), 12, "RADIUS=3.00 ");
    cycle.SetObjectString(edited);
    EXPECT_DOUBLE_EQ(cycle.GetRadius(), 3.0);
    CMeasureCycleObj third({0, 0}, 1.0 / 3.0);
    third.SetObjectString(Keys(third));
    EXPECT_DOUBLE_EQ(third.GetRadius(), 1.0 / 3.0);
}

TEST(OverlayObjectsTest, HandlesOfEveryClass) {
    for (const Kind &kind : Kinds()) {
        SCOPED_TRACE(kind.shape);
        CDrawObj &object = *kind.object;
        const int count = object.GetHandleCount();
        ASSERT_EQ(count, static_cast<int>(kind.handles));
        EXPECT_EQ(object.GetHandle(count + 1), CPoint(-1, -1));
        EXPECT_EQ(object.GetHandle(0), object.GetHandle(1));
        EXPECT_EQ(object.GetHandleCursor(count + 1), Qt::ArrowCursor);
        EXPECT_FALSE(object.HitTest(CPoint(300, 300)));
        const std::string before = Keys(object);
        for (int handle = 1; handle <= count; ++handle) {
            const CPoint at = object.GetHandle(handle);
            EXPECT_EQ(object.HitTest(at.x, at.y), handle);
            EXPECT_TRUE(object.HitTest(at));
            EXPECT_NE(object.GetHandleCursor(handle), Qt::ArrowCursor);
            object.MoveHandleTo(handle, at);
            EXPECT_EQ(Keys(object), before);

            const Object moved = object.Clone();
            moved->Offset({4, 9});
            EXPECT_EQ(moved->GetHandle(handle), at + CSize(4, 9));
            moved->MoveTo(object.GetAnchor());
            EXPECT_EQ(Keys(*moved), before);
        }
    }
    CDrawRectObj box(10, 20, 30, 40);
    box.MoveHandleTo(1, {12, 15});
    EXPECT_EQ(box.GetBoundRect(), CRect(12, 15, 39, 59));
    box.MoveHandleTo(4, {-100, 0}); // Stops at the left edge.
    EXPECT_EQ(box.GetBoundRect(), CRect(12, 15, 12, 59));
    EXPECT_EQ(CDrawRectObj(10, 10, -4, 0).GetBoundRect(), CRect(6, 10, 9, 10));
}

TEST(OverlayObjectsTest, StopAtTheEndsOfTheCoordinateRange) {
    for (const CPoint &far : {CPoint(INT_MAX, INT_MIN), CPoint(INT_MIN, INT_MAX)})
        for (const Kind &kind : Kinds()) {
            SCOPED_TRACE(kind.shape);
            CDrawObj &object = *kind.object;
            const CSize size = object.GetBoundRect().Size();
            object.Offset(far);
            object.Offset(far);
            object.MoveTo(far);
            const CRect bounds = object.GetBoundRect();
            EXPECT_TRUE(bounds.left == far.x || bounds.right == far.x);
            if (object.GetHandleCount() > 2) {
                EXPECT_EQ(bounds.Size(), size); // Kept its form.
            }
            object.HitTest(CPoint(far.y, 0));
            object.MoveHandleTo(2, {INT_MAX, INT_MAX});
            object.SetStyle(INT_MAX, PS_DOT, 0);
            for (double zoom : {0.05, 25.0})
                Drawn(object, ViewAt(zoom), {0, 0, 520, 480});
        }
}

// Every pixel that an object paints lies in its bounds and margin, so that nothing is missed when
// only a part of the screen is repainted; and a repainted part shows what the whole does.
TEST(OverlayObjectsTest, BoundsHoldWhatIsDrawnAndPartsMeetTheWhole) {
    const QRect whole(0, 0, 520, 480);
    const QRect part(70, 90, 150, 130);
    for (const Kind &kind : Kinds())
        for (double zoom : {0.4, 1.0, 5.3})
            for (int width : {1, 2, 5}) {
                SCOPED_TRACE(testing::Message() << kind.shape << " at " << zoom << ", " << width);
                const tavix::ViewTransform view = ViewAt(zoom);
                CDrawObj &object = *kind.object;
                object.SetStyle(width, width == 2 ? PS_DASHDOT : PS_SOLID, 0x8040FF);
                const QImage all = Drawn(object, view, whole);
                const QImage some = Drawn(object, view, part);
                EXPECT_EQ(Drawn(object, view, whole, false), all);
                CRect bounds = object.GetBoundRect();
                ++bounds.right;
                ++bounds.bottom;
                CRect allowed = view.PaintedRect(bounds);
                allowed.InflateRect(object.GetDrawMargin() + 2, object.GetDrawMargin() + 2);
                int painted = 0;
                int outside = 0;
                int different = 0;
                for (int y = 0; y < 480; ++y)
                    for (int x = 0; x < 520; ++x) {
                        const bool set = all.pixel(x, y) != qRgb(0, 0, 0);
                        painted += set;
                        outside += set && !allowed.PtInRect(CPoint(x, y));
                        different += part.contains(x, y) && all.pixel(x, y) != some.pixel(x, y);
                    }
                EXPECT_GT(painted, 0);
                EXPECT_EQ(outside, 0);
                EXPECT_EQ(different, 0);
            }
}
