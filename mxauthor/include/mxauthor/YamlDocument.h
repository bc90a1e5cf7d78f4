#pragma once

#include "mxauthor/TextForm.h"

#include <optional>
#include <string>

namespace mxauthor {

/// Returns the first mistake in `text`, which is UTF-8; nothing if it is one YAML document, or
/// empty, of at most 4 MiB and 250000 values, keys, lists and maps together, since reading it takes
/// many times its size. `oneDocument` ends the messages about a second document and about these
/// limits: "a text describes one module".
[[nodiscard]] std::optional<SourceError> findYamlMistake(const std::string& text,
                                                         const std::string& oneDocument);

} // namespace mxauthor
