#include "display/shown_window.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QShortcut>
#include <QSignalSpy>
#include <QWindow>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

// Callbacks are plain functions, so what they tell lies here.
std::vector<std::string> told;
CTavixWnd *sender = nullptr;

template <char NAME>
std::int32_t TellMouse(int x, int y, LPARAM window) {
    told.push_back(NAME + std::to_string(x) + ',' + std::to_string(y));
    sender = reinterpret_cast<CTavixWnd *>(window);
    return 0;
}

std::int32_t TellPosition() {
    told.push_back("position");
    return 0;
}

std::int32_t TellStatus() {
    told.push_back("status");
    return 0;
}

std::int32_t DestroyFromMouse(int, int, LPARAM window) {
    delete reinterpret_cast<CTavixWnd *>(window);
    return 0;
}

std::int32_t DestroySender() {
    delete sender;
    return 0;
}

void Send(CTavixWnd &window, QEvent::Type type, QPoint point, Qt::MouseButton button,
          Qt::MouseButtons buttons) {
    QMouseEvent event(type, point, point, button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(ViewOf(window).viewport(), &event);
}

class WndInputTest : public ShownWindowTest {
protected:
    void ShowNoise(int width, int height, double zoom) {
        Show(width, height);
        const CTavixImage8 image = Noise(100, 80);
        window.SetImage(&image);
        window.Zoom(zoom);
        told.clear();
    }
};

} // namespace

TEST_F(WndInputTest, EachMouseEventReachesItsFunctionThenItsSignal) {
    ShowNoise(300, 200, 2.0);
    window.EnableContextMenu(0);
    window.RegLButtonDownProc(TellMouse<'L'>);
    window.RegMouseMoveProc(TellMouse<'M'>);
    window.RegLButtonUpProc(TellMouse<'l'>);
    window.RegDblClickProc(TellMouse<'D'>);
    window.RegRButtonDownProc(TellMouse<'R'>);
    window.RegRButtonUpProc(TellMouse<'r'>);
    const auto log = [](const char *name) { return [name](int, int) { told.push_back(name); }; };
    QObject::connect(&window, &CTavixWnd::leftButtonPressed, log("pressed"));
    QObject::connect(&window, &CTavixWnd::mouseMoved, log("moved"));
    QObject::connect(&window, &CTavixWnd::leftButtonReleased, log("released"));
    QObject::connect(&window, &CTavixWnd::doubleClicked, log("doubled"));
    QObject::connect(&window, &CTavixWnd::rightButtonPressed, log("right pressed"));
    QObject::connect(&window, &CTavixWnd::rightButtonReleased, log("right released"));
    constexpr auto NONE = Qt::NoButton;
    constexpr auto LEFT = Qt::LeftButton;
    constexpr auto RIGHT = Qt::RightButton;
    struct Case {
        QEvent::Type type;
        Qt::MouseButton button;
        Qt::MouseButtons held;
        const char *function; ///< Null: nobody hears of it.
        const char *signal;
        int captured;
    };
    const Case cases[] = {
        {QEvent::MouseMove, NONE, NONE, "M7,9", "moved", 0},
        {QEvent::MouseButtonPress, LEFT, LEFT, "L7,9", "pressed", 1},
        {QEvent::MouseMove, NONE, LEFT, "M7,9", "moved", 1},
        {QEvent::MouseMove, NONE, LEFT | RIGHT, "M7,9", "moved", 1},
        {QEvent::MouseButtonRelease, LEFT, NONE, "l7,9", "released", 0},
        {QEvent::MouseMove, NONE, LEFT | RIGHT, nullptr, nullptr, 0}, // Not captured.
        {QEvent::MouseButtonDblClick, LEFT, LEFT, "D7,9", "doubled", 0},
        {QEvent::MouseButtonPress, RIGHT, RIGHT, "R7,9", "right pressed", 1},
        {QEvent::MouseMove, NONE, RIGHT, nullptr, nullptr, 1},
        {QEvent::MouseButtonRelease, RIGHT, NONE, "r7,9", "right released", 0},
        {QEvent::MouseButtonPress, Qt::MiddleButton, Qt::MiddleButton, nullptr, nullptr, 0},
    };
    for (const Case &c : cases) {
        told.clear();
        sender = nullptr;
        Send(window, c.type, {7, 9}, c.button, c.held);
        std::vector<std::string> expected;
        if (c.function)
            expected = {c.function, c.signal};
        EXPECT_EQ(told, expected);
        EXPECT_EQ(sender, c.function ? &window : nullptr);
        EXPECT_EQ(window.IsMouseCaptured(), c.captured);
    }
    told.clear();
    window.RegMouseMoveProc(nullptr);
    Send(window, QEvent::MouseMove, {7, 9}, NONE, NONE);
    EXPECT_EQ(told, std::vector<std::string>{"moved"});
}

