#pragma once

#include "BuildContext.h"

namespace mxauthor {

/// Returns the groups in file order: the usual one, followed by the raw groups, or the one that
/// `node` states by the words of the groups and "raw" for the next raw one.
std::vector<std::pair<Group, YAML::Mark>> orderedGroups(const std::optional<YAML::Node>& node,
                                                        BuildContext& context);

} // namespace mxauthor
