#pragma once

#include "bus/RegisterRange.h"

#include <vector>

namespace mxonline {

/// Whether a request may go over registers that are not asked for.
enum class Gaps
{
    Included, ///< Where that saves a request.
    LeftOut
};

/// Returns the fewest requests of at most `most` registers that contain `items`, ordered by
/// address.
///
/// An item, such as a value of several registers, is never divided, unless it alone has more than
/// `most` registers: its parts may belong to different times. `items` are ordered by address; they
/// may overlap.
std::vector<RegisterRange> requestsFor(const std::vector<RegisterRange>& items, std::uint32_t most,
                                       Gaps gaps);

} // namespace mxonline
