#pragma once

#include <string>

namespace devices::database {

/// Returns `text`, which is UTF-8, as it is compared in searches: in lower case, without accents
/// ("ä" is "a", "ß" is "ss"), the signs for micro and ohm as Greek letters.
std::string foldedForSearch(const std::string& text);

} // namespace devices::database
