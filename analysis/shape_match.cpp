// Where the pixels of an image lie, and how much it is like another one.

#include "TAVIX20/analysis/blob_engine.h"
#include "TAVIX20/analysis/image_rows.h"
#include "TAVIX20/image/tavix_image8.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

void CTavixImage8::GetGravityPoint(int threshold, unsigned char value, long *cx, long *cy) const {
    GetGravityPoint(0, 0, m_width - 1, m_height - 1, threshold, value, cx, cy);
}

void CTavixImage8::GetGravityPoint(int x1, int y1, int x2, int y2, int threshold,
                                   unsigned char value, long *cx, long *cy) const {
    if (!cx || !cy)
        return;
    *cx = *cy = 0;
    const auto area = tavix::ClipToImage(*this, x1, y1, x2, y2);
    if (m_imageLen == 0 || !area)
        return;
    const tavix::BandClass pixels = tavix::ThresholdClass(*this, threshold, value);
    std::vector<std::uint64_t> words;
    try {
        words.resize(tavix::WordsOf(m_width));
    } catch (const std::bad_alloc &) {
        return;
    }
    std::int64_t count = 0;
    std::int64_t sumX = 0;
    std::int64_t sumY = 0;
    for (int y = area->y1; y <= area->y2; ++y) {
        pixels.MarkRow(y, words.data());
        tavix::KeepSpan(words.data(), words.size(), area->x1, area->x2);
        tavix::ForEachRun(words.data(), words.size(), m_width, [&](int start, int end) {
            const std::int64_t length = std::int64_t{end} - start;
            count += length;
            sumX += (std::int64_t{start} + end - 1) * length / 2;
            sumY += y * length;
        });
    }
    if (count == 0)
        return;
    *cx = static_cast<long>(sumX / count);
    *cy = static_cast<long>(sumY / count);
}

double CTavixImage::Match(const CTavixImage *other) const {
    if (!other || other->m_width != m_width || other->m_height != m_height ||
        other->m_bitCount != m_bitCount || other->m_imageLen != m_imageLen || m_imageLen == 0)
        return 0;
    std::int64_t sumA = 0;
    std::int64_t sumB = 0;
    std::int64_t squaresA = 0;
    std::int64_t squaresB = 0;
    std::int64_t products = 0;
    const unsigned char *b = other->m_buffer.get();
    tavix::ForEachRow(*this, [&](const unsigned char *a, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            sumA += a[i];
            sumB += b[i];
            squaresA += a[i] * a[i];
            squaresB += b[i] * b[i];
            products += a[i] * b[i];
        }
        b += Stride();
    });
    const auto count = static_cast<double>(tavix::RowBytes(*this)) * m_height;
    const auto deviation = [count](std::int64_t sum1, std::int64_t sum2, std::int64_t product) {
        return static_cast<double>(product) -
               static_cast<double>(sum1) * static_cast<double>(sum2) / count;
    };
    const double variances = deviation(sumA, sumA, squaresA) * deviation(sumB, sumB, squaresB);
    if (!(variances > 0))
        return 0;
    return std::clamp(deviation(sumA, sumB, products) / std::sqrt(variances), -1.0, 1.0);
}

CTavixImage8 *CTavixImage::CreateEllipseImage(int width, int height, unsigned char inside,
                                              unsigned char outside) {
    auto image = std::make_unique<CTavixImage8>();
    if (width < 1 || height < 1 || !image->Create(width, height))
        return nullptr;
    const tavix::Ellipse ellipse{0, 0, width - 1, height - 1};
    int y = 0;
    tavix::ForEachRow(*image, [&](unsigned char *row, std::size_t size) {
        int first = 0;
        int last = 0;
        ellipse.RowSpan(y++, width - 1, first, last);
        std::memset(row, outside, size);
        if (first <= last)
            std::memset(row + first, inside, static_cast<std::size_t>(last - first) + 1);
    });
    return image.release();
}

double CTavixImage8::GetRoundness() const {
    const std::unique_ptr<CTavixImage8> ellipse(CreateEllipseImage(m_width, m_height, 255, 0));
    return ellipse ? Match(ellipse.get()) : 0.0;
}
