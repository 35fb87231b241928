// The picture is resampled here and handed to the painter as an image of device pixels, one to one.
// QPainter's own scaled blit rounds in its own way, so its pixels would not be those that overlays
// compute; and it would walk the whole picture, while this touches the visible part only.

#include "TAVIX20/platform/dib_painter.h"

#include <QImage>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace tavix {

namespace {

/// The source pixels [first, end) of one target pixel along one axis.
struct Span {
    int first;
    int end;
};

/// One axis of the mapping: source pixel 0 starts at target position origin, each source pixel is
/// scale wide; scale is negative in a mirrored picture.
struct Axis {
    double origin;
    double scale;
    int sourceSize;

    bool Shrinks() const { return std::abs(scale) < 1.0; }

    /// Source position of a target position, limited to the edges 0 to last.
    int SourceAt(double target, int last) const {
        const double i = std::floor((target - origin) / scale);
        return static_cast<int>(std::clamp(i, 0.0, static_cast<double>(last)));
    }

    /// First target pixel and end of the picture, limited to the reachable ones.
    Span TargetSpan(double reachableBegin, double reachableEnd) const {
        const double lowEdge = std::min(origin, origin + scale * sourceSize);
        const double begin = FirstTargetPixel(lowEdge, std::abs(scale), 0);
        const double end = FirstTargetPixel(lowEdge, std::abs(scale), sourceSize);
        return {static_cast<int>(std::max(begin, std::floor(reachableBegin))),
                static_cast<int>(std::min(end, std::ceil(reachableEnd)))};
    }
};

/// The source pixels of each target pixel.
std::vector<Span> MapAxis(const Axis &axis, Span targets, DibSampling sampling) {
    std::vector<Span> spans;
    spans.reserve(static_cast<std::size_t>(targets.end - targets.first));
    for (int target = targets.first; target < targets.end; ++target) {
        const int centre = axis.SourceAt(target + 0.5, axis.sourceSize - 1);
        Span span{centre, centre + 1};
        if (sampling == DibSampling::Average && axis.Shrinks()) {
            const auto [low, high] = std::minmax({axis.SourceAt(target, axis.sourceSize),
                                                  axis.SourceAt(target + 1.0, axis.sourceSize)});
            if (low < high)
                span = {low, high};
        }
        spans.push_back(span);
    }
    return spans;
}

QRgb PixelAt(const DibView &dib, const unsigned char *row, int x) {
    if (dib.bitCount == 8)
        return dib.palette[row[x]];
    const unsigned char *const pixel = row + std::ptrdiff_t{x} * (dib.bitCount / 8);
    return qRgb(pixel[2], pixel[1], pixel[0]);
}

const unsigned char *RowAt(const DibView &dib, int y) {
    return dib.bits + y * dib.stride;
}

QImage SampleNearest(const DibView &dib, const std::vector<Span> &columns,
                     const std::vector<Span> &rows) {
    QImage out(static_cast<int>(columns.size()), static_cast<int>(rows.size()),
               QImage::Format_RGB32);
    const std::size_t rowBytes = columns.size() * sizeof(QRgb);
    for (std::size_t y = 0; y < rows.size(); ++y) {
        auto *target = reinterpret_cast<QRgb *>(out.scanLine(static_cast<int>(y)));
        if (y > 0 && rows[y].first == rows[y - 1].first) {
            std::memcpy(target, out.constScanLine(static_cast<int>(y) - 1), rowBytes);
            continue;
        }
        const unsigned char *source = RowAt(dib, rows[y].first);
        for (std::size_t x = 0; x < columns.size(); ++x)
            target[x] = PixelAt(dib, source, columns[x].first);
    }
    return out;
}

struct ChannelSums {
    std::uint64_t red = 0;
    std::uint64_t green = 0;
    std::uint64_t blue = 0;
};

QRgb MeanColour(const ChannelSums &sums, std::uint64_t count) {
    const auto mean = [count](std::uint64_t sum) {
        return static_cast<int>((sum + count / 2) / count);
    };
    return qRgb(mean(sums.red), mean(sums.green), mean(sums.blue));
}

QImage SampleAverage(const DibView &dib, const std::vector<Span> &columns,
                     const std::vector<Span> &rows) {
    QImage out(static_cast<int>(columns.size()), static_cast<int>(rows.size()),
               QImage::Format_RGB32);
    std::vector<ChannelSums> sums(columns.size());
    for (std::size_t y = 0; y < rows.size(); ++y) {
        std::fill(sums.begin(), sums.end(), ChannelSums{});
        for (int sourceY = rows[y].first; sourceY < rows[y].end; ++sourceY) {
            const unsigned char *source = RowAt(dib, sourceY);
            for (std::size_t x = 0; x < columns.size(); ++x) {
                for (int sourceX = columns[x].first; sourceX < columns[x].end; ++sourceX) {
                    const QRgb pixel = PixelAt(dib, source, sourceX);
                    sums[x].red += static_cast<std::uint64_t>(qRed(pixel));
                    sums[x].green += static_cast<std::uint64_t>(qGreen(pixel));
                    sums[x].blue += static_cast<std::uint64_t>(qBlue(pixel));
                }
            }
        }
        auto *target = reinterpret_cast<QRgb *>(out.scanLine(static_cast<int>(y)));
        const auto height = static_cast<std::uint64_t>(rows[y].end - rows[y].first);
        for (std::size_t x = 0; x < columns.size(); ++x) {
            const auto width = static_cast<std::uint64_t>(columns[x].end - columns[x].first);
            target[x] = MeanColour(sums[x], width * height);
        }
    }
    return out;
}

/// The device pixels that the painter can reach at all.
QRectF ReachableDeviceRect(const QPainter &painter, const QTransform &toDevice) {
    const QTransform windowToDevice = painter.worldTransform().inverted() * toDevice;
    const QRectF reachable = windowToDevice.mapRect(QRectF(painter.window()));
    return painter.hasClipping() ? reachable & toDevice.mapRect(painter.clipBoundingRect())
                                 : reachable;
}

/// Under rotation or shear there are no pixel blocks to be exact about: QPainter maps the picture.
void DrawTransformed(QPainter &painter, const DibView &dib, const QRectF &target) {
    const auto columns = MapAxis({0.0, 1.0, dib.width}, {0, dib.width}, DibSampling::Nearest);
    const auto rows = MapAxis({0.0, 1.0, dib.height}, {0, dib.height}, DibSampling::Nearest);
    painter.drawImage(target, SampleNearest(dib, columns, rows));
}

} // namespace

