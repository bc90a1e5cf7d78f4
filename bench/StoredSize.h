#pragma once

#include "TestDatabase.h"

#include <cstdint>

namespace bench {

/// What a database takes on the disk.
struct StoredSize
{
    std::uint64_t rows = 0;  ///< Of all tables.
    std::uint64_t bytes = 0; ///< Tables and indexes.
};

/// Measures `database`, which nothing has open.
StoredSize storedSize(const testkit::TestDatabase& database);

} // namespace bench
