#pragma once

#include "Diagnostic.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace mxtool {

/// Returns the words of a call, "help VERB" turned into "VERB --help".
std::vector<std::string> withHelpAsOption(std::vector<std::string> words);

/// Returns what `program` did not understand of `words`, in the order in which they were typed,
/// each with the nearest verb or option. Called after the parsing; empty when every word has its
/// place.
std::vector<Diagnostic> unknownWords(const CLI::App& program,
                                     const std::vector<std::string>& words);

/// Returns that a call names no verb.
Diagnostic missingVerb(const CLI::App& program);

/// Returns where the help of what `program` was called for is.
std::string helpHint(const CLI::App& program);

/// Adds an option for the byte of a process image at which data begin: a whole number, in decimal
/// or, after 0x, in hexadecimal. `offset` outlives the parsing.
void addOffsetOption(CLI::App& verb, const std::string& name, unsigned& offset,
                     const std::string& description);

/// Returns a message for a value `word` that is not one of `accepted`: the nearest ones, and all.
std::string notAccepted(const std::string& word, const std::vector<std::string>& accepted);

/// Makes the parsing refuse values of `option` other than `accepted`, which its help lists.
void acceptOneOf(CLI::Option& option, const std::vector<std::string>& accepted);

/// Makes the parsing refuse an empty value of `option`, such as that of an unset variable of a
/// script, which would otherwise count as the option left out.
void refuseEmptyValue(CLI::Option& option);

} // namespace mxtool
