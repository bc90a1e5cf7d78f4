#pragma once

#include "database/MxDirectory.h"

#include <devices/database/DeviceDatabase.h>

#include <optional>
#include <string>
#include <vector>

namespace mxtool {

/// What became of the mx files of a directory.
struct PopulationCount
{
    unsigned inserted = 0; ///< Of modules that were not there.
    unsigned replaced = 0; ///< Of modules that were there, or of which another file came first.
    unsigned failed = 0;   ///< Entries that were left out included.
};

/// Inserts the files of `directory` into `database`, inside `transaction`.
///
/// The record of each is what the parser's own `populateDatabase` inserts; with it goes what is
/// inside the module, so that every file is translated once. A file that cannot be translated, or
/// whose record is refused, is left out and reported; modules of which there are several files are
/// reported. Throws a `Failure` when a file cannot be read, or when the transaction is lost.
PopulationCount populate(const MxDirectory& directory, devices::database::DeviceDatabase& database,
                         const devices::database::DeviceDatabase::Transaction& transaction,
                         const std::string& logLevel);

/// Returns the modules of `database` that no file of `directory` states any more; nothing when a
/// file does not state its module or an entry was left out, since that may be any of them.
[[nodiscard]] std::optional<std::vector<devices::database::ModuleSummary>>
modulesNotIn(const MxDirectory& directory, devices::database::DeviceDatabase& database);

} // namespace mxtool
