#include "display/tool_events.h"

#include "TAVIX20/containers/point_array_array.h"
#include "TAVIX20/display/tools/magic_wand_tool.h"
#include "TAVIX20/display/tools/tool_registry.h"
#include "TAVIX20/platform/region.h"

#include <QLabel>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimerEvent>

#include <fstream>
#include <functional>
#include <iterator>

namespace {

class RoiToolTest : public ToolTest {
protected:
    void SetUp() override {
        ToolTest::SetUp();
        roiChanges = 0;
        window.RegRoiStatusChangedProc([] { return ++roiChanges, 0; });
        window.Tool(TOOL_TYPE_ROI_RECTANGLE);
    }

    static inline int roiChanges = 0;
    QTemporaryDir folder;
    std::string Path(const char *name) { return folder.filePath(name).toStdString(); }
};

std::string Contents(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Write(const std::string &path, const std::string &text) {
    std::ofstream(path, std::ios::binary) << text;
}

} // namespace

TEST_F(RoiToolTest, StrokesCombineByTheMode) {
    ShowPicture(1.0);
    window.Tool(TOOL_TYPE_ROI_RECTANGLE);
    EXPECT_EQ(window.IsRoiContext(), 0);
    Drag({30, 20}, {10, 40}); // Corners in any order.
    EXPECT_EQ(window.GetRoiToPixelCount(), 400);
    EXPECT_EQ(window.GetTool(), TOOL_TYPE_ROI_RECTANGLE) << "strokes keep the tool";
    Drag({50, 20}, {60, 30}); // Replaces the first.
    EXPECT_EQ(window.GetRoiToPixelCount(), 100);
    window.SetRoiToolMode(ROI_TOOL_MODE_ADD);
    Drag({10, 10}, {30, 30});
    EXPECT_EQ(window.GetRoiToPixelCount(), 500);
    window.SetRoiToolMode(ROI_TOOL_MODE_SUBTRACT);
    Drag({15, 15}, {20, 20});
    EXPECT_EQ(window.GetRoiToPixelCount(), 475);
    Drag({15, 15}, {15, 40}); // Holds no pixel: not a stroke.
    EXPECT_EQ(roiChanges, 4);
    EXPECT_TRUE(results.empty());

    TavixArray::CPointArrayArray outer;
    TavixArray::CPointArrayArray holes;
    outer.Add(TavixArray::CPointArray(3));
    window.GetRoiPointArray(outer, holes);
    EXPECT_EQ(outer.GetElementCount(), 2);
    EXPECT_EQ(holes.GetElementCount(), 1);
    CTavixImage8 mask = Noise(100, 80);
    const RegionHandle region(window.GetROI());
    mask.SetROI(region.get());
    EXPECT_EQ(mask.PtInROI(52, 22), 1);
    EXPECT_EQ(mask.PtInROI(45, 22), 0);
    window.ResetRoiContext();
    EXPECT_EQ(window.GetROI(), nullptr);
    EXPECT_EQ(window.GetRoiToPixelCount(), 0);
}

TEST_F(RoiToolTest, EachToolMakesItsShape) {
    ShowPicture(1.0);
    window.Tool(TOOL_TYPE_ROI_ELLIPSE);
    Drag({10, 10}, {50, 40});
    const RegionHandle ellipse(window.GetROI());
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 60; ++x) {
            const double dx = (x + 0.5 - 30) / 20;
            const double dy = (y + 0.5 - 25) / 15;
            ASSERT_EQ(PtInRegion(ellipse.get(), x, y), dx * dx + dy * dy <= 1 ? 1 : 0);
        }

    window.Tool(TOOL_TYPE_ROI_POLYGON);
    const auto triangle = [this] {
        Click(10, 10);
        Click(50, 10);
        Click(10, 50);
    };
    const double area = 820; // 40 + 39 + ... + 1.
    triangle();
    window.SendToolResult();
    EXPECT_EQ(window.GetRoiToPixelCount(), area);
    window.ResetRoiContext();
    triangle();
    Click(11, 12); // On the first corner.
    EXPECT_EQ(window.GetRoiToPixelCount(), area);
    window.ResetRoiContext();
    Click(10, 10);
    Click(50, 10);
    Press(10, 50);
    Release(10, 50);
    DoubleClick(10, 50);
    EXPECT_EQ(window.GetRoiToPixelCount(), area);
    window.ResetRoiContext();
    Click(10, 10);
    Click(50, 10);
    window.SendToolResult(); // Two corners are no polygon.
    EXPECT_EQ(window.IsRoiContext(), 0);

