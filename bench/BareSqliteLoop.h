#pragma once

#include "GeneratedModules.h"

namespace bench {

/// Inserts `modules` into the empty device database at `path` as fast as SQLite alone does: one
/// prepared statement per table, one transaction, the same rows and the same settings.
void bareSqliteLoop(const std::string& path, const std::vector<GeneratedModules::Module>& modules);

} // namespace bench
