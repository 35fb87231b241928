/// The area of similar pixels around a pixel.
#pragma once

#include "TAVIX20/platform/run_region.h"

class CTavixImage;

namespace tavix {

/// The pixels that are 4-connected to the seed through pixels whose level, or each of whose
/// channels, differs from the seed's by at most percent of the grey range of 255. Below 0 percent
/// as 0. Empty for a seed outside the image and when memory runs out.
TAVIX_API RunRegion SimilarArea(const CTavixImage &image, const POINT &seed, int percent);

} // namespace tavix
