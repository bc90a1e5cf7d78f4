#pragma once

#include "ProgramWords.h"

#include <string>

namespace mxtool::manual {

/// Returns the manual page of the program itself, as roff source with the macros of man(7). It says
/// no date: the same sources give the same bytes.
std::string programPage(const ProgramWords& words);

/// Returns the manual page of `verb`, which is called "PROGRAM-VERB".
std::string verbPage(const ProgramWords& words, const VerbWords& verb);

/// Returns `text` (UTF-8) as roff shows it: nothing in it is an instruction, minus signs are those
/// that can be copied into a command line, other characters than ASCII are escapes.
std::string roffText(const std::string& text);

} // namespace mxtool::manual