int FirstTargetPixel(double origin, double scale, int i) {
    // Far outside any screen, but differences of two such positions still fit into an int.
    constexpr double limit = 1e9;
    return static_cast<int>(std::clamp(std::ceil(origin + i * scale - 0.5), -limit, limit));
}

void DrawDib(QPainter &painter, const DibView &dib, const QRectF &target, DibSampling sampling) {
    if (!dib.bits || dib.width <= 0 || dib.height <= 0 || target.isEmpty())
        return;
    const QTransform toDevice = painter.deviceTransform();
    if (toDevice.type() > QTransform::TxScale) {
        DrawTransformed(painter, dib, target);
        return;
    }

    const QPointF origin = toDevice.map(target.topLeft());
    const Axis horizontal{origin.x(), toDevice.m11() * target.width() / dib.width, dib.width};
    const Axis vertical{origin.y(), toDevice.m22() * target.height() / dib.height, dib.height};
    const QRectF reachable = ReachableDeviceRect(painter, toDevice);
    const Span across = horizontal.TargetSpan(reachable.left(), reachable.right());
    const Span down = vertical.TargetSpan(reachable.top(), reachable.bottom());
    if (across.first >= across.end || down.first >= down.end)
        return;

    const auto columns = MapAxis(horizontal, across, sampling);
    const auto rows = MapAxis(vertical, down, sampling);
    const bool averaged =
        sampling == DibSampling::Average && (horizontal.Shrinks() || vertical.Shrinks());
    const QImage visible =
        averaged ? SampleAverage(dib, columns, rows) : SampleNearest(dib, columns, rows);

    painter.save();
    painter.setTransform(toDevice.inverted(), true);
    painter.drawImage(QPoint(across.first, down.first), visible);
    painter.restore();
}

} // namespace tavix
