#pragma once

#include "SqlConnection.h"

#include "devices/database/ModuleQuery.h"

namespace devices::database {

/// Returns the modules that match `query`. Each field selects fixed SQL and each value is bound, so
/// that no text of the query is executed as SQL. Throws `SqlFailure`.
std::vector<ModuleSummary> searchModules(SqlConnection& connection, const ModuleQuery& query);

} // namespace devices::database
