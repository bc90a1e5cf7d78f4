#pragma once

#include <devices/database/DeviceDatabase.h>

#include <string>
#include <vector>

namespace mxtool {

/// Returns the name of the file that the mx file of a module is written to: "MX", the module
/// identifier and ".bin", so that it is taken when its directory is populated from. A family other
/// than "kv38" stands behind the identifier; what has no place in a file name is written as %XX.
std::string exportName(const devices::database::ModuleSummary& module);

/// Writes the mx files of `modules` into `directory`, which is made when missing, byte for byte as
/// they were on disk. Returns how many were written; a module without an mx file is left out.
/// Throws a `Failure`.
std::size_t exportModules(const std::vector<devices::database::ModuleSummary>& modules,
                          devices::database::DeviceDatabase& database,
                          const std::string& directory);

/// Reports those of `modules` that were stored without their mx file. Returns how many they are.
std::size_t reportWithoutFile(const std::vector<devices::database::ModuleSummary>& modules);

/// Copies `modules`, each with what is inside it, from `source` to `target` in one transaction.
/// Returns how many were copied.
std::size_t copyModules(const std::vector<devices::database::ModuleSummary>& modules,
                        devices::database::DeviceDatabase& source,
                        devices::database::DeviceDatabase& target);

} // namespace mxtool
