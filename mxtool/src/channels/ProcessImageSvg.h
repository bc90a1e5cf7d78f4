#pragma once

#include "ProcessImage.h"

namespace mxtool {

/// Returns the picture as a self-contained SVG document, always the same for the same image.
std::string processImageSvg(const ProcessImage& image);

} // namespace mxtool
