#pragma once

#include <string>
#include <vector>

// The words of a layout, in the order of the enumerators.

namespace mxstation {

/// Those of `ImageOrder`.
inline const std::vector<std::string> orderWords = {"row", "bytes-first"};

/// Those of `ByteOrder`.
inline const std::vector<std::string> byteOrderWords = {"big", "little"};

} // namespace mxstation
