#pragma once

#include <devices/database/ModuleQuery.h>

#include <string>

namespace mxtool {

/// Reads a condition such as "in_bytes>4" or "label~DI". Throws a `CLI::ValidationError` that
/// states what is accepted.
devices::database::ModuleCondition moduleCondition(const std::string& text);

/// Splits `text` at blanks.
std::vector<std::string> searchWords(const std::string& text);

/// Returns the help text on the fields and operators of a condition.
std::string conditionHelp();

} // namespace mxtool
