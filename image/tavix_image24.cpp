#include "TAVIX20/image/tavix_image24.h"

#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/layout.h"

namespace {

/// A stored pixel.
struct Bgr {
    unsigned char blue;
    unsigned char green;
    unsigned char red;

    bool operator==(const Bgr &) const = default;
};
static_assert(sizeof(Bgr) == 3);

Bgr FromColour(unsigned long colour) {
    return {static_cast<unsigned char>(colour >> 16), static_cast<unsigned char>(colour >> 8),
            static_cast<unsigned char>(colour)};
}

/// Calls the function with every pixel of every row.
template <typename Function>
void ForEachPixel(unsigned char *bytes, int width, int height, Function function) {
    const std::int64_t stride = tavix::RowStride(24, width);
    for (std::int64_t y = 0; y < height; ++y) {
        auto *const row = reinterpret_cast<Bgr *>(bytes + y * stride);
        for (int x = 0; x < width; ++x)
            function(row[x]);
    }
}

} // namespace

CTavixImage24::CTavixImage24(int width, int height) : CTavixImage24() {
    AllocateZeroed(width, height);
}

CTavixImage24::CTavixImage24(int width, int height, const unsigned char *bytes) : CTavixImage24() {
    AllocateCopy(width, height, bytes);
}

CTavixImage24::CTavixImage24(const CTavixImage24 &source) : CTavixImage24() {
    AllocateCopy(source.m_width, source.m_height, BytesFor(source));
}

CTavixImage24::CTavixImage24(void *image) : CTavixImage24() {
    CTavixImage24::SetImagePtr(image);
}

CTavixImage24::~CTavixImage24() = default;

unsigned char *CTavixImage24::GetImagePtr(int x1, int y1, int x2, int y2) const {
    return CopyRect(x1, y1, x2, y2, 0);
}

void CTavixImage24::SetImagePtr(void *image) {
    tavix::TakeIplPixels(image, 3, *this);
}

void CTavixImage24::SetImagePtr(int width, int height, const unsigned char *bytes) {
    AllocateCopy(width, height, bytes);
}

int CTavixImage24::Create(int width, int height) {
    return AllocateZeroed(width, height) ? 1 : 0;
}

CTavixImage *CTavixImage24::Clone() const {
    auto clone = std::make_unique<CTavixImage24>();
    *clone = *this;
    return clone.release();
}

CTavixImage24 &CTavixImage24::operator=(const CTavixImage24 &source) {
    SetImagePtr(source.m_width, source.m_height, BytesFor(source));
    return *this;
}

unsigned long CTavixImage24::GetPixel(int x, int y) const {
    const unsigned char *pixel = m_buffer.get() + Stride() * y + std::int64_t{3} * x;
    return (static_cast<unsigned long>(pixel[0]) << 16) |
           (static_cast<unsigned long>(pixel[1]) << 8) | pixel[2];
}

void CTavixImage24::SetPixel(int x, int y, unsigned long colour) {
    const std::int64_t offset = tavix::RowStride(24, m_width) * y + std::int64_t{3} * x;
    if (offset < 0 || offset + 3 > m_imageLen)
        return;
    *reinterpret_cast<Bgr *>(m_buffer.get() + offset) = FromColour(colour);
}

void CTavixImage24::SetPixel(int x, int y, unsigned char red, unsigned char green,
                             unsigned char blue) {
    SetPixel(x, y, RGB(red, green, blue));
}

void CTavixImage24::Fill(unsigned long colour) {
    if (m_imageLen > 0)
        ForEachPixel(m_buffer.get(), m_width, m_height,
                     [value = FromColour(colour)](Bgr &pixel) { pixel = value; });
}

void CTavixImage24::FillTo(unsigned long from, unsigned long to) {
    if (m_imageLen > 0)
        ForEachPixel(m_buffer.get(), m_width, m_height,
                     [old = FromColour(from), value = FromColour(to)](Bgr &pixel) {
                         if (pixel == old)
                             pixel = value;
                     });
}
