#pragma once

#include "mxmodule/MxmoduleApi.h"

#include <cstddef>
#include <optional>
#include <string>

namespace mxmodule {

/// What a person wrote into a text form or a file of values and a new output does not have.
struct LostWriting
{
    std::size_t line = 0; ///< In the present text, from 1.
    std::string what;     ///< Such as `the comment "# by hand"`.
};

/// Returns the first comment or repetition in `present`, a text form, a file of values or another
/// text, that `output`, which is to replace it, would not keep. Comments that this library wrote do
/// not count, nor anything if `output` is another kind of file.
MXMODULE_API std::optional<LostWriting> writingLostBy(const std::string& output,
                                                      const std::string& present);

} // namespace mxmodule