TEST_F(WndInputTest, EveryChangeOfTheZoomTellsThePositionOnce) {
    ShowNoise(300, 200, 2.0);
    window.RegStatusChangedProc(TellStatus);
    window.RegImagePositionChangedProc(TellStatus);
    window.RegImagePositionChangedProc(TellPosition); // The last one counts.
    QSignalSpy spy(&window, &CTavixWnd::imagePositionChanged);
    const CTavixImage8 image = Noise(10, 10);
    int count = 0;
    const auto tells = [&](auto change) {
        told.clear();
        change();
        EXPECT_EQ(told, std::vector<std::string>{"position"}) << count;
        EXPECT_EQ(spy.count(), ++count);
    };
    tells([&] { window.Zoom(3.0); });
    tells([&] { window.ZoomPlus(); });
    tells([&] { window.ZoomMinus(); });
    tells([&] { window.ZoomFitTo(); });
    tells([&] { window.ZoomMinus(); }); // Snaps.
    tells([&] { SendWheel(window, {0, -120}); });
    tells([&] { window.SetImage(&image); });
    tells([&] { window.LoadImageA("missing.png"); });
    tells([&] { window.CreateImage(4, 4, 24); });
    window.resize(200, 150);
    tells([&] { QCoreApplication::processEvents(); });
    told.clear();
    window.Zoom(25.0);
    window.ZoomPlus();
    window.Zoom(-1.0);
    window.SetStatusChangedEvent();
    EXPECT_EQ(told, (std::vector<std::string>{"position", "status"}));
}

TEST_F(WndInputTest, TheWheelAwayFromTheUserZoomsOut) {
    ShowNoise(300, 200, 5.0);
    const auto zoomAfter = [&](QPoint delta, Qt::ScrollPhase phase = Qt::NoScrollPhase) {
        SendWheel(window, delta, phase);
        return window.GetZoomRatio();
    };
    EXPECT_DOUBLE_EQ(zoomAfter({0, 120}), 4.0);
    EXPECT_DOUBLE_EQ(zoomAfter({0, -1}), 5.0);
    EXPECT_DOUBLE_EQ(zoomAfter({0, 0}), 6.0);
    EXPECT_DOUBLE_EQ(zoomAfter({120, 0}), 6.0);
    EXPECT_DOUBLE_EQ(zoomAfter({0, 0}, Qt::ScrollEnd), 6.0);
    EXPECT_DOUBLE_EQ(zoomAfter({0, 5}, Qt::ScrollUpdate), 5.0);
}

