#pragma once

#include "DumpContext.h"

namespace mxauthor {

/// Returns how many texts at the start of the table must be stated with their identifiers; building
/// the text form assigns those of the others in the order of use.
std::size_t fixedTextCount(const TextTable& table, const DumpContext& context);

} // namespace mxauthor
