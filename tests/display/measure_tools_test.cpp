#include "display/tool_events.h"

#include "TAVIX20/display/tavix_view.h"
#include "TAVIX20/display/tools/calibration_tool.h"
#include "TAVIX20/display/tools/draw_tool.h"
#include "TAVIX20/display/tools/tool_registry.h"

#include <cmath>
#include <functional>
#include <string>

namespace {

class MeasureToolTest : public ToolTest {
protected:
    CCalibrationTool &Calibration() {
        return static_cast<CCalibrationTool &>(
            *tavix::ToolRegistry::Instance().Find(tavix::CALIBRATION));
    }
    void TearDown() override { Calibration().SetAsk(nullptr); }
    /// Chooses the tool and forgets what there was.
    void Start(_TOOL_TYPE tool) {
        window.Tool(tool);
        window.RemoveAll();
        results.clear();
        statusChanges = 0;
    }
    void Escape() { QTest::keyClick(&ViewOf(window), Qt::Key_Escape); }
    std::vector<POINT> LastPoints() {
        return results.empty() ? std::vector<POINT>() : results.back().points;
    }
};

} // namespace

TEST_F(MeasureToolTest, EachToolLeavesItsObjectAndReportsItsPoints) {
    ShowPicture();
    window.SetCalibration(0.5);
    struct Case {
        _TOOL_TYPE tool;
        const char *name;
        std::function<void()> events;
        QPoint at; ///< As the host gets it.
        std::vector<POINT> points;
        const char *keys; ///< Part of the object's list.
    };
    const auto drag = [this] { Drag({20, 30}, {80, 110}); };
    const auto clicks = [this] {
        Click(20, 20);
        Click(80, 20);
        Click(80, 60);
    };
    const Case cases[] = {
        {TOOL_TYPE_MEASURE_POINT,
         "MEASURE_POINT",
         [this] {
             Drag({20, 30}, {22, 32});
         },
         {22, 32},
         {{10, 15}},
         "SHAPE=MEASURE_POINT;POINT=10.00, 15.00"},
        {TOOL_TYPE_MSR_DISTANCE,
         "MEASURE_DISTANCE",
         drag,
         {80, 110},
         {{10, 15}, {40, 55}},
         "DISTANCE=25.00 um"},
        {TOOL_TYPE_MEASURE_HLINE,
         "MEASURE_HLINE",
         drag,
         {80, 110},
         {{10, 15}, {40, 15}},
         "DISTANCE=15.00 um"},
        {TOOL_TYPE_MEASURE_VLINE,
         "MEASURE_VLINE",
         drag,
         {80, 110},
         {{10, 15}, {10, 55}},
         "DISTANCE=20.00 um"},
        {TOOL_TYPE_MEASURE_CYCLE,
         "MEASURE_CYCLE",
         drag,
         {80, 110},
         {{10, 15}, {40, 55}},
         "CENTER=10.00, 15.00;DIAMETER=50.00 um;RADIUS=25.00 um"},
        {TOOL_TYPE_MEASURE_POLYLINE,
         "MEASURE_POLYLINE",
         [&] {
             clicks();
             DoubleClick(80, 60);
         },
         {80, 60},
         {{10, 10}, {40, 10}, {40, 30}},
         "LENGTH=25.00 um"},
        {TOOL_TYPE_MEASURE_POLYGON,
         "MEASURE_POLYGON",
         [&] {
             clicks();
             window.SendToolResult();
         },
         {40, 30},
         {{10, 10}, {40, 10}, {40, 30}},
         "AREA=75.00 um2"},
    };
    for (const Case &test : cases) {
        SCOPED_TRACE(test.name);
        Start(test.tool);
        test.events();
        ASSERT_EQ(results.size(), 1U);
        EXPECT_EQ(results[0], (ToolResult{test.tool, test.at.x(), test.at.y(), test.points}));
        EXPECT_EQ(statusChanges, 1);
        const std::string keys = window.GetObjectString(test.name).GetString();
        EXPECT_NE(keys.find(test.keys), std::string::npos) << keys;
        EXPECT_EQ(window.RemoveAllGraphics(), 1);
        EXPECT_EQ(window.GetTool(), test.tool);
        test.events(); // Once more without choosing the tool again.
        EXPECT_EQ(results.size(), 2U);
    }
    // No number selects the rectangle.
    CDrawTool &rectangle = *tavix::ToolRegistry::Instance().Find(tavix::MEASURE_RECT);
    auto &view = static_cast<CTavixView &>(ViewOf(window));
    rectangle.OnLButtonDown(view, MK_LBUTTON, {20, 30});
    rectangle.OnLButtonUp(view, 0, {80, 110});
    EXPECT_EQ(LastPoints(), (std::vector<POINT>{{10, 15}, {40, 55}}));
    const std::string keys = window.GetObjectString("MEASURE_RECT").GetString();
    EXPECT_NE(keys.find("LENGTH=70.00 um;AREA=300.00 um2"), std::string::npos) << keys;
}

