#include "TAVIX20/containers/point_block.h"

#include "TAVIX20/containers/point_pieces.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <limits>
#include <new>

namespace TavixArray::detail {

namespace {

/// How much larger a piece for one large block becomes: what is not written takes no memory yet.
constexpr std::size_t GROWTH = 8;
/// The shares that a pool holds in its piece. It gives them away without counting them one by one,
/// which would be an atomic operation each, and settles the rest when it leaves the piece.
constexpr std::size_t SHARES_OF_POOL = std::numeric_limits<std::size_t>::max() / 2;

} // namespace

std::size_t PointBlock::Capacity() const {
    const bool isAlone = IsInPiece() && m_points == m_piece->Points() &&
                         std::atomic_ref(m_piece->owners).load(std::memory_order_acquire) == 1;
    return isAlone ? m_piece->capacity : m_size;
}

void PointBlock::MoveTo(std::size_t capacity) {
    PointPiece *const piece = NewPiece(capacity, 1);
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
        m_piece = GrownPiece(m_piece, std::clamp(GROWTH * m_piece->capacity, size, most), written);
        return;
    }
    PointPiece *const piece = NewPiece(std::max(size, POINTS_OF_PIECE), SHARES_OF_POOL);
    std::copy_n(Next(), written, piece->Points());
    Release();
    m_piece = piece;
}

PointBlock PointPool::TakeMany(std::size_t count) {
    if (m_blocks == 0 && count > POINTS_OF_PIECE / 2) {
        PointPiece *const piece = TrimmedPiece(m_piece, count);
        piece->owners = 1;
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
