#pragma once

#include "http/Response.h"

#include <string>

namespace workbench {

/// Returns the response to a request that is not carried out: one error with this text and hint,
/// both UTF-8. They contain nothing of the request, whose bytes may be any.
Response refusal(unsigned status, const std::string& text, const std::string& hint);

} // namespace workbench
