#pragma once

#include <mxmodule/ReadFile.h>

#include <string>
#include <vector>

namespace mxmodule {

/// Returns the bytes of the mx file at `path`, followed by the byte 0xFF, as the parser takes and
/// records store them. Throws a `Failure`.
inline std::vector<char> loadedFile(const std::string& path)
{
    std::vector<char> bytes = readFile(path);
    bytes.push_back('\xFF');
    return bytes;
}

} // namespace mxmodule
