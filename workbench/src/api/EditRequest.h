#pragma once

#include "api/RequestBody.h"

#include <mxstation/StationEdit.h>

namespace workbench {

/// Returns the edit that `body` states. Throws a `CallFailure` for an unknown kind and for a
/// missing member.
mxstation::StationEdit editIn(const RequestBody& body);

} // namespace workbench
