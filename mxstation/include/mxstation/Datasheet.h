#pragma once

#include "mxstation/Plan.h"

#include <string>

namespace mxstation {

/// Returns the data sheet of a station: a page (HTML) for people, on a screen and on paper, which
/// contains all that it shows and no script. It has the row with its product images, both process
/// images byte by byte, all channels, the registers of the coupler if the station states them, and
/// a chapter for each module and each type of module. Always the same bytes for the same plan; no
/// text of the station or of an mx file is markup.
///
/// Throws a `mxmodule::Failure` with the errors of a plan that is not `ok`.
MXSTATION_API std::string datasheet(const Plan& plan);

} // namespace mxstation
