#pragma once

#include "SqlDialect.h"

#include "devices/database/ModuleQuery.h"

#include <Poco/Data/Session.h>

namespace devices::database {

/// Returns the modules that `query` asks for. Each field stands for fixed SQL and each value is
/// bound, so that no word of the query is ever read as SQL. Throws `Poco::Exception`.
std::vector<ModuleSummary> searchModules(Poco::Data::Session& session, const SqlDialect& dialect,
                                         const ModuleQuery& query);

} // namespace devices::database
