/// The memory of point lists: blocks of points, of which many may lie in one piece of memory.
///
/// Blob analysis makes lists by the hundred thousand, most of them of a few points. A block
/// therefore does not own its memory but a share in a piece that is freed with the last of them; it
/// is written where it is to stay. A block that grows moves to a piece of its own. One point needs
/// no piece: it is held where the others hold their share.
#pragma once

#include "TAVIX20/platform/export.h"
#include "TAVIX20/platform/geometry.h"

#include <cstddef>
#include <utility>

namespace TavixArray::detail {

/// Memory for points, which follow. Blocks in it may belong to several threads.
struct PointPiece {
    std::size_t owners; ///< Changed atomically.
    std::size_t capacity;

    tagPOINT *Points() { return reinterpret_cast<tagPOINT *>(this + 1); }
};

/// Points with the interface of a vector, as far as arrays use it. Functions that need memory throw
/// std::bad_alloc and change nothing then.
class TAVIX_API PointBlock {
public:
    PointBlock() : m_piece(nullptr) {}
    /// Points of value 0.
    explicit PointBlock(std::size_t size) : PointBlock() { resize(size); }
    PointBlock(const tagPOINT *first, const tagPOINT *last) : PointBlock() { assign(first, last); }
    explicit PointBlock(const tagPOINT &point) : m_points(&m_one), m_size(1), m_one(point) {}
    /// Takes over one share in the piece.
    PointBlock(PointPiece *piece, tagPOINT *points, std::size_t size)
        : m_points(points), m_size(size), m_piece(piece) {}
    PointBlock(PointBlock &&other) noexcept { TakeOver(other); }
    PointBlock &operator=(PointBlock &&other) noexcept {
        if (this != &other) {
            Release();
            TakeOver(other);
        }
        return *this;
    }
    ~PointBlock() { Release(); }

    void swap(PointBlock &other) noexcept { std::swap(*this, other); }
    tagPOINT *data() { return m_points; }
    const tagPOINT *data() const { return m_points; }
    std::size_t size() const { return m_size; }
    tagPOINT &operator[](std::size_t i) { return m_points[i]; }
    const tagPOINT &operator[](std::size_t i) const { return m_points[i]; }
    /// New points are 0.
    void resize(std::size_t size);
    void assign(const tagPOINT *first, const tagPOINT *last);
    void push_back(const tagPOINT &point);
    void shrink_to_fit();

private:
    bool IsInPiece() const { return m_points != nullptr && m_points != &m_one; }
    std::size_t Capacity() const;
    void MoveTo(std::size_t capacity);
    void Free();
    void Release() {
        if (IsInPiece())
            Free();
    }
    void TakeOver(PointBlock &other) {
        m_size = std::exchange(other.m_size, 0);
        const bool isOne = other.m_points == &other.m_one;
        m_points = isOne ? &m_one : other.m_points;
        if (isOne)
            m_one = other.m_one;
        else
            m_piece = other.m_piece;
        other.m_points = nullptr;
    }

    tagPOINT *m_points = nullptr;
    std::size_t m_size = 0;
    union {
        PointPiece *m_piece; ///< Of points elsewhere.
        tagPOINT m_one;
    };
};

/// Points that are written one after another and become blocks where they are.
class TAVIX_API PointPool {
public:
    PointPool() = default;
    PointPool(const PointPool &) = delete;
    PointPool &operator=(const PointPool &) = delete;
    ~PointPool() { Release(); }

    /// Where the next block begins, and for how many points there is room.
    tagPOINT *Next() { return m_piece ? m_piece->Points() + m_used : nullptr; }
    const tagPOINT *Next() const { return m_piece ? m_piece->Points() + m_used : nullptr; }
    std::size_t Room() const { return m_piece ? m_piece->capacity - m_used : 0; }
    /// Makes room for size points, more than there is room for, and keeps the first ones written. A
    /// block will have at most so many. Throws std::bad_alloc.
    void MakeRoom(std::size_t size, std::size_t written, std::size_t most);
    /// Makes a block of the first count points.
    PointBlock Take(std::size_t count) {
        return count == 1 ? PointBlock(*Next()) : TakeMany(count);
    }
    /// Gives back memory that is for a large block only.
    void Trim();

private:
    PointBlock TakeMany(std::size_t count);
    void Release();

    PointPiece *m_piece = nullptr;
    std::size_t m_used = 0;
    std::size_t m_blocks = 0; ///< In the piece.
};

} // namespace TavixArray::detail