TEST_F(WndInputTest, ArrowKeysScrollAndAllOthersAreTheHosts) {
    QWidget host;
    CTavixWnd inside(&host);
    QShortcut shortcut(Qt::Key_Right, &host);
    QSignalSpy stolen(&shortcut, &QShortcut::activated);
    inside.resize(300, 200);
    host.show();
    host.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&host));
    const CTavixImage8 image = Noise(100, 80);
    inside.SetImage(&image);
    inside.Zoom(10.0);
    inside.SetScrollPos(SB_HORZ, 123);
    inside.SetScrollPos(SB_VERT, 45);
    inside.SetViewFocus();
    QWidget *const focus = QApplication::focusWidget();
    ASSERT_EQ(focus, &ViewOf(inside));
    const auto positionAfter = [&](Qt::Key key) {
        QTest::keyClick(focus, key);
        return CPoint(inside.GetScrollPos(SB_HORZ), inside.GetScrollPos(SB_VERT));
    };
    EXPECT_EQ(positionAfter(Qt::Key_Right), CPoint(143, 45));
    EXPECT_EQ(positionAfter(Qt::Key_Down), CPoint(143, 65));
    EXPECT_EQ(positionAfter(Qt::Key_Left), CPoint(123, 65));
    EXPECT_EQ(positionAfter(Qt::Key_Up), CPoint(123, 45));
    EXPECT_EQ(positionAfter(Qt::Key_PageDown), CPoint(123, 45));
    EXPECT_EQ(stolen.count(), 0);
    inside.SetScrollPos(2, 77);
    EXPECT_EQ(inside.GetScrollPos(2), 0);
}

TEST_F(WndInputTest, WhatIsUnderTheCursorComesToTheMiddle) {
    ShowNoise(300, 200, 10.0);
    QWidget *const viewport = ViewOf(window).viewport();
    const CPoint centre(viewport->width() / 2, viewport->height() / 2);
    const CPoint at(centre.x + 60, centre.y + 35);
    CPoint pixel = at;
    window.ClientPtToImagePoint(pixel);
    QCursor::setPos(viewport->mapToGlobal(QPoint(at)));
    window.CursorPosToCenter();
    CPoint now = centre;
    window.ClientPtToImagePoint(now);
    EXPECT_EQ(now, pixel);
    QCursor::setPos(viewport->mapToGlobal(QPoint(-5, 10)));
    window.CursorPosToCenter();
    EXPECT_EQ(window.GetScrollPos(SB_HORZ), 60);

    window.SetViewCrossLine(1);
    EXPECT_EQ(window.GetViewCrossLine(), 1);
    const QImage shown = Grab(window);
    EXPECT_EQ(shown.pixel(3, centre.y), qRgb(0, 255, 0));
    EXPECT_EQ(shown.pixel(centre.x, 3), qRgb(0, 255, 0));
    window.SetViewCrossLine(0);
    EXPECT_NE(Grab(window).pixel(3, centre.y), qRgb(0, 255, 0));
}

