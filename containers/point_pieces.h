/// Where the pieces of memory for points come from, and where they go.
#pragma once

#include "TAVIX20/containers/point_block.h"

namespace TavixArray::detail {

/// The size of a piece for many blocks, in points: so much may stay in use for the sake of one of
/// them.
inline constexpr std::size_t POINTS_OF_PIECE = 8192;

/// Makes a piece for so many points, which are not set. This and the next ones throw
/// std::bad_alloc, and leave the old piece as it was then.
PointPiece *NewPiece(std::size_t capacity, std::size_t owners);
/// Makes a piece for so many points or more, with the first ones of the old one, which is gone.
PointPiece *GrownPiece(PointPiece *old, std::size_t capacity, std::size_t written);
/// The piece with room for no more than its first points, perhaps elsewhere.
PointPiece *TrimmedPiece(PointPiece *old, std::size_t capacity);
/// Takes so many owners away; without any, the piece is gone.
void GiveBack(PointPiece *piece, std::size_t owners);

} // namespace TavixArray::detail
