#pragma once

#include <optional>
#include <string>

namespace mxauthor {

/// Returns what `content` is when its first bytes show a widespread form that is neither an mx file
/// nor a text form: "a PNG picture", "gzip data"; nothing when they show none.
[[nodiscard]] std::optional<std::string> foreignContent(const std::string& content);

} // namespace mxauthor