    window.Tool(TOOL_TYPE_ROI_FREELINE);
    Press(10, 10);
    Move(50, 10, Qt::LeftButton);
    Move(50, 40, Qt::LeftButton);
    Release(10, 40);
    EXPECT_EQ(window.GetRoiToPixelCount(), 1200);
}

TEST_F(RoiToolTest, TheMagicWandTakesTheSimilarAreaWithItsHoles) {
    Show(100, 80);
    CTavixImage8 image(100, 80);
    for (int y = 10; y < 40; ++y)
        for (int x = 10; x < 60; ++x)
            image.SetPixel(x, y, x > 20 && x < 30 && y > 20 && y < 30 ? 0 : 100);
    image.SetPixel(60, 10, 107); // 2.7 % brighter.
    window.SetImage(&image);
    window.Zoom(1.0);
    window.Tool(TOOL_TYPE_ROI_MAGICWAND);
    auto &wand = static_cast<CROIMagicWandTool &>(
        *tavix::ToolRegistry::Instance().Find(tavix::ROI_MAGICWAND));
    wand.SetTolerance(0);
    Click(12, 12);
    EXPECT_EQ(window.GetRoiToPixelCount(), 50 * 30 - 81);
    wand.SetTolerance(3);
    Press(12, 12);
    Release(14, 10);
    EXPECT_EQ(window.GetRoiToPixelCount(), 50 * 30 - 81 + 1);
    Press(12, 12);
    Release(15, 12); // No click.
    Click(120, 95);  // Outside the picture.
    EXPECT_EQ(roiChanges, 2);
    wand.SetTolerance(0);
}

TEST_F(RoiToolTest, EscapeDropsTheStrokeThenLeavesTheTool) {
    ShowPicture();
    window.Tool(TOOL_TYPE_ROI_POLYGON);
    Click(10, 10);
    Click(50, 10);
    Click(10, 50);
    QTest::keyClick(&ViewOf(window), Qt::Key_Escape);
    window.SendToolResult();
    EXPECT_EQ(window.IsRoiContext(), 0);
    EXPECT_EQ(window.GetTool(), TOOL_TYPE_ROI_POLYGON);
    QTest::keyClick(&ViewOf(window), Qt::Key_Escape);
    EXPECT_EQ(window.GetTool(), TOOL_TYPE_SELECT);
}

TEST_F(RoiToolTest, GuideLinesFollowTheCursorAndGoWithTheTool) {
    ShowPicture(1.0);
    const auto isGreen = [this](int x, int y) {
        CPoint client(x, y);
        window.ImagePtToClientPoint(client);
        return Grab(window).pixel(client.x, client.y) == qRgb(0, 255, 0);
    };
    window.Tool(TOOL_TYPE_ROI_POLYGON);
    Move(33, 22);
    Move(44, 55);
    EXPECT_TRUE(isGreen(44, 3) && isGreen(90, 55));
    EXPECT_FALSE(isGreen(33, 3) || isGreen(90, 22));
    window.Tool(TOOL_TYPE_SELECT);
    EXPECT_FALSE(isGreen(44, 3) || isGreen(90, 55));
}

