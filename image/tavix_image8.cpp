#include "TAVIX20/image/tavix_image8.h"

#include "TAVIX20/image/ipl_bridge.h"
#include "TAVIX20/image/layout.h"

#include <algorithm>
#include <cstring>

CTavixImage8::CTavixImage8(int width, int height) : CTavixImage8() {
    AllocateZeroed(width, height);
}

CTavixImage8::CTavixImage8(int width, int height, const unsigned char *bytes) : CTavixImage8() {
    AllocateCopy(width, height, bytes);
}

CTavixImage8::CTavixImage8(const CTavixImage8 &source) : CTavixImage8() {
    AllocateCopy(source.m_width, source.m_height, BytesFor(source));
}

CTavixImage8::CTavixImage8(void *image) : CTavixImage8() {
    CTavixImage8::SetImagePtr(image);
}

CTavixImage8::~CTavixImage8() = default;

unsigned char *CTavixImage8::GetImagePtr(int x1, int y1, int x2, int y2) const {
    return CopyRect(x1, y1, x2, y2, 0);
}

unsigned char *CTavixImage8::GetImagePtr(int x1, int y1, int x2, int y2, unsigned char fill) const {
    return CopyRect(x1, y1, x2, y2, fill);
}

void CTavixImage8::SetImagePtr(void *image) {
    tavix::TakeIplPixels(image, 1, *this);
}

void CTavixImage8::SetImagePtr(int width, int height, const unsigned char *bytes) {
    AllocateCopy(width, height, bytes);
}

int CTavixImage8::Create(int width, int height) {
    return AllocateZeroed(width, height) ? 1 : 0;
}

CTavixImage *CTavixImage8::Clone() const {
    auto clone = std::make_unique<CTavixImage8>();
    *clone = *this;
    return clone.release();
}

CTavixImage8 &CTavixImage8::operator=(const CTavixImage8 &source) {
    SetImagePtr(source.m_width, source.m_height, BytesFor(source));
    return *this;
}

unsigned char CTavixImage8::GetPixel(int x, int y) const {
    const std::int64_t offset = Stride() * y + x;
    return offset < 0 || offset >= m_imageLen ? 0 : m_buffer[static_cast<std::size_t>(offset)];
}

void CTavixImage8::SetPixel(int x, int y, unsigned char value) {
    const std::int64_t offset = Stride() * y + x;
    if (offset >= 0 && offset < m_imageLen)
        m_buffer[static_cast<std::size_t>(offset)] = value;
}

void CTavixImage8::Fill(unsigned char value) {
    if (m_buffer)
        std::memset(m_buffer.get(), value, static_cast<std::size_t>(m_imageLen));
}

// A row of the source is one run of target bytes, cut to the row's end on the right and to the
// buffer at both ends. Pasting an image into itself reads what was pasted before, pixel by pixel.
void CTavixImage8::Copy(int x, int y, const CTavixImage8 *source) {
    if (!source || !m_buffer || !source->m_buffer)
        return;
    const std::int64_t columns = std::min<std::int64_t>(source->m_width, std::int64_t{m_width} - x);
    const std::int64_t rows = std::min<std::int64_t>(source->m_height, std::int64_t{m_height} - y);
    if (source->m_imageLen == 0)
        return;
    for (std::int64_t row = 0; row < rows; ++row) {
        const std::int64_t target = Stride() * (row + y) + x;
        const std::int64_t first = std::max<std::int64_t>(0, -target);
        const std::int64_t end = std::min<std::int64_t>(columns, m_imageLen - target);
        if (first >= end)
            continue;
        const unsigned char *from = source->m_buffer.get() + source->Stride() * row;
        unsigned char *to = m_buffer.get() + target;
        if (source != this)
            std::memcpy(to + first, from + first, static_cast<std::size_t>(end - first));
        else
            for (std::int64_t i = first; i < end; ++i)
                to[i] = from[i];
    }
}
