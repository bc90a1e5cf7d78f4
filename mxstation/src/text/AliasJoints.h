#pragma once

#include "text/YamlEdit.h"
#include "text/YamlExtent.h"

#include <string>
#include <vector>

namespace mxstation {

/// Returns an error at each alias by which `node`, which is in `own`, needs the text `other` or is
/// needed by it. `why` says what a change would do to the value that the alias repeats.
std::vector<YamlError> aliasesBetween(const YamlNode& node, const YamlExtent& own,
                                      const YamlExtent& other, const std::string& why);

} // namespace mxstation
