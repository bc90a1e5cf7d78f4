#pragma once

#include "ExitCode.h"

#include <string>

namespace mxtool {

/// A value that the user sets. Texts are UTF-8.
struct Assignment
{
    std::string place; ///< Where it is set: a command line argument, or FILE:LINE:COLUMN.
    std::string name;  ///< As accepted by `parameterCalled`.
    std::string value; ///< As accepted by `acceptedValue`.
    ExitCode code;     ///< Exit code if it is rejected.
    /// The name that a row of a table gives beside this identifier; empty: none.
    std::string statedName = {};
};

} // namespace mxtool
