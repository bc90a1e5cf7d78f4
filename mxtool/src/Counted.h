#pragma once

#include <mxauthor/Counted.h>

namespace mxtool {

using mxauthor::counted;

} // namespace mxtool
