#pragma once

#include <mxauthor/NearestWords.h>

namespace mxtool {

using mxauthor::acceptedWords;
using mxauthor::didYouMean;
using mxauthor::nearestWords;

} // namespace mxtool
