// Frames of a window full of overlay objects, beside QPainter drawing picture and all objects.

#include "comparison.h"

#include <TAVIX20.h>

#include <QAbstractScrollArea>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>

#include <memory>
#include <random>

namespace {

constexpr int WIDTH = 1920;
constexpr int HEIGHT = 1080;
constexpr int SIDE = 10000; ///< Of the picture.
constexpr COLORREF COLOURS[] = {0x0000FF, 0x00FF00, 0x00FFFF};

/// A window on the picture, a plain screen for the peer, and the same boxes in both.
struct Scene {
    CTavixWnd window;
    QImage screen{WIDTH, HEIGHT, QImage::Format_RGB32};
    QImage picture{SIDE, SIDE, QImage::Format_Grayscale8};
    std::vector<QRect> boxes;
    double zoom;
    int frame = 0;

    Scene(int count, double scale, const QRect &area) : zoom(scale) {
        CTavixImage8 image(SIDE, SIDE);
        for (int i = 0; i < image.GetImageLen(); ++i)
            image.GetImagePtr()[i] = static_cast<unsigned char>(i * 7);
        std::copy_n(image.GetImagePtr(), image.GetImageLen(), picture.bits());
        window.resize(WIDTH, HEIGHT);
        window.show();
        QCoreApplication::processEvents(); // Until then repaint() paints nothing.
        window.SetImage(&image);
        window.Zoom(zoom);
        std::mt19937 random(1);
        const auto below = [&random](int limit) {
            return static_cast<int>(random() % static_cast<unsigned>(limit));
        };
        for (int i = 0; i < count; ++i) {
            boxes.emplace_back(area.x() + below(area.width()), area.y() + below(area.height()),
                               5 + below(40), 5 + below(40));
            const QRect &box = boxes.back();
            window.AddRectangle(box.x(), box.y(), box.width(), box.height(), 0, 1, COLOURS[i % 3],
                                "box");
        }
    }

    /// Scrolls a step and paints everything.
    void PaintWindow() {
        window.SetScrollPos(SB_HORZ, 300 + ++frame % 8, false);
        window.findChild<QAbstractScrollArea *>()->viewport()->repaint();
    }

    void PaintPlainly() {
        QPainter painter(&screen);
        painter.translate(-300 - ++frame % 8, 0);
        painter.scale(zoom, zoom);
        const QRectF part = painter.transform().inverted().mapRect(QRectF(screen.rect()));
        painter.drawImage(part, picture, part);
        painter.setBrush(Qt::NoBrush);
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            QPen pen(QColor(GetRValue(COLOURS[i % 3]), GetGValue(COLOURS[i % 3]),
                            GetBValue(COLOURS[i % 3])));
            pen.setCosmetic(true);
            painter.setPen(pen);
            painter.drawRect(boxes[i]);
        }
    }
};

void Add(const std::string &operation, double frames, int count, double zoom, const QRect &area) {
    // Made at the first call: the other rows need the memory as well.
    const auto scene = std::make_shared<std::unique_ptr<Scene>>();
    const auto get = [=]() -> Scene & {
        if (!*scene)
            *scene = std::make_unique<Scene>(count, zoom, area);
        return **scene;
    };
    AddComparison({operation, "QPainter, all objects", 1.0, [=] { get().PaintWindow(); },
                   [=] { get().PaintPlainly(); }, frames});
}

} // namespace

void AddOverlayComparisons() {
    Add("Window, 4000 rectangles in view", 100.0, 4000, 1.0,
        QRect(300, 0, WIDTH - 50, HEIGHT - 50));
    Add("Window, 100000 rectangles, 1 % in view", 60.0, 100000, 1.44, QRect(0, 0, SIDE, SIDE));
}
