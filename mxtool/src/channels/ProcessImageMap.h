#pragma once

#include "ProcessImage.h"

namespace mxtool {

/// Returns the picture as text of 80 columns, UTF-8: a line per byte, more where channels overlap.
/// `coloured`: with terminal colour codes.
std::string processImageMap(const ProcessImage& image, bool coloured);

} // namespace mxtool
