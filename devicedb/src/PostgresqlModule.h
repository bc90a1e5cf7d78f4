#pragma once

#include "RecordStore.h"

namespace devices::database {

/// The version of the agreement between the library and the module: both are built from the same
/// sources, and a module of another build is not called.
constexpr int postgresqlModuleVersion = 1;

/// What the module exports under the name "openPostgresqlRecordStore". The caller owns the store.
/// Failures are `std::runtime_error`.
using OpenPostgresqlRecordStore = RecordStore* (*)(const std::string& words, OpenMode mode,
                                                   unsigned patience);

/// Opens the PostgreSQL database that `words` names through the module, which is loaded at the
/// first call: so the library works where the driver is not installed.
std::unique_ptr<RecordStore> openThroughPostgresqlModule(const std::string& words, OpenMode mode,
                                                         unsigned patience);

} // namespace devices::database
