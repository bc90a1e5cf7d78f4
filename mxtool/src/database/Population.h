#pragma once

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
    unsigned failed = 0;
};

/// Inserts every mx file of `directory` into `database`, inside `transaction`.
///
/// The parser's own `populateDatabase` walks the directory and says what to insert; each record is
/// stored together with what is inside the module, which the parser has just translated. So every
/// file is translated once, and the tool inserts what a host would. A file that cannot be
/// translated, or whose record is refused, is left out and logged; modules of which there are
/// several files are reported. Throws a `Failure` when a file cannot be read, or when the
/// transaction is lost.
PopulationCount populate(const std::string& directory, devices::database::DeviceDatabase& database,
                         const devices::database::DeviceDatabase::Transaction& transaction,
                         const std::string& logLevel);

/// Returns the modules of `database` that no file of `directory` states any more; nothing when a
/// file does not state its module, since that may be any of them.
std::optional<std::vector<devices::database::ModuleSummary>>
modulesNotIn(const std::string& directory, devices::database::DeviceDatabase& database);

} // namespace mxtool
