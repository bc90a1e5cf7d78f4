#pragma once

#include "DeviceReport.h"
#include "database/MxDirectory.h"

#include <devices/database/DeviceDatabase.h>
#include <devices/database/ModuleContent.h>

#include <optional>
#include <string>
#include <vector>

namespace mxtool {

/// The number of mx files inserted, replaced and failed.
struct PopulationCount
{
    unsigned inserted = 0; ///< New modules.
    unsigned replaced = 0; ///< Modules present before, or inserted from another file.
    unsigned failed = 0;   ///< Includes entries left out of the listing.
};

/// Inserts the files of `directory` into `database`, inside `transaction`.
///
/// Inserts the same records as the parser's `populateDatabase`, each together with the content of
/// its module, so that every file is translated only once. Reports and skips files that cannot be
/// translated or whose record the database rejects, and reports modules with several files. Throws
/// a `Failure` when a file cannot be read or the transaction is lost.
PopulationCount populate(const MxDirectory& directory, devices::database::DeviceDatabase& database,
                         const devices::database::DeviceDatabase::Transaction& transaction,
                         const std::string& logLevel);

/// Returns the modules of `database` without a file in `directory`. Returns nothing if a file has
/// no identifier or an entry was left out, since that may be any of them.
[[nodiscard]] std::optional<std::vector<devices::database::ModuleSummary>>
modulesNotIn(const MxDirectory& directory, devices::database::DeviceDatabase& database);

/// Returns the content of a device for the catalogue: texts converted to UTF-8, values as printed
/// by the verb `show`.
devices::database::ModuleContent catalogueContent(const DeviceReport& device);

} // namespace mxtool
