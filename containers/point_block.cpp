#include "TAVIX20/containers/point_block.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

namespace TavixArray::detail {

namespace {

/// Of a piece for many blocks: so much may stay in use for the sake of one of them.
constexpr std::size_t POINTS_OF_PIECE = 8192;
/// The shares that a pool holds in its piece. It gives them away without counting them one by one,
/// which would be an atomic operation each, and settles the rest when it leaves the piece.
constexpr std::size_t SHARES_OF_POOL = std::numeric_limits<std::size_t>::max() / 2;

PointPiece *Allocate(PointPiece *old, std::size_t capacity, std::size_t owners) {
    if (capacity > (PTRDIFF_MAX - sizeof(PointPiece)) / sizeof(tagPOINT))
        throw std::bad_alloc();
    auto *const piece = static_cast<PointPiece *>(
        std::realloc(old, sizeof(PointPiece) + capacity * sizeof(tagPOINT)));
    if (!piece)
        throw std::bad_alloc();
    piece->owners = owners;
    piece->capacity = capacity;
    return piece;
}

void GiveBack(PointPiece *piece, std::size_t shares) {
    const std::atomic_ref owners(piece->owners);
    // The last owner is alone with it.
    if (owners.load(std::memory_order_acquire) == shares ||
        owners.fetch_sub(shares, std::memory_order_acq_rel) == shares)
        std::free(piece);
}

} // namespace

std::size_t PointBlock::Capacity() const {
    const bool isAlone = IsInPiece() && m_points == m_piece->Points() &&
                         std::atomic_ref(m_piece->owners).load(std::memory_order_acquire) == 1;
    return isAlone ? m_piece->capacity : m_size;
}

void PointBlock::MoveTo(std::size_t capacity) {
    PointPiece *const piece = Allocate(nullptr, capacity, 1);
    std::copy_n(m_points, std::min(m_size, capacity), piece->Points());
    Release();
    m_piece = piece;
    m_points = piece->Points();
}

void PointBlock::Free() {
    GiveBack(m_piece, 1);
}

void PointBlock::resize(std::size_t size) {
    if (size > Capacity())
        MoveTo(std::max(size, 2 * m_size));
    if (size > m_size)
        std::fill(m_points + m_size, m_points + size, tagPOINT{});
    m_size = size;
}

void PointBlock::assign(const tagPOINT *first, const tagPOINT *last) {
    PointBlock block;
    const auto size = static_cast<std::size_t>(last - first);
    if (size > 0)
        block.MoveTo(size);
    std::copy(first, last, block.m_points);
    block.m_size = size;
    swap(block);
}

void PointBlock::push_back(const tagPOINT &point) {
    const tagPOINT copy = point; // It may lie in this block.
    resize(m_size + 1);
    m_points[m_size - 1] = copy;
}

void PointBlock::shrink_to_fit() {
    if (m_size == 0)
        *this = PointBlock();
    else if (m_size < Capacity())
        MoveTo(m_size);
}

void PointPool::MakeRoom(std::size_t size, std::size_t written, std::size_t most) {
    if (m_piece && m_blocks == 0) {
        m_piece = Allocate(m_piece, std::clamp(2 * m_piece->capacity, size, most), SHARES_OF_POOL);
        return;
    }
    PointPiece *const piece = Allocate(nullptr, std::max(size, POINTS_OF_PIECE), SHARES_OF_POOL);
    std::copy_n(Next(), written, piece->Points());
    Release();
    m_piece = piece;
}

PointBlock PointPool::TakeMany(std::size_t count) {
    if (m_blocks == 0 && count > POINTS_OF_PIECE / 2) {
        PointPiece *const piece = Allocate(m_piece, count, 1);
        m_piece = nullptr;
        return {piece, piece->Points(), count};
    }
    tagPOINT *const points = Next();
    m_used += count;
    ++m_blocks;
    return {m_piece, points, count};
}

void PointPool::Trim() {
    if (m_piece && m_blocks == 0 && m_piece->capacity > POINTS_OF_PIECE)
        Release();
}

void PointPool::Release() {
    if (m_piece)
        GiveBack(m_piece, SHARES_OF_POOL - m_blocks);
    m_piece = nullptr;
    m_used = 0;
    m_blocks = 0;
}

} // namespace TavixArray::detail
