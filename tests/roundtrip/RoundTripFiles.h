#pragma once

#include <mxauthor/Field.h>

#include <string>
#include <vector>

namespace roundtrip {

/// Returns `chars` as bytes.
mxauthor::Bytes asBytes(const std::vector<char>& chars);

/// Returns the bytes of the example of this name.
std::vector<char> loadExample(const std::string& name);

/// Returns the names of all examples whose framing holds: all but MX9999.bin, which is cut off on
/// purpose.
std::vector<std::string> examples();

} // namespace roundtrip
