#pragma once

#include "ProcessImage.h"

namespace mxtool {

/// Returns the picture as an SVG document that needs nothing else, always the same for the same
/// image.
std::string processImageSvg(const ProcessImage& image);

} // namespace mxtool
