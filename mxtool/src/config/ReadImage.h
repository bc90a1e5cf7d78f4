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
    std::vector<Diagnostic> notes; ///< That the bytes carry no identity, what they leave out.
};

/// Reads the parameter image of `module` that `words` give: the bytes themselves in hexadecimal,
/// the name of a file, or "-" for standard input. On Modbus the bytes are registers, which may be
/// in decimal. A file holds the bytes, or is what `mxtool config` has written as JSON or CSV, which
/// must be of the same module type; one called .txt or .hex holds words. `option` is the name of
/// the words, for diagnostics. Throws a `Failure`.
ReadImage readImage(const std::string& words, const std::string& option,
                    devices::parser::FieldbusType fieldbus, TranslatedModule& module);

} // namespace mxtool