TEST_F(WndInputTest, ReadsOutThePixelUnderTheCursor) {
    Show(300, 200);
    CTavixImage24 image(20, 10);
    image.SetPixel(5, 4, 0x123456);
    window.SetImage(&image);
    window.Zoom(10.0); // 200 x 100, at (50, 50).
    std::vector<std::string> heard;
    QObject::connect(&window, &CTavixWnd::pixelHovered, [&](int x, int y, unsigned long value) {
        heard.push_back(QString::asprintf("%d,%d %lx", x, y, value).toStdString());
    });
    QObject::connect(&window, &CTavixWnd::pixelLeft, [&] { heard.push_back("left"); });
    const auto move = [&](int x, int y) {
        Send(window, QEvent::MouseMove, {x, y}, Qt::NoButton, Qt::NoButton);
    };
    move(49, 90);
    move(100, 90);
    move(109, 99);
    move(110, 99);
    move(250, 99);
    move(100, 90);
    window.SetPixel24(5, 4, 0xABCDEF);
    window.ImageUpdate();
    QCoreApplication::processEvents();
    window.Zoom(5.0); // At (100, 75).
    QCoreApplication::processEvents();
    window.SetImage(nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(heard, (std::vector<std::string>{"5,4 123456", "6,4 0", "left", "5,4 123456",
                                               "5,4 abcdef", "0,3 0", "left"}));
}

TEST_F(WndInputTest, DroppedFilesAreLoadedWhereTheHostWantsIt) {
    Show(300, 200);
    window.CreateImage(3, 3, 8);
    QSignalSpy spy(&window, &CTavixWnd::fileDropped);
    const auto drop = [&](const char *file) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        QWidget *const viewport = ViewOf(window).viewport();
        QDragEnterEvent enter({9, 9}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(viewport, &enter);
        QDropEvent event({9, 9}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        if (viewport->acceptDrops() && enter.isAccepted())
            QCoreApplication::sendEvent(viewport, &event);
    };
    drop(TAVIX_EXAMPLE_DATA "/coins.png");
    EXPECT_EQ(window.GetWidth(), 3);
    window.EnableFileDrop(1);
    drop(__FILE__);
    EXPECT_EQ(window.GetWidth(), 3);
    drop(TAVIX_EXAMPLE_DATA "/coins.png");
    EXPECT_EQ(window.GetWidth(), 384);
    ASSERT_EQ(spy.count(), 2);
    EXPECT_FALSE(spy[0][1].toBool());
    EXPECT_TRUE(spy[1][1].toBool());
}

TEST_F(WndInputTest, TheRightButtonOpensTheMenuWhileEnabled) {
    ShowNoise(300, 200, 2.0);
    const auto menu = [&] { return window.findChild<QMenu *>(); };
    const auto press = [&] {
        Send(window, QEvent::MouseButtonPress, {20, 20}, Qt::RightButton, Qt::RightButton);
    };
    window.EnableContextMenu(0);
    press();
    EXPECT_EQ(menu(), nullptr);
    window.EnableContextMenu(1);
    press();
    ASSERT_TRUE(menu() && menu()->isVisible());
    EXPECT_EQ(window.IsMouseCaptured(), 0);
    for (QAction *action : menu()->actions())
        if (!action->data().isValid())
            action->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.GetZoomFitToMode(), 1);
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), QSize(100, 80));

    const auto command = [&](int number) {
        for (QAction *action : menu()->actions())
            if (action->data() == number)
                return action;
        return static_cast<QAction *>(nullptr);
    };
    EXPECT_EQ(command(6000)->text(), "ROI Open(&O) ...");
    EXPECT_EQ(command(6001)->text(), "ROI Save(&S) ...");
    EXPECT_FALSE(command(6001)->isVisible()) << "there is nothing to save";
    for (const auto &[number, title] :
         {std::pair{6000, "Open ROI File"}, {6001, "Save ROI File"}}) {
        command(number)->trigger();
        QCoreApplication::processEvents();
        const auto dialogs = window.findChildren<QFileDialog *>();
        ASSERT_FALSE(dialogs.isEmpty());
        EXPECT_EQ(dialogs.back()->windowTitle(), title);
        Q_EMIT dialogs.back()->fileSelected("no/such/folder/a.roix");
        QCoreApplication::processEvents();
        const auto *const failure = window.findChild<QMessageBox *>();
        ASSERT_TRUE(failure && failure->isVisible());
        EXPECT_TRUE(!failure->isModal() && failure->text().startsWith("no/such/folder/a.roix "));
        delete failure;
    } // They are open when the window is destroyed.
}

