#pragma once

#include <optional>
#include <string>

namespace mxauthor {

/// Names the file type that the first bytes of `content` show, if it is a common one other than an
/// mx file or text form: "a PNG picture", "gzip data".
[[nodiscard]] std::optional<std::string> foreignContent(const std::string& content);

} // namespace mxauthor
