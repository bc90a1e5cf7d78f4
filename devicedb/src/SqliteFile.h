#pragma once

#include <string>

namespace devices::database {

/// Returns the name under which the driver opens the file at `path`, or ":memory:" as it is.
std::string sqliteFileName(const std::string& path);

/// Returns why the file at `path` could not be opened or created: SQLite does not say more than
/// that it could not.
std::string whyNotOpened(const std::string& path);

} // namespace devices::database
