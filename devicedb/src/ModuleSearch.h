#pragma once

#include "SqlConnection.h"
#include "SummaryRow.h"

#include "devices/database/ModuleQuery.h"

namespace devices::database {

/// Calls `take` with the modules that match `query`, in its order, until it returns false or there
/// are `PagedQuery::limit`. `version` is that of the schema: before version 4 there is no search
/// index, and the modules are in the order of their keys. Throws `SqlFailure`.
void searchModules(SqlConnection& connection, int version, const PagedQuery& query,
                   const SummaryTaker& take);

/// Returns how `searchModules` finds them.
SearchExplanation explainSearch(SqlConnection& connection, int version, const PagedQuery& query);

/// Counts the modules.
ModuleCounts countModules(SqlConnection& connection);

} // namespace devices::database
