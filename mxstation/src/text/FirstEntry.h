#pragma once

#include "text/EditedText.h"

#include <string>

namespace mxstation {

/// Returns the text of a station without entries in which `item` is the only one; unchanged if
/// that is not possible.
std::string withFirstEntry(const EditedText& text, const YamlMember& item);

/// Returns the text of a station with a single entry, in lines, without it.
std::string withoutOnlyEntry(const EditedText& text);

} // namespace mxstation
