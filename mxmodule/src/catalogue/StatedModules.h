#pragma once

#include <mxmodule/Population.h>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace mxmodule {

/// Returns the module identifiers in the files of `directory`, as in records, including those of
/// files that cannot be translated. Returns nothing if a file has no identifier or an entry was
/// left out.
[[nodiscard]] std::optional<std::set<std::string>> statedModules(const MxDirectory& directory);

/// Returns the names of the files of `directory` with each of the identifiers `modules`, sorted.
std::map<std::string, std::vector<std::string>> filesStating(const std::set<std::string>& modules,
                                                             const MxDirectory& directory);

} // namespace mxmodule
