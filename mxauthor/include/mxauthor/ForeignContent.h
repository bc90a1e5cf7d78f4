#pragma once

#include <string>

namespace mxauthor {

/// Returns what `content` is when its first bytes show a widespread form that is neither an mx file
/// nor a text form: "a PNG picture", "gzip data"; empty when they show none.
std::string foreignContent(const std::string& content);

} // namespace mxauthor
