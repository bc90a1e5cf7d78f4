#pragma once

#include "Diagnostic.h"
#include "TranslatedModule.h"

#include <string>
#include <vector>

namespace mxtool {

/// A parameter image that was read from a module or stored for one.
struct ReadImage
{
    std::vector<char> image;       ///< The raw parameter image.
    std::vector<Diagnostic> notes; ///< Missing identity, missing parameters.
};

/// Reads the parameter image of `module` given by `words`, the value of `option`: bytes in
/// hexadecimal, a file name, or "-" for standard input. On Modbus the bytes are registers, which
/// may be decimal. A file contains the bytes, or the JSON or CSV that `mxtool config` wrote for the
/// same module type; a file .txt or .hex contains the bytes as text. Throws a `Failure`.
ReadImage readImage(const std::string& words, const std::string& option,
                    devices::parser::FieldbusType fieldbus, TranslatedModule& module);

} // namespace mxtool
