// Painting a picture beside QPainter's own scaled blit.

#include "comparison.h"

#include <TAVIX20.h>
#include <TAVIX20/display/picture_painter.h>

#include <QAbstractScrollArea>
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr int WIDTH = 1280;
constexpr int HEIGHT = 960;

void AddPaintImage(const std::string &operation, int imageWidth, int imageHeight, double target) {
    const auto image = std::make_shared<CTavixImage8>(imageWidth, imageHeight);
    for (int i = 0; i < image->GetImageLen(); ++i)
        image->GetImagePtr()[i] = static_cast<unsigned char>(i * 7);
    const auto screen = std::make_shared<QImage>(WIDTH, HEIGHT, QImage::Format_RGB32);
    AddComparison({operation, "QPainter::drawImage", target,
                   [image, screen] {
                       QPainter painter(screen.get());
                       CDC dc(&painter);
                       image->PaintImage(&dc, CRect(0, 0, WIDTH, HEIGHT));
                   },
                   [image, screen] {
                       QPainter painter(screen.get());
                       const QImage picture(image->GetImagePtr(), image->GetWidth(),
                                            image->GetHeight(), QImage::Format_Grayscale8);
                       painter.drawImage(QRect(0, 0, WIDTH, HEIGHT), picture);
                   }});
}

constexpr QSize CLIENT(1920, 1080);
constexpr int LARGE = 10000;
constexpr int STEP = 11; ///< Client pixels that a pan step moves, in both directions.

/// What the rows of the display window share. Everything is made when a row first runs.
class Scene {
public:
    const CTavixImage8 &Large() {
        if (m_large.GetWidth() == 0) {
            m_large = CTavixImage8(LARGE, LARGE);
            for (int i = 0; i < m_large.GetImageLen(); ++i)
                m_large.GetImagePtr()[i] = static_cast<unsigned char>(i * 7 + i / LARGE * 13);
        }
        return m_large;
    }

    QImage &Screen() { return m_screen; }

    tavix::PicturePainter &Painter() {
        if (!m_hasPicture)
            m_painter.SetPicture({std::as_const(Large()).GetImagePtr(), LARGE, LARGE, LARGE,
                                  tavix::PixelKind::Grey});
        m_hasPicture = true;
        return m_painter;
    }

    /// The next scroll position.
    int Pan() { return m_pan = (m_pan + STEP) % 400; }

private:
    CTavixImage8 m_large;
    QImage m_screen{CLIENT, QImage::Format_RGB32};
    tavix::PicturePainter m_painter;
    bool m_hasPicture = false;
    int m_pan = 0;
};

/// A shown window whose picture area has the client's size; it shows the image at the zoom.
std::unique_ptr<CTavixWnd> ShowWindow(const CTavixImage8 &image, double zoom) {
    auto window = std::make_unique<CTavixWnd>();
    window->resize(CLIENT);
    window->SetImage(&image);
    window->Zoom(zoom);
    window->show();
    QApplication::processEvents();
    const auto *const view = window->findChild<QAbstractScrollArea *>();
    window->resize(CLIENT + CLIENT - view->viewport()->size());
    QApplication::processEvents();
    return window;
}

/// The part of the large image that is to be seen, blitted by QPainter.
void DrawPart(Scene &scene, double zoom) {
    const QImage picture(std::as_const(scene.Large()).GetImagePtr(), LARGE, LARGE,
                         QImage::Format_Grayscale8);
    const QRectF target(0, 0, std::min<double>(CLIENT.width(), LARGE * zoom),
                        std::min<double>(CLIENT.height(), LARGE * zoom));
    const bool pans = LARGE * zoom > CLIENT.width();
    const double at = pans ? scene.Pan() / zoom : 0;
    QPainter(&scene.Screen())
        .drawImage(target, picture, QRectF(at, at, target.width() / zoom, target.height() / zoom));
}

void AddPan(const std::shared_ptr<Scene> &scene, const std::string &zoomText, double zoom) {
    constexpr double frames = 300.0; // A second, of the window.
    const std::string what = "pan step, 10,000 x 10,000 grey, zoom " + zoomText;
    const auto window = std::make_shared<std::unique_ptr<CTavixWnd>>(); // Goes with the row.
    AddComparison({what + ", window", "QPainter::drawImage of the part", 1.0,
                   [scene, zoom, window] {
                       if (!*window)
                           *window = ShowWindow(scene->Large(), zoom);
                       const int at = scene->Pan();
                       (*window)->SetScrollPos(SB_HORZ, at, false);
                       (*window)->SetScrollPos(SB_VERT, at);
                       QApplication::processEvents();
                   },
                   [scene, zoom] { DrawPart(*scene, zoom); }, frames});
    AddComparison({what + ", painter", "QPainter::drawImage of the part", 1.0,
                   [scene, zoom] {
                       QPainter painter(&scene->Screen());
                       const int at = LARGE * zoom > CLIENT.width() ? scene->Pan() : 0;
                       scene->Painter().Paint(painter, QRect(QPoint(), CLIENT), QPointF(-at, -at),
                                              zoom, 0xFF303030);
                   },
                   [scene, zoom] { DrawPart(*scene, zoom); }});
}

