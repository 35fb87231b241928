// Regions of interest: strokes, lists, files and stripes of a window, beside OpenCV's masks.

#include "comparison.h"

#include <TAVIX20.h>

#include <QAbstractScrollArea>
#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QTemporaryDir>
#include <QTimerEvent>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <memory>
#include <random>
#include <vector>

namespace {

using Polygon = std::vector<cv::Point>;
using Polygons = std::vector<Polygon>;

Polygons RandomPolygons(int count, int side, int reach) {
    std::mt19937 random(1);
    const auto below = [&random](int end) { return static_cast<int>(random() % unsigned(end)); };
    Polygons polygons(static_cast<std::size_t>(count));
    for (Polygon &polygon : polygons) {
        const cv::Point corner(below(side - reach + 1), below(side - reach + 1));
        for (int i = 0; i < 20; ++i)
            polygon.push_back(corner + cv::Point(below(reach), below(reach)));
    }
    return polygons;
}

/// A window with a picture of one level, a folder for files, and a mask for the peer.
struct Scene {
    CTavixWnd window;
    QTemporaryDir folder;
    cv::Mat mask;

    Scene(int side, bool isShown) : mask(side, side, CV_8U, cv::Scalar(0)) {
        window.resize(1920, 1080);
        window.setVisible(isShown);
        QCoreApplication::processEvents();
        CTavixImage8 image(side, side);
        std::fill_n(image.GetImagePtr(), image.GetImageLen(), static_cast<unsigned char>(128));
        window.SetImage(&image);
        window.Zoom(1.0);
    }

    std::string Path(const char *name) const { return folder.filePath(name).toStdString(); }
    QWidget &Viewport() { return *window.findChild<QAbstractScrollArea *>()->viewport(); }

