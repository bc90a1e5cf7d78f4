#pragma once

#include <devices/database/DeviceDatabase.h>

#include <string>

namespace mxtool {

/// Opens the existing database at `url` for reading; an empty `url` stands for the library's own
/// choice. A missing file is not created. Throws a `Failure`.
devices::database::DeviceDatabase openExistingDatabase(const std::string& url);

/// Makes the database at `url` (empty: the library's own choice) the one that is populated,
/// creating it when missing. Throws a `Failure`.
devices::database::DeviceDatabase& useDatabaseForWriting(const std::string& url);

} // namespace mxtool
