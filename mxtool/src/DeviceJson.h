#pragma once

#include "DeviceReport.h"

#include <nlohmann/json.hpp>

namespace mxtool {

/// JSON with its keys in the order in which they were set.
using Json = nlohmann::ordered_json;

/// Returns the `schema` member that every JSON output starts with.
Json jsonSchema(const char* name, int version);

/// Returns `json` as indented text with a line end.
std::string jsonText(const Json& json);

/// Returns the whole device, schema "mxtool.device" version 1.
Json deviceJson(const DeviceReport& report);

} // namespace mxtool
