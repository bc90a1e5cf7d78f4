#pragma once

#include "text/YamlEdit.h"
#include "text/YamlExtent.h"

namespace mxstation {

/// Removes the part `index` of `parts`, those of brackets, and a comma. Comments between the parts
/// stay.
void removePart(YamlEdit& edit, const std::string& source, const std::vector<YamlExtent>& parts,
                std::size_t index);

/// Removes the member `index` of `map`, which has others too or is in brackets. Comments stay.
/// Returns whether that is possible.
[[nodiscard]] bool removeMember(YamlEdit& edit, const std::string& source, const YamlNode& map,
                                std::size_t index);

} // namespace mxstation
