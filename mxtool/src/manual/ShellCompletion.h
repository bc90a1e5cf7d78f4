#pragma once

#include "ProgramWords.h"

#include <string>

namespace mxtool::manual {

/// Returns the bash completion script of the program: verbs, options, choices of options, names of
/// files and directories. It depends on bash alone.
std::string bashCompletion(const ProgramWords& words);

/// Returns the zsh completion function of the program, for `fpath`.
std::string zshCompletion(const ProgramWords& words);

} // namespace mxtool::manual
