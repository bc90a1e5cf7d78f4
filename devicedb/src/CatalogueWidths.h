#pragma once

#include "SqlConnection.h"

namespace devices::database {

/// Gives the bit fields in the catalogue the widths that the stored mx files state: schema version
/// 2 had 8 bits for each without a length. A module without its file, or whose file has another
/// number of parameters, is not changed. Whatever fails is a `SqlFailure`.
void takeWidthsFromFiles(SqlConnection& connection);

} // namespace devices::database
