#pragma once

#include "ExitCode.h"

#include <string>

namespace mxtool {

/// A parameter's value that the user asks for. Texts are UTF-8.
struct Assignment
{
    std::string place; ///< Where it stands: the words of the call, or FILE:LINE:COLUMN.
    std::string name;  ///< As `parameterCalled` takes it.
    std::string value; ///< As `acceptedValue` takes it.
    ExitCode code;     ///< How the program ends when it is refused.
    /// What a row of a table calls the parameter of this identifier; empty: not stated.
    std::string statedName = {};
};

} // namespace mxtool
