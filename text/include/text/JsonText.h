#pragma once

#include <text/Json.h>

#include <nlohmann/json.hpp>

#include <string>

namespace text {

/// Returns an object with the `schema` member, the first of every JSON output.
Json jsonSchema(const char* name, int version);

/// Returns the array of what `itemJson` returns for each of `items`.
template <typename Items, typename ItemJson>
Json listJson(const Items& items, const ItemJson& itemJson)
{
    Json list = Json::array();
    for (const auto& item : items) {
        list.push_back(itemJson(item));
    }
    return list;
}

/// Returns the array of `texts`, in UTF-8.
Json textsJson(const std::vector<std::string>& texts);

/// Returns `json` as indented text with a line end.
std::string jsonText(const Json& json);

} // namespace text
