/// Blob analysis step by step as its rules are told, for any class of pixels.
#pragma once

#include "image/image_samples.h"

#include "TAVIX20/containers/blob_rect_array.h"
#include "TAVIX20/containers/pixel_array_array.h"
#include "TAVIX20/containers/point_array_array.h"

#include <array>
#include <climits>
#include <functional>
#include <utility>
#include <vector>

namespace tavix_test {

using Points = std::vector<std::pair<int, int>>;

/// left, top, right, bottom, number of pixels; and the pixels in visiting order.
struct Blob {
    std::array<long, 5> box;
    Points points;
    bool isOnePoint;

    bool operator==(const Blob &) const = default;
};

/// Whether the pixel counts; only asked within the image.
using Predicate = std::function<bool(int x, int y)>;

/// Every trace of the rules whose one-pixel result has no neighbour; not yet filtered.
inline std::vector<Blob> LiteralBlobs(int width, int height, std::array<int, 4> area, long cap,
                                      const Predicate &isOfClass, const Predicate &isNeighbour) {
    struct Cell {
        bool visited = false;
        int parentX = 0, parentY = 0;
    };
    std::vector<Cell> map(static_cast<std::size_t>(width * height));
    const auto at = [&](int x, int y) -> Cell & {
        return map[static_cast<std::size_t>(y * width + x)];
    };
    const auto isInside = [&](int x, int y) { return x >= 0 && y >= 0 && x < width && y < height; };
    std::vector<Blob> blobs;
    for (int seedY = std::max(area[1], 0); seedY <= std::min(area[3], height - 1); ++seedY)
        for (int seedX = std::max(area[0], 0); seedX <= std::min(area[2], width - 1); ++seedX) {
            if (!isOfClass(seedX, seedY))
                continue;
            at(seedX, seedY) = {true, seedX, seedY};
            Blob blob{{seedX, seedY, seedX, seedY, 1}, {{seedX, seedY}}, true};
            for (int x = seedX, y = seedY; blob.box[4] != cap;) {
                bool moved = false;
                for (const auto &[dx, dy] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 1}}) {
                    const int nx = x + dx, ny = y + dy;
                    if (!isInside(nx, ny) || !isOfClass(nx, ny) || at(nx, ny).visited)
                        continue;
                    at(nx, ny) = {true, x, y};
                    x = nx;
                    y = ny;
                    blob.points.emplace_back(x, y);
                    blob.box = {std::min<long>(blob.box[0], x), std::min<long>(blob.box[1], y),
                                std::max<long>(blob.box[2], x), std::max<long>(blob.box[3], y),
                                blob.box[4] + 1};
                    moved = true;
                    break;
                }
                if (moved)
                    continue;
                const Cell cell = at(x, y);
                if (cell.parentX == x && cell.parentY == y)
                    break;
                x = cell.parentX;
                y = cell.parentY;
            }
            blob.isOnePoint = blob.box[4] == 1;
            bool hasNeighbour = false;
            for (const auto &[dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}})
                hasNeighbour |=
                    isInside(seedX + dx, seedY + dy) && isNeighbour(seedX + dx, seedY + dy);
            if (!blob.isOnePoint || !hasNeighbour)
                blobs.push_back(std::move(blob));
        }
    return blobs;
}

/// Those with minCount to maxCount pixels.
inline std::vector<Blob> ByCount(std::vector<Blob> blobs, long minCount, long maxCount) {
    std::erase_if(blobs, [=](const Blob &blob) {
        return blob.isOnePoint ? minCount > 1 : blob.box[4] < minCount || blob.box[4] > maxCount;
    });
    return blobs;
}

/// Those of accepted width and height.
inline std::vector<Blob> BySize(std::vector<Blob> blobs, std::array<long, 4> bounds, long slack) {
    std::erase_if(blobs, [=](const Blob &blob) {
        const auto [minW, maxW, minH, maxH] = bounds;
        const long width = blob.box[2] - blob.box[0], height = blob.box[3] - blob.box[1];
        return blob.isOnePoint ? minW != 1 || minH != 1
                               : width < minW - slack || width > maxW - 1 ||
                                     height < minH - slack || height > maxH - 1;
    });
    return blobs;
}

inline std::vector<std::array<long, 5>> BoxesOf(const std::vector<Blob> &blobs) {
    std::vector<std::array<long, 5>> boxes;
    for (const Blob &blob : blobs)
        boxes.push_back(blob.box);
    return boxes;
}

inline std::vector<std::array<long, 5>> BoxesOf(CBlobRectArray &array) {
    std::vector<std::array<long, 5>> boxes;
    for (int i = 0; i < array.GetElementCount(); ++i)
        boxes.push_back(
            {array[i].left, array[i].top, array[i].right, array[i].bottom, array[i].pixelCount});
    return boxes;
}

inline std::vector<Points> PointsOf(const std::vector<Blob> &blobs) {
    std::vector<Points> lists;
    for (const Blob &blob : blobs)
        lists.push_back(blob.points);
    return lists;
}

/// Of a CPointArrayArray or a CPixelArrayArray, from the given list on.
template <typename Array>
std::vector<Points> PointsOf(Array &array, int first = 0) {
    std::vector<Points> lists;
    for (int i = first; i < array.GetElementCount(); ++i) {
        lists.emplace_back();
        for (int k = 0; k < array[i].GetElementCount(); ++k)
            lists.back().emplace_back(array[i][k].x, array[i][k].y);
    }
    return lists;
}

} // namespace tavix_test
