#pragma once

#include "DumpContext.h"

namespace mxauthor {

/// Returns how many texts, from the first of the table on, have to be stated with their identifiers
/// so that the others get theirs when the text form is built, in the order in which they are used.
std::size_t fixedTextCount(const TextTable& table, const DumpContext& context);

} // namespace mxauthor
