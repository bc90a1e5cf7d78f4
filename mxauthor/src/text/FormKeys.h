#pragma once

#include <map>
#include <string>
#include <vector>

namespace mxauthor {

/// Returns the keys of a mapping of the text form, by the name of the mapping: "file" for the
/// whole, otherwise that of the definition in mx-module.schema.json. Throws `std::out_of_range` for
/// another name.
const std::vector<std::string>& keysOf(const std::string& mapping);

/// Returns the keys of all mappings by their names.
const std::map<std::string, std::vector<std::string>>& formKeys();

} // namespace mxauthor
