#pragma once

namespace mxtool {

/// The exit codes; part of the program's interface.
enum class ExitCode : int
{
    Done = 0,
    Findings = 1, ///< Done, with findings or differences, or some files failed.
    Usage = 2,    ///< Invalid command line.
    Input = 3,    ///< An input cannot be read or is malformed.
    Output = 4    ///< An output, the database or a coupler failed.
};

} // namespace mxtool