    void Send(QEvent::Type type, int x, int y, Qt::MouseButton button, Qt::MouseButtons buttons) {
        QMouseEvent event(type, QPointF(x, y), QPointF(x, y), button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(&Viewport(), &event);
    }

    void Click(int x, int y) {
        Send(QEvent::MouseButtonPress, x, y, Qt::LeftButton, Qt::LeftButton);
        Send(QEvent::MouseButtonRelease, x, y, Qt::LeftButton, Qt::NoButton);
    }

    void DragTo(int x, int y) { Send(QEvent::MouseMove, x, y, Qt::NoButton, Qt::LeftButton); }

    /// A file with the polygons, adding and subtracting in turn.
    void Write(const char *name, const Polygons &polygons) const {
        std::ofstream file(Path(name));
        file << "<Tavix_ROI><ImageSize>1,1</ImageSize><RoiElements>";
        for (std::size_t i = 0; i < polygons.size(); ++i) {
            file << "<Element><Method>" << (i + 1) % 2 << "</Method><Points>";
            for (const cv::Point &point : polygons[i])
                file << point.x << ',' << point.y << ';';
            file << "</Points></Element>";
        }
        file << "</RoiElements></Tavix_ROI>";
    }

    void FillMask(const Polygons &polygons) {
        mask = cv::Scalar(0);
        for (std::size_t i = 0; i < polygons.size(); ++i)
            cv::fillPoly(mask, Polygons{polygons[i]}, cv::Scalar(i % 2 == 0 ? 255 : 0));
        TraceMask();
    }

    void TakeOutlines() {
        TavixArray::CPointArrayArray outer;
        TavixArray::CPointArrayArray holes;
        window.GetRoiPointArray(outer, holes);
    }

    void TraceMask() const {
        Polygons outlines;
        cv::findContours(mask, outlines, cv::RETR_CCOMP, cv::CHAIN_APPROX_SIMPLE);
    }
};

/// Makes a scene at the first call: the other rows need the memory as well.
template <typename Prepare>
auto Lazily(int side, Prepare prepare, bool isShown = false) {
    const auto scene = std::make_shared<std::unique_ptr<Scene>>();
    return [=]() -> Scene & {
        if (!*scene) {
            *scene = std::make_unique<Scene>(side, isShown);
            prepare(**scene);
        }
        return **scene;
    };
}

void AddMagicWand() {
    const auto get = Lazily(2048, [](Scene &) {});
    AddComparison({"magic wand, flat 2048 x 2048", "cv::floodFill, cv::findContours", 1.0,
                   [=] {
                       get().window.Tool(TOOL_TYPE_ROI_MAGICWAND);
                       get().Click(500, 500);
                   },
                   [=] {
                       get().mask = cv::Scalar(0);
                       cv::floodFill(get().mask, {500, 500}, cv::Scalar(255));
                       get().TraceMask();
                   },
                   1000.0 / 50});
}

void AddCombining() {
    const Polygons polygons = RandomPolygons(1000, 4096, 4096);
    const auto get = Lazily(4096, [polygons](Scene &scene) {
        scene.Write("many.roix", polygons);
        scene.window.RoiFileOpen(scene.Path("many.roix").c_str());
        scene.FillMask(polygons);
    });
    AddComparison({"open and combine 1,000 elements, 4096 x 4096", "cv::fillPoly, cv::findContours",
                   0.5,
                   [=] {
                       get().window.RoiFileOpen(get().Path("many.roix").c_str());
                       get().TakeOutlines();
                   },
                   [=] { get().FillMask(polygons); }, 1.0});
    AddComparison({"add one more, by 20 clicks", "cv::fillPoly, cv::findContours", 0.5,
                   [=] {
                       CTavixWnd &window = get().window;
                       window.SetRoiToolMode(ROI_TOOL_MODE_ADD);
                       window.Tool(TOOL_TYPE_ROI_POLYGON);
                       for (int i = 0; i < 20; ++i)
                           get().Click(i * 7919 % 1900, i * 104729 % 1000);
                       window.SendToolResult();
                       get().TakeOutlines();
                   },
                   [=] {
                       cv::fillPoly(get().mask, Polygons{polygons[7]}, cv::Scalar(255));
                       get().TraceMask();
                   },
                   1000.0 / 50});
}

void AddFiles() {
    const Polygons polygons = RandomPolygons(10000, 4096, 40);
    const auto get = Lazily(4096, [polygons](Scene &scene) { scene.Write("many.roix", polygons); });
    AddComparison({"open and save 10,000 elements", "cv::fillPoly, cv::findContours", 0.1,
                   [=] {
                       get().window.RoiFileOpen(get().Path("many.roix").c_str());
                       get().window.RoiFileSave(get().Path("saved.roix").c_str());
                   },
                   [=] { get().FillMask(polygons); }, 1000.0 / 300});
}

void AddStripes() {
    Polygon comb; // 2,500 teeth of four corners each.
    for (int i = 0; i < 2500; ++i) {
        const int x = i % 625 * 3;
        const int y = i / 625 * 200;
        comb.insert(comb.end(), {{x, y}, {x + 2, y}, {x + 2, y + 9}, {x + 3, y + 9}});
    }
    const auto get = Lazily(
        2048,
        [comb](Scene &scene) {
            scene.Write("comb.roix", {comb});
            scene.window.RoiFileOpen(scene.Path("comb.roix").c_str());
        },
        true);
    const auto screen = std::make_shared<QImage>(1920, 1080, QImage::Format_RGB32);
    AddComparison({"stripe tick, 10,000 outline points", "QPainter, textured pen", 1.0,
                   [=] {
                       for (int id = 1; id < 16; ++id) { // The timer's, whichever it is.
                           QTimerEvent tick(id);
                           QCoreApplication::sendEvent(get().Viewport().parent(), &tick);
                       }
                       QCoreApplication::processEvents();
                   },
                   [=] {
                       QPolygon line;
                       for (const cv::Point &point : comb)
                           line << QPoint(point.x, point.y);
                       QPainter painter(screen.get());
                       painter.setPen(QPen(QBrush(Qt::Dense4Pattern), 1));
                       painter.drawPolyline(line);
                   },
                   1000.0 / 2});
}

/// A line drawn by hand: it winds over the whole window.
cv::Point Scribble(int i) {
    const double turn = i * 0.01;
    return {static_cast<int>(900 + 800 * std::sin(turn) * std::cos(turn * 0.0137)),
            static_cast<int>(500 + 450 * std::cos(turn * 0.873))};
}

void AddFreeline() {
    constexpr int points = 100000;
    const auto get = Lazily(
        2048,
        [](Scene &scene) {
            scene.window.Tool(TOOL_TYPE_ROI_FREELINE);
            const cv::Point start = Scribble(0);
            scene.Send(QEvent::MouseButtonPress, start.x, start.y, Qt::LeftButton, Qt::LeftButton);
            for (int i = 1; i < points; ++i)
                scene.DragTo(Scribble(i).x, Scribble(i).y);
            QCoreApplication::processEvents();
        },
        true);
    const auto next = std::make_shared<int>(points);
    const auto screen = std::make_shared<QImage>(1920, 1080, QImage::Format_RGB32);
    AddComparison({"one more move of a free line, 100,000 points", "QPainter, all of the line", 1.0,
                   [=] {
                       const cv::Point point = Scribble((*next)++);
                       get().DragTo(point.x, point.y);
                       QCoreApplication::processEvents();
                   },
                   [=] {
                       QPolygon line;
                       for (int i = 0; i < points; ++i)
                           line << QPoint(Scribble(i).x, Scribble(i).y);
                       QPainter painter(screen.get());
                       painter.drawPolyline(line);
                   },
                   60.0});
    AddComparison(
        {"a free line of 100,000 points, start to end", "cv::fillPoly, cv::findContours", 0.1,
         [=] {
             Scene &scene = get();
             const cv::Point end = Scribble(0);
             scene.window.Tool(TOOL_TYPE_ROI_FREELINE);
             scene.Click(end.x, end.y);
             scene.Send(QEvent::MouseButtonPress, end.x, end.y, Qt::LeftButton, Qt::LeftButton);
             for (int i = 1; i < points; ++i)
                 scene.DragTo(Scribble(i).x, Scribble(i).y);
             scene.Send(QEvent::MouseButtonRelease, end.x, end.y, Qt::LeftButton, Qt::NoButton);
             QCoreApplication::processEvents();
         },
         [=] {
             Polygon line;
             for (int i = 0; i < points; ++i)
                 line.push_back(Scribble(i));
             get().FillMask({line});
         }});
}

} // namespace

void AddRoiComparisons() {
    AddMagicWand();
    AddCombining();
    AddFiles();
    AddStripes();
    AddFreeline();
}
