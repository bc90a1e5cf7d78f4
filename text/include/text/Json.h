// The type of JSON values, declared: sources that use one include JsonText.h.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace text {

/// JSON whose keys keep the order of insertion.
using Json = nlohmann::ordered_json;

} // namespace text
