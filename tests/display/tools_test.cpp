#include "display/tool_events.h"

#include "TAVIX20/display/tools/draw_tool.h"
#include "TAVIX20/display/tools/tool_registry.h"

#include <QMenu>
#include <QPointer>
#include <QScreen>

namespace {

_TOOL_TYPE ToolOf(int number) {
    return static_cast<_TOOL_TYPE>(number);
}

} // namespace

TEST(ToolRegistryTest, HoldsEveryToolOnceInTheOrderOfCreation) {
    const std::vector<int> expected{0,  1,  2,  22, 13, 14, 16, 17, 18, 21, 20, 30, 31,
                                    32, 33, 34, 35, 3,  4,  6,  7,  8,  9,  41, 42};
    std::vector<int> ids;
    for (const auto &tool : tavix::ToolRegistry::Instance().Tools())
        ids.push_back(tool->Id());
    EXPECT_EQ(ids, expected);
}

TEST_F(ToolTest, EveryNumberSelectsItsToolAndUnknownOnesTheSelectTool) {
    ShowPicture();
    const int ids[] = {0,  3,  2,  1,  30, 31, 32, 33, 34, 35, 4, 8,
                       18, 20, 21, 13, 14, 16, 17, 41, 42, 43, 44};
    for (int number = 0; number < 23; ++number) {
        window.Tool(ToolOf(number));
        EXPECT_EQ(window.GetTool(), number);
        EXPECT_EQ(tavix::ToolState::Shared().currentTool, ids[number]);
    }
    for (const int unknown : {23, -1, 45}) { // From a reserved number, too.
        window.Tool(TOOL_TYPE_RESERVED_44);
        window.Tool(ToolOf(unknown));
        EXPECT_EQ(window.GetTool(), 0) << unknown;
    }
}

TEST_F(ToolTest, PickToolsTakeReleasesWithinTwoPixels) {
    ShowPicture();
    struct Case {
        _TOOL_TYPE tool;
        QPoint release;
        std::vector<ToolResult> results;
    };
    const Case cases[] = {
        {TOOL_TYPE_CLICK, {22, 32}, {{1, 22, 32, {{10, 15}}}}}, // The press point.
        {TOOL_TYPE_CLICK, {23, 30}, {}},
        {TOOL_TYPE_CLICK, {20, 27}, {}},
        {TOOL_TYPE_SPOIDE, {22, 32}, {{2, 22, 32, {{11, 16}}}}}, // The release point.
        {TOOL_TYPE_SPOIDE, {20, 33}, {}},
        {TOOL_TYPE_SELECT, {40, 60}, {{0, 40, 60, {{20, 30}}}}}, // Whatever the distance.
        {TOOL_TYPE_ELLIPSE_CURSOR, {20, 30}, {}},
        {TOOL_TYPE_RESERVED_43, {20, 30}, {}},
        {TOOL_TYPE_LINE_FOCUS, {21, 35}, {{10, 21, 35, {{10, 15}, {10, 17}}}}},
        {TOOL_TYPE_LINE_FOCUS, {21, 31}, {}},
    };
    for (const Case &test : cases) {
        window.Tool(test.tool);
        results.clear();
        statusChanges = 0;
        Press(20, 30);
        Release(test.release.x(), test.release.y());
        EXPECT_EQ(results, test.results) << &test - cases;
        EXPECT_EQ(statusChanges, static_cast<int>(test.results.size()));
        const bool isTwice = test.tool == TOOL_TYPE_CLICK || test.tool == TOOL_TYPE_SPOIDE;
        DoubleClick(20, 30); // Its release counts by the press before it.
        const std::size_t more = isTwice || test.tool == TOOL_TYPE_SELECT ? 1 : 0;
        EXPECT_EQ(results.size(), test.results.size() + more) << &test - cases;
    }
}

