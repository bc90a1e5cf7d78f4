#pragma once

#include "SqlConnection.h"

namespace devices::database {

/// Fills the search tables, which are empty, from those of the records and of the catalogue, and
/// writes the index. Throws a `SqlFailure`.
void fillSearchTables(SqlConnection& connection);

} // namespace devices::database
