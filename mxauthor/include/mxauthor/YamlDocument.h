#pragma once

#include "mxauthor/TextForm.h"

#include <optional>
#include <string>

namespace mxauthor {

/// Returns where `text`, which is UTF-8, is not one YAML document, and what is wrong there; nothing
/// where it is one, or empty. `oneDocument` says what a text is, to whoever wrote several into one.
std::optional<SourceError> findYamlMistake(const std::string& text, const std::string& oneDocument);

} // namespace mxauthor
