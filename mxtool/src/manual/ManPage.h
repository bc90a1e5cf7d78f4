#pragma once

#include "ProgramWords.h"

#include <string>

namespace mxtool::manual {

/// Returns the manual page of the program, as roff source with the macros of man(7), without a
/// date: equal sources give equal bytes.
std::string programPage(const ProgramWords& words);

/// Returns the name of the page of `verb`: "PROGRAM-VERB", "PROGRAM-VERB-VERB".
std::string pageName(const ProgramWords& words, const VerbWords& verb);

/// Returns the manual page of `verb`.
std::string verbPage(const ProgramWords& words, const VerbWords& verb);

/// Returns `text` (UTF-8) escaped for roff: requests have no effect, minus signs can be copied to a
/// command line, characters outside ASCII are escapes.
std::string roffText(const std::string& text);

} // namespace mxtool::manual
