#pragma once

#include <mxstation/Plan.h>

#include <string>

namespace mxstation {

/// Returns addresses as tables show them: "4-7", "4", empty for no bytes.
std::string addressesText(const ImageBytes& bytes);

/// Returns the bytes of an image that `gap` touches.
ImageBytes touchedBytes(const Gap& gap);

} // namespace mxstation
