#pragma once

#include <devices/database/DeviceDatabase.h>

#include <string>
#include <vector>

namespace mxtool {

/// Returns the file name for an exported module: "MX", the module identifier and ".bin", so that
/// populating from its directory finds it. A family other than "kv38" follows the identifier;
/// characters that are invalid in file names become %XX.
std::string exportName(const devices::database::ModuleSummary& module);

/// Writes the mx files of `modules` into `directory`, byte for byte as they were read, and creates
/// the directory if it is missing. Skips modules without an mx file. Returns the number of files
/// written. Throws a `Failure`.
std::size_t exportModules(const std::vector<devices::database::ModuleSummary>& modules,
                          devices::database::DeviceDatabase& database,
                          const std::string& directory);

/// Reports the modules that are stored without an mx file. Returns their number.
std::size_t reportWithoutFile(const std::vector<devices::database::ModuleSummary>& modules);

/// Copies `modules` with their content from `source` to `target` in one transaction. Returns the
/// number of modules copied.
std::size_t copyModules(const std::vector<devices::database::ModuleSummary>& modules,
                        devices::database::DeviceDatabase& source,
                        devices::database::DeviceDatabase& target);

} // namespace mxtool
