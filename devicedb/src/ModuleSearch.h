#pragma once

#include "SqlConnection.h"

#include "devices/database/ModuleQuery.h"

namespace devices::database {

/// Returns the modules that `query` asks for. Each field stands for fixed SQL and each value is
/// bound, so that no word of the query is ever read as SQL. Throws `SqlFailure`.
std::vector<ModuleSummary> searchModules(SqlConnection& connection, const ModuleQuery& query);

} // namespace devices::database
