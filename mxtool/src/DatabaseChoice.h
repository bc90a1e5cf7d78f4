#pragma once

#include "Diagnostic.h"

#include <devices/database/DeviceDatabase.h>

#include <string>

namespace CLI {
class App;
}

namespace mxtool {

/// Adds --db to `verb`. `url` outlives the parsing.
void addDatabaseOption(CLI::App& verb, std::string& url);

/// Opens the existing database at `url`; an empty `url` stands for the library's own choice. What
/// is missing is not made. Throws a `Failure`.
devices::database::DeviceDatabase openExistingDatabase(const std::string& url);

/// Opens the database at `url` (empty: the library's own choice), making it when missing. Throws a
/// `Failure`.
devices::database::DeviceDatabase openDatabaseForWriting(const std::string& url);

/// Runs `work` with a database; what fails there ends the verb with the code of a failed output and
/// `hint`.
template <typename Work>
auto withDatabase(const char* hint, Work work) -> decltype(work())
{
    try {
        return work();
    } catch (const Failure&) {
        throw;
    } catch (const std::runtime_error& failure) {
        throw Failure(ExitCode::Output, {"error", "", failure.what(), hint});
    }
}

} // namespace mxtool