TEST_F(ToolTest, ChainsCloseUndoAndEndAtAThousandPoints) {
    ShowPicture();
    for (const _TOOL_TYPE tool : {TOOL_TYPE_POLYLINE_FOCUS}) {
        window.Tool(tool);
        results.clear();
        Click(20, 30);
        Click(40, 30);
        Click(40, 50);
        Click(60, 70);
        window.Undo();
        window.SendToolResult();
        const std::vector<POINT> chain{{10, 15}, {20, 15}, {20, 25}, {10, 15}};
        ASSERT_EQ(results.size(), 1U);
        EXPECT_EQ(results[0], (ToolResult{tool, 20, 25, chain}));
        Click(20, 30);
        window.Undo();
        window.Undo();
        window.SendToolResult(); // Nothing is left: an empty list.
        EXPECT_EQ(results[1], (ToolResult{tool, 0, 0, {}}));
        for (int i = 0; i < 1005; ++i)
            Click(i % 80, 10);
        window.SendToolResult();
        EXPECT_EQ(results[2].points.size(), 1001U);
    }
    window.Tool(TOOL_TYPE_CLICK);
    Press(20, 30);
    window.Undo();
    window.SendToolResult(); // Neither means anything to a click.
    Release(20, 30);
    EXPECT_EQ(results.size(), 4U);
}

TEST_F(ToolTest, TheRightButtonPansOnBothAxesOnly) {
    ShowPicture(4.0);
    for (const _TOOL_TYPE tool :
         {TOOL_TYPE_ELLIPSE_CURSOR, TOOL_TYPE_LINE_FOCUS, TOOL_TYPE_POLYLINE_FOCUS}) {
        window.Tool(tool);
        window.SetScrollPos(SB_HORZ, 50);
        window.SetScrollPos(SB_VERT, 40);
        Press(60, 60, Qt::RightButton);
        Move(80, 61, Qt::RightButton);
        EXPECT_EQ(window.GetScrollPos(SB_HORZ), 50) << "along one axis";
        Move(70, 55, Qt::RightButton);
        EXPECT_EQ(window.GetScrollPos(SB_HORZ), 40);
        EXPECT_EQ(window.GetScrollPos(SB_VERT), 45);
        Release(70, 55, Qt::RightButton);
        Move(90, 90);
        EXPECT_EQ(window.GetScrollPos(SB_HORZ), 40);
    }
    window.Tool(TOOL_TYPE_SELECT); // The left button, while the picture is larger than it fits.
    Drag({60, 60}, {70, 55});
    EXPECT_EQ(window.GetScrollPos(SB_HORZ), 30);
    window.ZoomFitTo();
    Drag({60, 60}, {70, 55});
    EXPECT_EQ(window.GetScrollPos(SB_HORZ), 0);
}

TEST_F(ToolTest, TheSelectedObjectIsDraggedWholeOrByAHandle) {
    ShowPicture();
    window.AddLine(10, 10, 60, 10, 0, 1, 0xFF, "line");
    const CString before = window.GetObjectString("line");
    Drag({20, 20}, {30, 24}); // Not selected: nothing happens to it.
    EXPECT_EQ(window.GetObjectString("line"), before);
    window.SetScrollPos(SB_HORZ, 0);
    window.SetScrollPos(SB_VERT, 0);
    window.Select("line");
    Drag({20, 20}, {30, 24}); // From the first end.
    window.AddLine(15, 12, 60, 10, 0, 1, 0xFF, "by handle");
    EXPECT_EQ(window.GetObjectString("line"), window.GetObjectString("by handle"));
    Drag({76, 22}, {96, 42}); // From between the ends.
    window.AddLine(25, 22, 70, 20, 0, 1, 0xFF, "whole");
    EXPECT_EQ(window.GetObjectString("line"), window.GetObjectString("whole"));
    Press(96, 42);
    window.RemoveObject("line");
    Move(100, 50, Qt::LeftButton); // It is gone in mid-drag.
    Release(100, 50);
}

TEST_F(ToolTest, WindowsShareOneCurrentTool) {
    ShowPicture();
    CTavixWnd other;
    other.resize(150, 100);
    other.show();
    const CTavixImage8 image = Noise(100, 80);
    other.SetImage(&image);
    other.Zoom(2.0);
    EXPECT_EQ(tavix::ToolState::Shared().currentTool, 0) << "the new window took the select tool";
    window.Tool(TOOL_TYPE_CLICK);
    other.Tool(TOOL_TYPE_LINE_FOCUS);
    EXPECT_EQ(window.GetTool(), 1);
    Press(20, 30); // Its own number is not the global one: the select tool hears it.
    Release(60, 70);
    ASSERT_EQ(results.size(), 1U);
    EXPECT_EQ(results[0], (ToolResult{1, 60, 70, {{30, 35}}})) << "told under its own number";
}