void AddPyramid(const std::shared_ptr<Scene> &scene) {
    AddComparison(
        {"pyramid of 10,000 x 10,000 grey", "cv::resize INTER_AREA, halving", 1.0,
         [scene] {
             tavix::PicturePyramid pyramid;
             pyramid.Reset({std::as_const(scene->Large()).GetImagePtr(), LARGE, LARGE, LARGE,
                            tavix::PixelKind::Grey});
             pyramid.Level(1);
         },
         [scene] {
             cv::Mat level(LARGE, LARGE, CV_8UC1,
                           const_cast<CTavixImage8 &>(scene->Large()).GetImagePtr());
             while (level.cols > 2) {
                 cv::Mat half;
                 cv::resize(level, half, {level.cols / 2, level.rows / 2}, 0, 0, cv::INTER_AREA);
                 level = half;
             }
         },
         1000.0 / 60});
}

void AddLiveView() {
    constexpr int side = 2048;
    constexpr double frames = 60.0; // A second.
    const auto image = std::make_shared<CTavixImage8>(side, side);
    for (int i = 0; i < image->GetImageLen(); ++i)
        image->GetImagePtr()[i] = static_cast<unsigned char>(i * 7);
    const auto window = std::make_shared<std::unique_ptr<CTavixWnd>>();
    const auto screen = std::make_shared<QImage>(CLIENT, QImage::Format_RGB32);
    AddComparison(
        {"new image of 2,048 x 2,048 and its first frame", "QImage::copy and scaled, smooth", 1.0,
         [image, window] {
             if (!*window) {
                 *window = std::make_unique<CTavixWnd>();
                 (*window)->resize(CLIENT);
                 (*window)->show();
             }
             (*window)->SetImage(image.get());
             QApplication::processEvents();
         },
         [image, screen] {
             const QImage copy =
                 QImage(image->GetImagePtr(), side, side, QImage::Format_Grayscale8).copy();
             QPainter painter(screen.get());
             painter.fillRect(screen->rect(), Qt::darkGray);
             painter.drawImage(
                 420, 0, copy.scaled(1075, 1075, Qt::KeepAspectRatio, Qt::SmoothTransformation));
         },
         frames});
}

/// A window on a large image, points in it, and the bitmap of the peer.
struct LayerScene {
    static constexpr int SIDE = 2048;
    static constexpr int COUNT = 100000;

    LayerScene() {
        window.CreateImage(SIDE, SIDE, 8);
        window.ShowLayer(1);
        unsigned random = 1;
        for (tagPOINT &point : points) {
            random = random * 1664525 + 1013904223;
            point = {static_cast<int>(random >> 21), static_cast<int>(random >> 10) % SIDE};
        }
    }

    void SetPixels(QImage &image) const {
        for (const tagPOINT &point : points)
            image.setPixel(point.x, point.y, 0xFFFF0000);
    }

    CTavixWnd window;
    std::vector<tagPOINT> points = std::vector<tagPOINT>(COUNT);
    QImage kept{SIDE, SIDE, QImage::Format_ARGB32};
};

void AddLayerPoints() {
    constexpr double calls = 50.0; // In 20 ms each.
    const auto made = std::make_shared<std::unique_ptr<LayerScene>>();
    const auto scene = [made]() -> LayerScene & {
        if (!*made)
            *made = std::make_unique<LayerScene>();
        return **made;
    };
    AddComparison({"100,000 points in a fresh layer, one call", "QImage::fill, setPixel", 1.0,
                   [scene] {
                       scene().window.RemoveAllLayers();
                       scene().window.AddPointsLayerObject(scene().points.data(), LayerScene::COUNT,
                                                           0x0000FF);
                   },
                   [scene] {
                       QImage fresh(LayerScene::SIDE, LayerScene::SIDE, QImage::Format_ARGB32);
                       fresh.fill(0);
                       scene().SetPixels(fresh);
                   },
                   calls});
    AddComparison({"100,000 points in a layer, one by one", "QImage::setPixel", 0.5,
                   [scene] {
                       LayerScene &all = scene();
                       for (const tagPOINT &point : all.points)
                           all.window.AddPointLayerObject(point.x, point.y, 0x0000FF);
                   },
                   [scene] { scene().SetPixels(scene().kept); }, calls});
}

} // namespace

void AddDisplayComparisons() {
    AddPaintImage("PaintImage, 384 x 304 to 1280 x 960", 384, 304, 1.0);
    AddPaintImage("PaintImage, 4096 x 3072 to 1280 x 960", 4096, 3072, 1.0);
    const auto scene = std::make_shared<Scene>();
    for (const auto &[text, zoom] : {std::pair<const char *, double>{"0.05", 0.05},
                                     {"0.3", 0.3},
                                     {"1", 1.0},
                                     {"1.7", 1.7},
                                     {"3", 3.0},
                                     {"25", 25.0}})
        AddPan(scene, text, zoom);
    AddPyramid(scene);
    AddLiveView();
    AddLayerPoints();
}
