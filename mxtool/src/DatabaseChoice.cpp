#include "DatabaseChoice.h"

#include "CommandLineOptions.h"
#include "FilesInUse.h"

#include <CLI/CLI.hpp>
#include <text/NearestWords.h>

#include <filesystem>

namespace mxtool {

namespace {

using devices::database::DeviceDatabase;
using devices::database::OpenMode;

const std::string sqliteUrlBegin = "sqlite:";

std::string chosenUrl(const std::string& url)
{
    return url.empty() ? devices::database::defaultDatabaseUrl() : url;
}

// The hint omits the URL of a server: it may contain a password.
std::string hintForMissing(const std::string& url)
{
    const bool isFile = url.compare(0, sqliteUrlBegin.size(), sqliteUrlBegin) == 0;
    std::error_code ignored;
    if (isFile && !std::filesystem::exists(url.substr(sqliteUrlBegin.size()), ignored)) {
        return "make one with: mxtool populate DIRECTORY --db " + url;
    }
    return "";
}

// The hint for a URL of an unknown scheme. It omits the text after a colon, which may contain a
// password.
std::string hintForScheme(const std::string& url)
{
    const std::size_t colon = url.find(':');
    if (colon == std::string::npos) {
        return "name a file as " + sqliteUrlBegin + url;
    }
    const std::string scheme = url.substr(0, colon);
    const auto nearest = text::nearestWords(scheme, {"sqlite", "postgresql"});
    return nearest.empty() || nearest.front() == scheme
               ? ""
               : "did you mean \"" + nearest.front() + ":\"?";
}

std::string hintFor(const std::string& url)
{
    const std::string hint = hintForScheme(url);
    return hint.empty() ? hintForMissing(url) : hint;
}

} // namespace

void addDatabaseOption(CLI::App& verb, std::string& url)
{
    CLI::Option* const option =
        verb.add_option("--db", url,
                        "Database URL, sqlite:PATH or postgresql:CONNECTION; default: "
                        "DEVICE_DATABASE_URL, else sqlite:devices.sqlite");
    option->type_name("URL");
    rejectEmptyValue(*option);
}

DeviceDatabase openExistingDatabase(const std::string& url)
{
    const std::string chosen = chosenUrl(url);
    filesInUse().addInputDatabase(chosen);
    try {
        return DeviceDatabase(chosen, OpenMode::ExistingOnly);
    } catch (const std::runtime_error& failure) {
        throw Failure(ExitCode::Output, "", failure.what(), hintFor(chosen));
    }
}

DeviceDatabase openDatabaseForWriting(const std::string& url)
{
    const std::string chosen = chosenUrl(url);
    filesInUse().addOutputDatabase(chosen);
    return withDatabase(hintForScheme(chosen).c_str(), [&] { return DeviceDatabase(chosen); });
}

} // namespace mxtool
