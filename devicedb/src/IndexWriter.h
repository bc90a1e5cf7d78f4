#pragma once

#include "SqlConnection.h"

#include <cstddef>

namespace devices::database {

/// How many modules may be stored without being in the search index.
constexpr std::size_t mostNotIndexed = 256;

/// Writes the search index for the modules that are not in it, if they are more than `most`. To be
/// called within a transaction that changes the database. Throws a `SqlFailure`.
///
/// A search looks at each module that is not in the index, and finds the others by its blocks. A
/// block has the modules from its first key up to that of the next block, so that modules are found
/// in the order of their keys. Blocks are written anew as a whole: that is slow and keeps them
/// small and fast to read, and a catalogue is searched far more often than changed.
void updateSearchIndex(SqlConnection& connection, std::size_t most = mostNotIndexed);

} // namespace devices::database
