/// Files for windows, which show more kinds than image objects hold.
#pragma once

#include "TAVIX20/image/tavix_image.h"

#include <memory>

namespace tavix {

/// As CTavixImage::LoadImageA, but a file with other than one or three channels is brought to
/// three, without its alpha. Null when it cannot be read.
std::unique_ptr<CTavixImage> LoadFileToShow(const char *path);

} // namespace tavix
