#pragma once

#include <string>

namespace devices::database {

/// Returns the name under which the driver opens the file at `path`, or ":memory:" as it is.
///
/// A file with a write-ahead log is read together with two files beside it. If they are missing and
/// cannot be created, because neither file nor directory is writable, the file is opened as
/// immutable.
std::string sqliteFileName(const std::string& path);

/// Returns whether `path` names a file that does not exist.
bool isMissing(const std::string& path);

/// Returns why the file at `path` could not be opened or created: SQLite itself gives no reason.
std::string whyNotOpened(const std::string& path);

} // namespace devices::database
