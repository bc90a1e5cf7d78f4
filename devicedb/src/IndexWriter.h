#pragma once

#include "SqlConnection.h"
#include "SummaryRow.h"

#include <cstddef>

namespace devices::database {

/// How many modules may be stored without being in the search index.
constexpr std::size_t mostNotIndexed = 256;

/// Adds the modules `changed` to those that are not in the search index, or, if there are many
/// then, writes the index for all of them. To be called within a transaction that changes the
/// database. Throws a `SqlFailure`.
///
/// A search looks at each module that is not in the index, and finds the others by its blocks. A
/// block has the modules from its first key up to that of the next block, so that modules are found
/// in the order of their keys. Blocks are written anew as a whole: that is slow and keeps them
/// small and fast to read, and a catalogue is searched far more often than changed.
void updateSearchIndex(SqlConnection& connection, const ModuleKeys& changed);

/// Adds them in any case, so that a search finds them before the transaction ends.
void addToNotIndexed(SqlConnection& connection, const ModuleKeys& changed);

} // namespace devices::database
