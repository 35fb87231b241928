#include "TAVIX20/containers/point_pieces.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>
#include <utility>

namespace TavixArray::detail {

namespace {

/// Pieces that were given back. The C library would give their memory back to the system, which
/// takes longer to provide it anew, page by page, than the analysis of the next picture takes.
/// Nobody waits for another thread, which in a forked child might not be there: memory is then made
/// and freed as usual.
class SparePieces {
public:
    /// One for at least so many points, and not for many times as many; nothing without.
    PointPiece *Take(std::size_t capacity) {
        const std::unique_lock lock(m_mutex, std::try_to_lock);
        if (!lock)
            return nullptr;
        if (capacity == POINTS_OF_PIECE)
            return m_commonCount > 0 ? m_common[--m_commonCount] : nullptr;
        for (PointPiece *&large : m_large)
            if (large && large->capacity >= capacity && large->capacity / 8 <= capacity)
                return std::exchange(large, nullptr);
        return nullptr;
    }
    /// Keeps the piece, or frees it or a smaller one when there are enough.
    void Keep(PointPiece *piece) {
        if (const std::unique_lock lock(m_mutex, std::try_to_lock); lock)
            Swap(piece);
        std::free(piece);
    }

private:
    static constexpr std::size_t MOST_OF_LARGE = std::size_t{1} << 21; ///< 16 MiB.

    /// Puts the piece in its place; it is then what is to be freed, if anything.
    void Swap(PointPiece *&piece) {
        if (piece->capacity == POINTS_OF_PIECE && m_commonCount < m_common.size())
            m_common[m_commonCount++] = std::exchange(piece, nullptr);
        else if (piece->capacity > POINTS_OF_PIECE && piece->capacity <= MOST_OF_LARGE)
            for (PointPiece *&large : m_large)
                if (piece && (!large || large->capacity < piece->capacity))
                    std::swap(large, piece);
    }

    std::mutex m_mutex;
    std::array<PointPiece *, 512> m_common{}; ///< 32 MiB.
    std::size_t m_commonCount = 0;
    std::array<PointPiece *, 2> m_large{};
};

/// Never destroyed: lists may last as long as the program.
constinit SparePieces sparePieces;

PointPiece *Reallocate(PointPiece *old, std::size_t capacity) {
    if (capacity > (PTRDIFF_MAX - sizeof(PointPiece)) / sizeof(tagPOINT))
        throw std::bad_alloc();
    auto *const piece = static_cast<PointPiece *>(
        std::realloc(old, sizeof(PointPiece) + capacity * sizeof(tagPOINT)));
    if (!piece)
        throw std::bad_alloc();
    piece->capacity = capacity;
    return piece;
}

} // namespace

PointPiece *NewPiece(std::size_t capacity, std::size_t owners) {
    PointPiece *piece = capacity == POINTS_OF_PIECE ? sparePieces.Take(capacity) : nullptr;
    if (!piece)
        piece = Reallocate(nullptr, capacity);
    piece->owners = owners;
    return piece;
}

PointPiece *GrownPiece(PointPiece *old, std::size_t capacity, std::size_t written) {
    PointPiece *const piece = sparePieces.Take(capacity);
    if (!piece)
        return Reallocate(old, capacity);
    piece->owners = old->owners;
    std::copy_n(old->Points(), written, piece->Points());
    sparePieces.Keep(old);
    return piece;
}

PointPiece *TrimmedPiece(PointPiece *old, std::size_t capacity) {
    return Reallocate(old, capacity);
}

void GiveBack(PointPiece *piece, std::size_t owners) {
    const std::atomic_ref all(piece->owners);
    // The last owner is alone with it.
    if (all.load(std::memory_order_acquire) == owners ||
        all.fetch_sub(owners, std::memory_order_acq_rel) == owners)
        sparePieces.Keep(piece);
}

} // namespace TavixArray::detail
