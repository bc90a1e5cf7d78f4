#pragma once

#include "RecordStore.h"

namespace devices::database {

/// The version of the interface between library and module: both are built from the same sources,
/// and a module of another version is not called.
constexpr int postgresqlModuleVersion = 2;

/// The function that the module exports as "openPostgresqlRecordStore". The caller owns the store.
/// Failures are `std::runtime_error`.
using OpenPostgresqlRecordStore = RecordStore* (*)(const std::string& words, OpenMode mode,
                                                   unsigned patience);

/// Opens the PostgreSQL database of the connection string `words` through the module, which is
/// loaded at the first call: the library works without the driver installed.
std::unique_ptr<RecordStore> openThroughPostgresqlModule(const std::string& words, OpenMode mode,
                                                         unsigned patience);

} // namespace devices::database
