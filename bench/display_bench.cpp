// Painting a picture beside QPainter's own scaled blit.

#include "comparison.h"

#include <TAVIX20.h>

#include <QImage>
#include <QPainter>

#include <memory>

namespace {

constexpr int WIDTH = 1280;
constexpr int HEIGHT = 960;

void Add(const std::string &operation, int imageWidth, int imageHeight, double target) {
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

} // namespace

void AddDisplayComparisons() {
    Add("PaintImage, 384 x 304 to 1280 x 960", 384, 304, 1.0);
    Add("PaintImage, 4096 x 3072 to 1280 x 960", 4096, 3072, 1.0);
}
