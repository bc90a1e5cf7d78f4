#pragma once

#include "text/ChangedValues.h"
#include "text/YamlEdit.h"

#include <string>
#include <vector>

namespace mxstation {

/// Returns a value as YAML; in double quotes if `isQuoted`, as in JSON.
std::string valueText(const std::string& value, bool isQuoted);

/// Returns the member "NAME: VALUE".
YamlMember memberOf(const ChangedValue& value, bool isQuoted);

/// Returns the members of `values`: those of a channel, which follow each other, are one member.
std::vector<YamlMember> membersOf(const std::vector<ChangedValue>& values, bool isQuoted);

/// Returns the member "parameters" with `members`, at least one.
YamlMember parametersMember(const std::vector<YamlMember>& members, bool isQuoted);

} // namespace mxstation
