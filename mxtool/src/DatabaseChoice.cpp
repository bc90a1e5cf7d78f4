#include "DatabaseChoice.h"

#include "CallFiles.h"

#include <CLI/CLI.hpp>

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

// A server's database may hold a password in its URL, so its hint names none.
std::string hintForMissing(const std::string& url)
{
    const bool isFile = url.compare(0, sqliteUrlBegin.size(), sqliteUrlBegin) == 0;
    std::error_code ignored;
    if (isFile && !std::filesystem::exists(url.substr(sqliteUrlBegin.size()), ignored)) {
        return "make one with: mxtool populate DIRECTORY --db " + url;
    }
    return "";
}

} // namespace

void addDatabaseOption(CLI::App& verb, std::string& url)
{
    verb.add_option("--db", url,
                    "Database URL, sqlite:PATH or postgresql:CONNECTION; without it the one of "
                    "DEVICE_DATABASE_URL, else sqlite:devices.sqlite")
        ->type_name("URL");
}

DeviceDatabase openExistingDatabase(const std::string& url)
{
    const std::string chosen = chosenUrl(url);
    callFiles().addInputDatabase(chosen);
    try {
        return DeviceDatabase(chosen, OpenMode::ExistingOnly);
    } catch (const std::runtime_error& failure) {
        throw Failure(ExitCode::Output, {"error", "", failure.what(), hintForMissing(chosen)});
    }
}

DeviceDatabase openDatabaseForWriting(const std::string& url)
{
    const std::string chosen = chosenUrl(url);
    callFiles().addOutputDatabase(chosen);
    return withDatabase("", [&] { return DeviceDatabase(chosen); });
}

} // namespace mxtool
