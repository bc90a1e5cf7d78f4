#pragma once

#include <cstdint>
#include <string>

namespace mxauthor {

/// Returns the number whose IEEE-754 binary32 bits are `bits`.
float floatOf(std::uint32_t bits);

/// Returns the shortest decimal text of `number`; "inf" and "nan" where it is not finite.
std::string numberText(float number);

} // namespace mxauthor
