#pragma once

#include <mxonline/CouplerDifference.h>

#include <string>
#include <vector>

// Texts that the difference and the report of a coupler share.

namespace mxonline {

/// Returns what the coupler has at a position of the row: "identified", "not identified", "another
/// module: 5a030302", "no module".
std::string identityText(Identification identification, const std::string& foundId);

/// Returns whether the identifier that a coupler has for a position says that it is empty.
bool isNoModule(const std::string& foundId);

/// Says that no module was identified, and why.
constexpr const char* noIdentityNote = "No module is identified: \"modbus\" of the station states "
                                       "no identity registers of the coupler";

/// Returns the notes that are shown below the tables of `difference`.
std::vector<std::string> notesOf(const CouplerDifference& difference, DifferenceUse use);

/// Returns notes on the parameters of `names`, which are in no register.
std::vector<std::string> withoutRegistersNotes(std::size_t position, const std::string& name,
                                               const std::vector<std::string>& names);

/// Returns `words` as four hexadecimal digits each, separated by blanks.
std::string wordsText(const std::vector<std::uint16_t>& words);

} // namespace mxonline
