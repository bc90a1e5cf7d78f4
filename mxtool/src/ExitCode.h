#pragma once

namespace mxtool {

/// How the program ends; part of its contract.
enum class ExitCode : int
{
    Done = 0,
    Findings = 1, ///< Done, with findings or differences, or some files failed.
    Usage = 2,    ///< The words of the call are wrong.
    Input = 3,    ///< An input cannot be read or is malformed.
    Output = 4    ///< An output or the database failed.
};

} // namespace mxtool
