#pragma once

#include <devices/database/ModuleQuery.h>

#include <string>

namespace mxtool {

/// Reads a condition such as "in_bytes>4" or "label~DI". Throws `CLI::ValidationError` that names
/// what is accepted.
devices::database::ModuleCondition moduleCondition(const std::string& text);

/// Returns the words of `text`, which are separated by blanks.
std::vector<std::string> searchWords(const std::string& text);

/// Returns the fields and operators of a condition, for a help text.
std::string conditionHelp();

} // namespace mxtool