TEST_F(MeasureToolTest, WhatIsNoStrokeMeasuresNothing) {
    ShowPicture();
    const auto isDropped = [this](_TOOL_TYPE tool, QPoint to) {
        Start(tool);
        Drag({20, 30}, to);
        return results.empty() && window.RemoveAllGraphics() == 0;
    };
    EXPECT_TRUE(isDropped(TOOL_TYPE_MEASURE_POINT, {23, 30}));
    EXPECT_TRUE(isDropped(TOOL_TYPE_MSR_DISTANCE, {21, 31}));
    EXPECT_FALSE(isDropped(TOOL_TYPE_MSR_DISTANCE, {21, 32}));
    EXPECT_TRUE(isDropped(TOOL_TYPE_MEASURE_HLINE, {21, 60}));
    EXPECT_TRUE(isDropped(TOOL_TYPE_MEASURE_VLINE, {60, 31}));
    window.Zoom(8.0);
    EXPECT_TRUE(isDropped(TOOL_TYPE_MEASURE_CYCLE, {23, 30})) << "within one pixel";

    for (const auto &[tool, tooFew] :
         {std::pair{TOOL_TYPE_MEASURE_POLYLINE, 1}, std::pair{TOOL_TYPE_MEASURE_POLYGON, 2}}) {
        Start(tool);
        for (int i = 0; i < tooFew; ++i)
            Click(24 + 40 * i, 40);
        DoubleClick(24, 40);
        EXPECT_TRUE(results.empty());
        window.SendToolResult();
        EXPECT_EQ(LastPoints().size(), 0U);
        Click(24, 40);
        window.Undo(); // Not theirs.
        window.SendToolResult();
        EXPECT_EQ(LastPoints(), (std::vector<POINT>{{3, 5}}));
        EXPECT_EQ(window.RemoveAllGraphics(), 0);
        for (int i = 0; i < 1005; ++i)
            Click(i % 140, 10);
        window.SendToolResult();
        EXPECT_EQ(LastPoints().size(), 1000U);
    }
}

TEST_F(MeasureToolTest, DragsStayOnThePictureWhenItIsZoomed) {
    for (const _TOOL_TYPE tool :
         {TOOL_TYPE_MSR_DISTANCE, TOOL_TYPE_LINE_FOCUS, TOOL_TYPE_ROI_RECTANGLE}) {
        ShowPicture();
        Start(tool);
        Press(20, 30);
        window.Zoom(4.0);
        window.SetScrollPos(SB_HORZ, 0);
        window.SetScrollPos(SB_VERT, 0);
        Release(120, 80);
        const bool isRoi = tool == TOOL_TYPE_ROI_RECTANGLE; // Which gives no result.
        EXPECT_EQ(LastPoints(),
                  isRoi ? std::vector<POINT>() : (std::vector<POINT>{{10, 15}, {30, 20}}));
    }
    EXPECT_EQ(window.GetRoiToPixelCount(), 20 * 5);
}

TEST_F(MeasureToolTest, FeedbackLeavesNoTraceWhenItIsDropped) {
    ShowPicture();
    for (int tool = TOOL_TYPE_MEASURE_CYCLE; tool <= TOOL_TYPE_RETICLE_ROTATE; ++tool) {
        Start(static_cast<_TOOL_TYPE>(tool));
        if (tool >= TOOL_TYPE_RETICLE_MOVE)
            window.Tool(static_cast<_TOOL_TYPE>(tool)); // Shows the reticle again.
        const QImage before = Grab(window);
        Press(20, 30);
        if (tool != TOOL_TYPE_MEASURE_POINT)
            Move(70, 75, Qt::LeftButton);
        EXPECT_NE(Grab(window), before) << tool;
        Escape();
        EXPECT_EQ(Grab(window), before) << tool;
        Release(70, 75);
        EXPECT_EQ(Grab(window), before) << tool;
        EXPECT_TRUE(results.empty()) << tool;
        EXPECT_EQ(window.GetTool(), tool);
        Escape(); // Nothing is under way.
        EXPECT_EQ(window.GetTool(), TOOL_TYPE_SELECT);
    }
}

