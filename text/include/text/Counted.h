#pragma once

#include <cstdint>
#include <string>

namespace text {

/// Returns "1 bit" or "5 bits" for the word "bit".
inline std::string counted(std::uint64_t count, const std::string& what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace text
