#pragma once

#include "TranslatedModule.h"

#include <mxmodule/Module.h>

#include <string>
#include <vector>

namespace mxmodule {

/// Reads the parameter image of `module` in `content`, the file called `name`, as
/// `Module::imageOfFile` states.
ReadImage imageOfFile(const std::vector<char>& content, const std::string& name, Fieldbus fieldbus,
                      const TranslatedModule& module, const std::string& place);

/// Reads the parameter image of `module` in `words`, as `Module::imageOfWords` states.
ReadImage imageOfWords(const std::string& words, Fieldbus fieldbus, const TranslatedModule& module,
                       const std::string& place);

} // namespace mxmodule
