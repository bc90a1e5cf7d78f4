#pragma once

#include <yaml-cpp/yaml.h>

#include <optional>
#include <string>

namespace mxauthor {

/// Returns where the second document of the YAML text `source` begins, nothing when there is at
/// most one. Throws `YAML::Exception` when it is no YAML that far.
std::optional<YAML::Mark> secondDocument(const std::string& source);

} // namespace mxauthor