TEST_F(ToolTest, EventsOutOfOrderLeaveAUsableWindow) {
    ShowPicture();
    for (int number = 0; number < 23; ++number) {
        window.Tool(ToolOf(number));
        Release(10, 10);
        DoubleClick(12, 12);
        Press(20, 20);
        window.Tool(TOOL_TYPE_CLICK); // In mid-drag.
        Move(40, 40, Qt::LeftButton);
        Release(40, 40);
        EXPECT_FALSE(window.IsMouseCaptured());
        Press(30, 30, Qt::RightButton);
        Release(50, 50);
        Release(50, 50, Qt::RightButton);
        Grab(window);
    }
    results.clear();
    Click(20, 30);
    EXPECT_EQ(results.size(), 1U);
}

TEST_F(ToolTest, ALostReleaseLeavesNothingOfTheDrag) {
    ShowPicture();
    for (const _TOOL_TYPE tool :
         {TOOL_TYPE_LINE_FOCUS, TOOL_TYPE_ROI_RECTANGLE, TOOL_TYPE_ROI_FREELINE,
          TOOL_TYPE_MSR_DISTANCE, TOOL_TYPE_RETICLE_MOVE}) {
        window.Tool(tool);
        Move(60, 60);
        const QImage before = Grab(window);
        Press(20, 30);
        Move(40, 70, Qt::LeftButton);
        EXPECT_NE(Grab(window), before) << tool;
        Move(60, 60); // The button is up.
        EXPECT_EQ(Grab(window), before) << tool;
        Move(90, 30);
        Release(90, 30);
        EXPECT_TRUE(results.empty()) << tool;
        EXPECT_FALSE(window.IsRoiContext());
    }
}

TEST_F(ToolTest, ATakenToolLeavesNothingBehindInTheWindowItWorkedIn) {
    ShowPicture(1.0);
    CTavixWnd other;
    ShowOther(other);
    for (const bool isShown : {false, true})
        for (const _TOOL_TYPE tool :
             {TOOL_TYPE_POLYLINE_FOCUS, TOOL_TYPE_ROI_POLYGON, TOOL_TYPE_ROI_RECTANGLE,
              TOOL_TYPE_MEASURE_POLYLINE, TOOL_TYPE_LINE_FOCUS, TOOL_TYPE_RETICLE_MOVE}) {
            window.Tool(tool);
            const QImage before = Grab(window);
            Press(20, 30);
            Move(60, 70, Qt::LeftButton);
            EXPECT_NE(Grab(window), before) << tool;
            CTavixWnd another;
            if (isShown)
                another.show();
            else
                other.Tool(TOOL_TYPE_CLICK);
            QCoreApplication::processEvents();
            const QImage shown = window.screen()->grabWindow(window.winId()).toImage();
            EXPECT_EQ(Grab(window), before) << tool;
            EXPECT_EQ(shown.convertToFormat(before.format()), before) << "not repainted: " << tool;
            EXPECT_FALSE(window.IsMouseCaptured());
            window.Tool(tool);
            window.SendToolResult();
            EXPECT_TRUE(results.empty() || results.back().points.empty());
        }
}

TEST(ToolLifetimeTest, AResultMayDestroyTheWindow) {
    static CTavixWnd *window;
    for (const _TOOL_TYPE tool :
         {TOOL_TYPE_SELECT, TOOL_TYPE_CLICK, TOOL_TYPE_SPOIDE, TOOL_TYPE_LINE_FOCUS,
          TOOL_TYPE_POLYLINE_FOCUS, TOOL_TYPE_MEASURE_POINT, TOOL_TYPE_MSR_DISTANCE}) {
        window = new CTavixWnd;
        window->resize(100, 100);
        window->show();
        const CTavixImage8 image = Noise(100, 80);
        window->SetImage(&image);
        window->RegToolFinishProc([](int, int, int, LPARAM) {
            delete window;
            return 0;
        });
        window->Tool(tool);
        const QPointer<CTavixWnd> alive(window);
        const bool isDragged = tool == TOOL_TYPE_LINE_FOCUS || tool == TOOL_TYPE_MSR_DISTANCE;
        const QPoint end = isDragged ? QPoint(40, 50) : QPoint(20, 20);
        QTest::mousePress(ViewOf(*window).viewport(), Qt::LeftButton, {}, {20, 20});
        QTest::mouseRelease(ViewOf(*window).viewport(), Qt::LeftButton, {}, end);
        if (alive)
            window->SendToolResult();
        EXPECT_FALSE(alive) << tool;
    }
}
