/// The file of regions of interest (".roix"): a small XML document with the elements of a view.
#pragma once

#include "TAVIX20/display/roi_element_array.h"

#include <optional>
#include <vector>

namespace tavix {

/// Writes the elements as one line: declaration, Tavix_ROI, ImageSize "width,height", and for each
/// element its Method and its Points, "x,y;" each. The file is replaced as a whole; false where it
/// cannot be, and then an earlier file stays as it was.
TAVIX_API bool SaveRoiFile(const char *path, SIZE imageSize, const CRoiElementArray &elements);

/// Reads the elements of a file. The root's name is not looked at, nor is the image's size compared
/// with anything, but "ImageSize" must hold two values and "RoiElements" must be there; nothing
/// otherwise, and for a file that is no XML.
///
/// Values are the numbers at the start of their text, 0 where there is none. Trailing empty pieces
/// do not count; points that are not two values are skipped. An element has the method 1 and no
/// points until it says otherwise; several lists of points are one, the last method holds.
TAVIX_API std::optional<std::vector<_stRoiElement>> LoadRoiFile(const char *path);

} // namespace tavix
