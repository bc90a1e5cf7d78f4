#pragma once

#include <string>

namespace devices::database {

/// Returns the name under which the driver opens the file at `path`, or ":memory:" as it is.
///
/// A file with a write-ahead log is read together with two files beside it. Where they are missing
/// and cannot be made, because neither file nor directory may be written, the file is opened as one
/// that does not change.
std::string sqliteFileName(const std::string& path);

/// Returns whether `path` names a file, and there is none.
bool isMissing(const std::string& path);

/// Returns why the file at `path` could not be opened or created: SQLite does not say more than
/// that it could not.
std::string whyNotOpened(const std::string& path);

} // namespace devices::database
