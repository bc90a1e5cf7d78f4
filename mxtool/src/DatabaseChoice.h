#pragma once

#include "Diagnostic.h"

#include <devices/database/DeviceDatabase.h>

#include <string>

namespace CLI {
class App;
}

namespace mxtool {

/// Adds --db to `verb`. `url` must outlive the parsing.
void addDatabaseOption(CLI::App& verb, std::string& url);

/// Opens the existing database at `url` (empty: the library's default) and creates nothing. Throws
/// a `Failure`.
devices::database::DeviceDatabase openExistingDatabase(const std::string& url);

/// Opens the database at `url` (empty: the library's default), creating it if it is missing. Throws
/// a `Failure`.
devices::database::DeviceDatabase openDatabaseForWriting(const std::string& url);

/// Runs `work`, which uses a database. A `std::runtime_error` becomes a `Failure` with
/// `ExitCode::Output` and `hint`.
template <typename Work>
auto withDatabase(const char* hint, Work work) -> decltype(work())
{
    try {
        return work();
    } catch (const Failure&) {
        throw;
    } catch (const std::runtime_error& failure) {
        throw Failure(ExitCode::Output, "", failure.what(), hint);
    }
}

} // namespace mxtool
