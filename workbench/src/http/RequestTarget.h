#pragma once

#include <map>
#include <optional>
#include <string>

namespace workbench {

/// The target of a request, "/path?name=value", in its parts.
struct RequestTarget
{
    std::string path;                         ///< Not decoded.
    std::map<std::string, std::string> query; ///< Decoded.
};

/// Returns the parts of `target`; nothing if its query is malformed, states a name twice or
/// contains a NUL.
[[nodiscard]] std::optional<RequestTarget> parsedTarget(const std::string& target);

/// Returns the path of `target`.
std::string pathOf(const std::string& target);

} // namespace workbench
