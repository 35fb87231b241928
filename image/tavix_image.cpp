#include "TAVIX20/image/tavix_image.h"

#include "TAVIX20/image/layout.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

CTavixImage::~CTavixImage() = default;

int CTavixImage::GetWidth() const {
    return m_width;
}

int CTavixImage::GetHeight() const {
    return m_height;
}

int CTavixImage::GetBitCount() const {
    return m_bitCount;
}

int CTavixImage::GetImageLen() const {
    return m_imageLen;
}

unsigned char *CTavixImage::GetImagePtr() {
    return m_buffer.get();
}

void CTavixImage::Release() {
    GiveUpBuffer();
    m_bitCount = 0;
}

int CTavixImage::IsEmpty() const {
    return m_buffer ? 0 : 1;
}

std::int64_t CTavixImage::Stride() const {
    return tavix::RowStride(m_bitCount, m_width);
}

void CTavixImage::TakeBuffer(tavix::BufferPtr buffer, int width, int height, int length) {
    m_buffer = std::move(buffer);
    m_blobScratch.reset();
    m_width = width;
    m_height = height;
    m_imageLen = length;
}

void CTavixImage::TakeBufferOf(CTavixImage &source) {
    TakeBuffer(std::move(source.m_buffer), source.m_width, source.m_height, source.m_imageLen);
    source.GiveUpBuffer();
}

void CTavixImage::GiveUpBuffer() {
    TakeBuffer(nullptr, 0, 0, 0);
}

tavix::BufferPtr CTavixImage::NewBuffer(std::size_t length) {
    return tavix::BufferPtr(static_cast<unsigned char *>(
        ::operator new[](length, tavix::BufferDeleter::BUFFER_ALIGNMENT, std::nothrow)));
}

bool CTavixImage::Allocate(int width, int height) {
    GiveUpBuffer();
    const auto length = tavix::ImageLength(m_bitCount, width, height);
    if (!length)
        return false;
    tavix::BufferPtr buffer = NewBuffer(static_cast<std::size_t>(*length));
    if (!buffer)
        return false;
    TakeBuffer(std::move(buffer), width, height, *length);
    return true;
}

bool CTavixImage::AllocateZeroed(int width, int height) {
    if (!Allocate(width, height))
        return false;
    std::memset(m_buffer.get(), 0, static_cast<std::size_t>(m_imageLen));
    return true;
}

const unsigned char *CTavixImage::BytesFor(const CTavixImage &source) const {
    const auto needed = tavix::ImageLength(m_bitCount, source.m_width, source.m_height);
    return needed && *needed <= source.m_imageLen ? source.m_buffer.get() : nullptr;
}

bool CTavixImage::AllocateCopy(int width, int height, const unsigned char *bytes) {
    // The old buffer lives until the copy is done: the bytes may lie in it.
    const tavix::BufferPtr old = std::move(m_buffer);
    if (!Allocate(width, height))
        return false;
    if (m_imageLen == 0)
        return true;
    if (!bytes) {
        GiveUpBuffer();
        return false;
    }
    std::memcpy(m_buffer.get(), bytes, static_cast<std::size_t>(m_imageLen));
    return true;
}