// Painted move by move, then from the start, then at another place; nothing of it stays.
TEST_F(RoiToolTest, AFreeLineGrowsOnTheScreen) {
    ShowPicture(1.0);
    const QImage before = Grab(window);
    window.Tool(TOOL_TYPE_ROI_FREELINE);
    Press(20, 20);
    QImage shown;
    for (const QPoint &point : {QPoint(60, 25), QPoint(30, 60), QPoint(31, 61), QPoint(70, 22)}) {
        Move(point.x(), point.y(), Qt::LeftButton);
        QCoreApplication::processEvents();
        shown = Grab(window);
        EXPECT_EQ(shown.pixel(point.x(), point.y()), qRgb(0, 255, 0));
    }
    EXPECT_EQ(shown.pixel(40, 22), qRgb(0, 255, 0)); // On the first piece.
    EXPECT_NE(shown.pixel(20, 60), qRgb(0, 255, 0));
    window.Zoom(2.0);
    EXPECT_EQ(Grab(window).pixel(80, 44), qRgb(0, 255, 0));
    window.Zoom(1.0);
    EXPECT_EQ(Grab(window), shown);
    QTest::keyClick(&ViewOf(window), Qt::Key_Escape);
    EXPECT_EQ(Grab(window), before);
}

TEST_F(RoiToolTest, CornersBelongToTheWindowTheyWereClickedIn) {
    ShowPicture(1.0);
    CTavixWnd other;
    ShowOther(other);
    for (const _TOOL_TYPE tool : {TOOL_TYPE_ROI_POLYGON, TOOL_TYPE_POLYLINE_FOCUS}) {
        window.Tool(tool);
        other.Tool(tool);
        const QImage empty = Grab(other);
        Click(90, 10);
        Click(10, 70);
        EXPECT_EQ(Grab(other), empty) << tool;
        for (const QPoint &corner : {QPoint(20, 20), QPoint(30, 20), QPoint(20, 30)})
            ClickIn(other, corner);
        other.SendToolResult();
    }
    EXPECT_EQ(other.GetRoiToPixelCount(), 55); // 10 + 9 + ... + 1.
    EXPECT_EQ(window.IsRoiContext(), 0);
}

/// What a host may have drawn over the stripes, or have drawn there before, stays as it is and goes
/// when it goes while the stripes march.
TEST_F(RoiToolTest, MarchingStripesLeaveTheRestOfTheScreenAsItIs) {
    ShowPicture(1.0);
    QLabel label("25 fps", &window);
    label.setGeometry(30, 30, 40, 20);
    label.hide();
    Write(Path("a.roix"), "<R><ImageSize>1,1</ImageSize><RoiElements><Element>"
                          "<Points>5,5;95,5;95,75;5,75;</Points></Element></RoiElements></R>");
    ASSERT_EQ(window.RoiFileOpen(Path("a.roix").c_str()), 1);
    const auto screen = [this](QRect part) {
        QCoreApplication::processEvents();
        return window.screen()->grabWindow(window.winId()).toImage().copy(part);
    };
    const auto march = [this] {
        for (int id = 1; id < 16; ++id) { // The timer's, whichever it is.
            QTimerEvent tick(id);
            QCoreApplication::sendEvent(&ViewOf(window), &tick);
        }
    };
    const QRect inside(10, 10, 80, 60);
    const QRect edge(0, 5, 100, 1);
    const QImage plain = screen(inside);
    struct Case {
        const char *name;
        std::function<void()> come;
        std::function<void()> go;
    };
    const auto styled = [&](const char *style) {
        return [&label, style] {
            label.setStyleSheet(style);
            label.show();
            QCoreApplication::processEvents(); // The style, then the paint.
        };
    };
    const auto chain = [this] {
        Click(20, 60);
        Move(60, 40);
    };
    window.Tool(TOOL_TYPE_MEASURE_POLYLINE);
    const Case cases[] = {
        {"translucent", styled("background: rgba(255, 0, 0, 40)"), [&] { label.hide(); }},
        {"opaque", styled("background: red"), [&] { label.hide(); }},
        {"between two clicks", chain, [this] { window.Tool(TOOL_TYPE_SELECT); }},
        {"nothing", [] {}, [] {}},
    };
    for (const Case &test : cases) {
        test.come();
        const QImage before = screen(inside);
        const QImage stripes = screen(edge);
        for (int i = 0; i < 3; ++i) {
            march();
            EXPECT_EQ(screen(inside), before) << test.name;
        }
        EXPECT_NE(screen(edge), stripes) << test.name;
        test.go();
        march(); // Before the window is painted without it.
        EXPECT_EQ(screen(inside), plain) << test.name;
    }
}

