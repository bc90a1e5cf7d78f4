#pragma once

#include "mxauthor/TextForm.h"

#include <optional>
#include <string>

namespace mxauthor {

/// Returns the first mistake in `text`, which is UTF-8; nothing if it is one YAML document, or
/// empty. `oneDocument` ends the message about a second document: "a text describes one module".
[[nodiscard]] std::optional<SourceError> findYamlMistake(const std::string& text,
                                                         const std::string& oneDocument);

} // namespace mxauthor
