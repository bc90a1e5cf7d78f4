#pragma once

#include "ProgramWords.h"

#include <string>

namespace mxtool::manual {

/// Returns the script by which bash completes a call of the program: verbs, options, the choices of
/// an option, names of files and directories. It needs nothing but bash itself.
std::string bashCompletion(const ProgramWords& words);

/// Returns the function by which zsh completes a call of the program, for its `fpath`.
std::string zshCompletion(const ProgramWords& words);

} // namespace mxtool::manual