TEST_F(MeasureToolTest, TheCalibrationIsTheTrueLengthByTheDrawnOne) {
    ShowPicture();
    window.SetCalibration(2.0);
    std::optional<double> answer;
    double shown = 0;
    Calibration().SetAsk([&](CTavixView &, double length) {
        shown = length;
        Move(60, 60); // The mouse goes on while the question stands.
        Grab(window);
        return answer;
    });
    Start(TOOL_TYPE_CALIBRATION);
    Drag({20, 30}, {80, 110}); // 50 pixels.
    EXPECT_EQ(LastPoints(), (std::vector<POINT>{{10, 15}, {40, 55}}));
    EXPECT_EQ(shown, 100.0);
    EXPECT_EQ(window.GetCalibration(), 2.0) << "cancelled";
    answer = 12.5;
    Drag({20, 30}, {80, 110});
    EXPECT_EQ(window.GetCalibration(), 0.25);
    EXPECT_EQ(statusChanges, 3); // Of each result and of the new value.
    EXPECT_EQ(window.GetTool(), TOOL_TYPE_CALIBRATION);
    EXPECT_EQ(window.RemoveAllGraphics(), 0);
    window.Zoom(8.0);
    Drag({16, 24}, {19, 28}); // Within a pixel there is no length.
    EXPECT_EQ(results.size(), 2U);

    auto *const doomed = new CTavixWnd;
    doomed->resize(150, 100);
    doomed->show();
    doomed->Tool(TOOL_TYPE_CALIBRATION);
    Calibration().SetAsk([&](CTavixView &, double) {
        delete doomed;
        return answer;
    });
    Send(*doomed, QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton, Qt::LeftButton);
    Send(*doomed, QEvent::MouseButtonRelease, {60, 60}, Qt::LeftButton, Qt::NoButton);
}

TEST_F(MeasureToolTest, TheReticleIsMovedTurnedAndKeptOnThePicture) {
    ShowPicture();
    window.SetScrollPos(SB_HORZ, 0);
    window.SetScrollPos(SB_VERT, 0);
    const QImage plain = Grab(window);
    window.Tool(TOOL_TYPE_RETICLE_MOVE);
    EXPECT_NE(Grab(window), plain);
    Drag({20, 20}, {0, 0}); // From the middle of the picture.
    EXPECT_EQ(results.back(), (ToolResult{TOOL_TYPE_RETICLE_MOVE, 0, 0, {{40, 30}}}));
    const auto isGreen = [this](int x, int y) {
        return Grab(window).pixel(x, y) == qRgb(0, 255, 0);
    };
    EXPECT_TRUE(isGreen(3, 60) && isGreen(80, 3)) << "both lines cross the picture";
    Drag({20, 20}, {-500, 40});
    EXPECT_EQ(LastPoints(), (std::vector<POINT>{{0, 40}})) << "not beside the picture";
    Drag({20, 20}, {100, 20});

    window.Tool(TOOL_TYPE_RETICLE_ROTATE);
    const auto turn = [&](QPoint from, QPoint to) {
        Drag(from, to);
        const CSize arm = CPoint(LastPoints().at(1)) - LastPoints().at(0);
        return std::atan2(-arm.cy, arm.cx) * 180 / 3.14159265358979;
    };
    EXPECT_NEAR(turn({121, 81}, {101, 61}), 45, 1); // From right of the centre to its upper right.
    EXPECT_EQ(LastPoints()[0], (POINT{40, 40}));
    EXPECT_NEAR(turn({81, 41}, {121, 81}), -45, 2) << "from wherever the press is";
    EXPECT_NEAR(turn({81, 81}, {81, 81}), -45, 2) << "the centre has no direction";

    const CTavixImage8 small = Noise(30, 20);
    window.SetImage(&small);
    window.Tool(TOOL_TYPE_RETICLE_MOVE);
    Click(10, 10);
    EXPECT_EQ(LastPoints(), (std::vector<POINT>{{15, 10}})) << "it is in the new picture";
    window.RemoveAll();
    const QImage hidden = Grab(window);
    window.Tool(TOOL_TYPE_RETICLE_MOVE);
    EXPECT_NE(Grab(window), hidden);
}
