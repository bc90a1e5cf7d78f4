#pragma once

#include "BuildContext.h"

namespace mxauthor {

/// Returns the bytes after the last record of a group of records, null for a group of another type.
const Bytes* unreadBytes(const GroupContent& content);

/// Sets them from a mapping of groups and bytes.
void buildUnreadBytes(const YAML::Node& node, BuildContext& context);

/// Returns the words of the groups that may have such bytes.
const std::vector<std::string>& wordsWithUnreadBytes();

} // namespace mxauthor
