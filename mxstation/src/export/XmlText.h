#pragma once

#include <string>

namespace mxstation {

/// Returns `bytes` as text of an XML element or of an attribute in double quotes, in one line:
/// characters of markup as entities, control characters and direction marks made visible,
/// characters that XML does not allow replaced.
std::string xmlText(const std::string& bytes);

/// Returns `bytes` as an XML comment of one line.
std::string xmlComment(const std::string& bytes);

} // namespace mxstation
