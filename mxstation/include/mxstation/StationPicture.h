#pragma once

#include "mxstation/Plan.h"

#include <string>

namespace mxstation {

/// Returns a picture of both process images for people, a self-contained SVG document: which module
/// has which bytes, which channel which bits, and every gap with its reason. Always the same for
/// the same plan; it contains the version and the SHA-256 of the station and of each mx file.
///
/// Channels without bits are not drawn. Throws a `mxmodule::Failure` with the errors of a plan that
/// is not `ok`.
MXSTATION_API std::string stationSvg(const Plan& plan);

} // namespace mxstation
