#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// Returns one CSV line: fields separated by commas, quoted where needed, ended by CR LF. Texts may
/// hold any byte and come out as UTF-8; one that a spreadsheet would take for a formula gets an
/// apostrophe in front.
std::string csvLine(const std::vector<std::string>& fields);

} // namespace mxtool
