#pragma once

#include "GeneratedModules.h"

namespace bench {

/// Inserts `modules` into the empty device database at `path` as fast as SQLite alone does: one
/// prepared statement per table, one transaction, the same settings, and the same rows except those
/// of the search.
void bareSqliteLoop(const std::string& path, const std::vector<GeneratedModules::Module>& modules);

/// The same for the records alone; reads the mx files of `modules` from `files`.
void bareSqliteRecordLoop(const std::string& path, const std::vector<std::string>& files,
                          const std::vector<GeneratedModules::Module>& modules);

} // namespace bench
