#pragma once

#include <mxstation/Plan.h>

#include <cstddef>
#include <map>
#include <string>

namespace mxstation {

/// The bytes that an entry keeps for a module, in both images.
struct ReservedPlace
{
    std::string name;  ///< May be empty.
    ImageBytes input;  ///< In the input image.
    ImageBytes output; ///< In the output image.
};

/// Returns the reserved places of `plan` by the index of their entry.
std::map<std::size_t, ReservedPlace> reservedPlaces(const Plan& plan);

} // namespace mxstation