TEST(WndLifeTest, FunctionsAndSlotsMayDestroyTheWindow) {
    const std::function<void(CTavixWnd &)> registrations[] = {
        [](CTavixWnd &w) { w.RegLButtonDownProc(DestroyFromMouse); },
        [](CTavixWnd &w) { w.RegMouseMoveProc(DestroyFromMouse); },
        [](CTavixWnd &w) { w.RegLButtonUpProc(DestroyFromMouse); },
        [](CTavixWnd &w) { w.RegDblClickProc(DestroyFromMouse); },
        [](CTavixWnd &w) { w.RegRButtonDownProc(DestroyFromMouse); },
        [](CTavixWnd &w) {
            w.EnableContextMenu(0); // It takes the release.
            w.RegRButtonUpProc(DestroyFromMouse);
        },
        [](CTavixWnd &w) { w.RegImagePositionChangedProc(DestroySender); },
        [](CTavixWnd &w) { QObject::connect(&w, &CTavixWnd::pixelHovered, DestroySender); },
        [](CTavixWnd &w) { QObject::connect(&w, &CTavixWnd::viewChanged, DestroySender); },
        [](CTavixWnd &w) { QObject::connect(&w, &CTavixWnd::leftButtonReleased, DestroySender); },
    };
    const std::function<void(CTavixWnd &)> actions[] = {
        [](CTavixWnd &w) {
            // Through Qt's whole way from the screen to the widget.
            QWindow *const screen = w.window()->windowHandle();
            QTest::mouseMove(screen, {50, 30});
            QTest::mouseMove(screen, {60, 40});
            QTest::mouseClick(screen, Qt::LeftButton, {}, {60, 40});
            QTest::mouseClick(screen, Qt::RightButton, {}, {60, 40});
        },
        [](CTavixWnd &w) {
            Send(w, QEvent::MouseButtonDblClick, {9, 9}, Qt::LeftButton, Qt::LeftButton);
        },
        [](CTavixWnd &w) {
            SendWheel(w, {0, -120});
        },
        [](CTavixWnd &w) { w.Zoom(2.0); },
        [](CTavixWnd &w) { w.LoadImageA(TAVIX_EXAMPLE_DATA "/coins.png"); },
        [](CTavixWnd &w) { w.CreateImage(5, 5, 8); },
        [](CTavixWnd &w) { w.resize(50, 60); }};
    for (std::size_t i = 0; i < std::size(registrations); ++i) {
        int destroyed = 0;
        for (const auto &action : actions) {
            QWidget host;
            QPointer<CTavixWnd> window(new CTavixWnd(&host));
            sender = window;
            window->resize(120, 80);
            host.show();
            window->CreateImage(10, 10, 24);
            QCoreApplication::processEvents();
            registrations[i](*window);
            action(*window);
            QCoreApplication::processEvents();
            destroyed += window.isNull();
            delete window;
        }
        EXPECT_GE(destroyed, 1) << i;
    }
}

TEST(WndLifeTest, WindowsLiveSideBySideInALayoutAndWithoutOne) {
    auto host = std::make_unique<QWidget>();
    auto *layout = new QHBoxLayout(host.get());
    auto *left = new CTavixWnd;
    CTavixWnd right;
    layout->addWidget(left);
    layout->addWidget(&right);
    host->resize(700, 300);
    host->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(host.get()));
    EXPECT_NEAR(left->width(), right.width(), 1);
    left->CreateImage(40, 30, 8);
    right.CreateImage(20, 60, 24);
    left->Zoom(3.0);
    EXPECT_EQ(right.GetZoomFitToMode(), 1);
    left->RegStatusChangedProc(TellStatus);
    told.clear();
    right.SetStatusChangedEvent();
    EXPECT_TRUE(told.empty());

    right.setParent(nullptr);
    host.reset();
    right.resize(125, 65);
    right.ZoomFitTo();
    EXPECT_DOUBLE_EQ(right.GetZoomRatio(), 1.0);
    right.SetViewFocus();
    right.CursorPosToCenter();
    EXPECT_EQ(right.GetWidth(), 20);
    EXPECT_NE(right.GetInstanceHandle(), nullptr);

    right.CreateImage(1, 100000, 8); // Thinner than a screen pixel where it fits.
    for (const QSize &size : {QSize(0, 0), QSize(1, 1), QSize(9000, 40)}) {
        right.resize(size);
        right.ZoomFitTo();
        right.ZoomPlus();
        EXPECT_FALSE(Grab(right).isNull() && !size.isEmpty());
    }
}
