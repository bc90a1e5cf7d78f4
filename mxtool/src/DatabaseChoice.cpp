#include "DatabaseChoice.h"

#include "Diagnostic.h"

#include <filesystem>

namespace mxtool {

namespace {

const std::string sqliteScheme = "sqlite:";

std::string chosenUrl(const std::string& url)
{
    return url.empty() ? devices::database::defaultDatabaseUrl() : url;
}

[[noreturn]] void failDatabase(const std::string& text, const std::string& hint = "")
{
    throw Failure(ExitCode::Output, {"error", "", text, hint});
}

void requireExisting(const std::string& url)
{
    if (url.compare(0, sqliteScheme.size(), sqliteScheme) != 0 || url == "sqlite::memory:") {
        return;
    }
    std::error_code ignored;
    if (!std::filesystem::exists(url.substr(sqliteScheme.size()), ignored)) {
        failDatabase("Cannot open device database " + url + ": there is no such file",
                     "make one with: mxtool populate DIRECTORY --db " + url);
    }
}

} // namespace

devices::database::DeviceDatabase openExistingDatabase(const std::string& url)
{
    const std::string chosen = chosenUrl(url);
    requireExisting(chosen);
    try {
        return devices::database::DeviceDatabase(chosen);
    } catch (const std::runtime_error& failure) {
        failDatabase(failure.what());
    }
}

devices::database::DeviceDatabase& useDatabaseForWriting(const std::string& url)
{
    try {
        devices::database::useDatabase(chosenUrl(url));
        return devices::database::usedDatabase();
    } catch (const std::runtime_error& failure) {
        failDatabase(failure.what());
    }
}

} // namespace mxtool
