#pragma once

#include "ProcessImage.h"

namespace mxtool {

/// Returns the picture as lines of 80 columns, UTF-8: a line per byte, more where channels overlap.
/// `coloured`: with the colour codes of a terminal.
std::string processImageMap(const ProcessImage& image, bool coloured);

} // namespace mxtool
