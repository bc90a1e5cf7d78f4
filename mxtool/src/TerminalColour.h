#pragma once

namespace mxtool {

/// Returns whether output to `descriptor` may be coloured: it is a terminal, and NO_COLOR is not
/// set.
bool takesColour(int descriptor);

} // namespace mxtool