/// They would stand still otherwise where pictures come faster than the timer's ticks.
TEST_F(RoiToolTest, EveryRefreshIsAStepOfTheStripes) {
    ShowPicture(1.0);
    window.Tool(TOOL_TYPE_ROI_RECTANGLE);
    Drag({8, 8}, {24, 24});
    const QRect level(8, 8, 8, 1); // The pattern's row of the phase.
    std::vector<QImage> rows;
    for (int i = 0; i < 9; ++i) {
        rows.push_back(Grab(window).copy(level));
        window.Zoom(1.0);
    }
    EXPECT_NE(rows[0], rows[1]);
    EXPECT_EQ(rows[0], rows[8]) << "the pause";
    EXPECT_EQ(rows[0].pixel(0, 0), qRgb(255, 255, 255)) << "the first row is 0xF0";
}

TEST_F(RoiToolTest, FilesHaveTheseBytesAndComeBack) {
    ShowPicture(1.0);
    const std::string path = Path("a.roix");
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"euc-kr\"?><Tavix_ROI><ImageSize>100,80</ImageSize>"
        "<RoiElements><Element><Method>0</Method><Points>1,2;30,2;30,40;</Points></Element>"
        "<Element><Method>5</Method><Points></Points></Element></RoiElements></Tavix_ROI>";
    Write(path, text);
    EXPECT_EQ(window.RoiFileOpen(path.c_str()), 1);
    EXPECT_EQ(window.IsRoiContext(), 1);
    EXPECT_EQ(roiChanges, 1);
    EXPECT_EQ(window.RoiFileSave(Path("b.roix").c_str()), 1);
    EXPECT_EQ(Contents(Path("b.roix")), text);
    EXPECT_EQ(window.RoiFileSave(Path("no/such/folder.roix").c_str()), 0);
    EXPECT_EQ(window.RoiFileSave(folder.path().toUtf8().constData()), 0);
}

TEST_F(RoiToolTest, ReadsWhatItCanAndKeepsTheRegionsWhenItCannot) {
    ShowPicture(1.0);
    const std::string path = Path("a.roix");
    const auto file = [](const std::string &size, const std::string &elements) {
        return "<R><ImageSize>" + size + "</ImageSize><RoiElements>" + elements +
               "</RoiElements></R>";
    };
    const std::string square = "<Points>0,0;10,0;10,10;0,10;</Points>";
    struct Case {
        std::string text;
        int opened;
        double area;
    };
    const Case cases[] = {
        {file("640,480", "<Element>" + square + "</Element>"), 1, 100},
        {file(" 640 , 480 ,,", "<Other/><Element><Points> 0, 0 ;10,0;1;1,2,3;10,10,;</Points>"
                               "<Method>0</Method><Points>0,10</Points></Element>"),
         1, 100},
        {file("a,b", "<Element><Points>0,0;10,0;10,10;0,10</Points><Method/></Element>"), 1, 100},
        {file("1,1", "<Element>" + square +
                         "</Element><Element><Method>0</Method>"
                         "<Points>0,0;99999999999,0;5,5;</Points></Element>"),
         1, 100},
        {file("640,480", ""), 1, 0},
        {file("640", "<Element>" + square + "</Element>"), 0, 7},
        {file("1,2,3", "<Element>" + square + "</Element>"), 0, 7},
        {file("640,480", "<Element><Points>"), 0, 7},
        {"<R><RoiElements/></R>", 0, 7},
        {"<R><ImageSize>1,1</ImageSize></R>", 0, 7},
        {"", 0, 7},
        {"\xEF\xBB\xBF\x01garbage", 0, 7},
    };
    for (const Case &test : cases) {
        Write(path, file("1,1", "<Element><Points>0,0;7,0;7,1;0,1;</Points></Element>"));
        ASSERT_EQ(window.RoiFileOpen(path.c_str()), 1);
        Write(path, test.text);
        EXPECT_EQ(window.RoiFileOpen(path.c_str()), test.opened) << test.text;
        EXPECT_EQ(window.GetRoiToPixelCount(), test.area) << test.text;
    }
    EXPECT_EQ(window.RoiFileOpen(Path("missing").c_str()), 0);
    EXPECT_EQ(window.RoiFileOpen(nullptr), 0);
}
