#include "DatabaseFailure.h"
#include "PostgresqlModule.h"
#include "RecordStore.h"
#include "SqlRecordStore.h"
#include "SqliteConnection.h"

#include <Poco/NumberParser.h>

#include <cstdlib>
#include <stdexcept>

namespace devices::database {

namespace {

// Returns what follows `scheme` in `url`, or nothing.
std::optional<std::string> textAfter(const std::string& scheme, const std::string& url)
{
    if (url.compare(0, scheme.size(), scheme) != 0) {
        return std::nullopt;
    }
    return url.substr(scheme.size());
}

// The part of an invalid URL that may be shown: its scheme, since a password may follow. It may
// also be a connection string without a scheme.
std::string shownPart(const std::string& url)
{
    const auto colon = url.find(':');
    const std::string begin = url.substr(0, colon);
    if (begin.find_first_of("=@") != std::string::npos) {
        return "...";
    }
    return colon == std::string::npos ? url : begin + ":...";
}

[[noreturn]] void reject(const std::string& shown, const std::string& reason)
{
    throw std::runtime_error("Device database URL \"" + shown + "\" " + reason +
                             ", expected sqlite:PATH, sqlite::memory: or postgresql:CONNECTION");
}

// For how many seconds a change waits for other writers: the value of the environment variable
// `DEVICE_DATABASE_WAIT` (0 to 3600), else 30.
unsigned secondsToWait()
{
    constexpr unsigned standard = 30;
    constexpr unsigned most = 3600;
    const char* const stated = std::getenv("DEVICE_DATABASE_WAIT");
    unsigned seconds = 0;
    if (stated == nullptr || !Poco::NumberParser::tryParseUnsigned(stated, seconds)) {
        return standard;
    }
    return seconds < most ? seconds : most;
}

std::unique_ptr<RecordStore> openSqlite(const std::string& path, const std::string& name,
                                        OpenMode mode)
{
    try {
        return std::make_unique<SqlRecordStore>(
            name, std::make_unique<SqliteConnection>(path, mode, secondsToWait()), mode);
    } catch (const SqlFailure& failure) {
        fail(name, "open", failure.what());
    }
}

} // namespace

std::unique_ptr<RecordStore> openRecordStore(const std::string& url, OpenMode mode)
{
    if (url.find('\0') != std::string::npos) {
        reject(shownPart(url), "holds a NUL byte");
    }
    if (const auto path = textAfter("sqlite:", url)) {
        if (path->empty()) {
            reject(url, "names no file");
        }
        return openSqlite(*path, url, mode);
    }
    if (const auto words = textAfter("postgresql:", url)) {
        // "postgresql://..." is a libpq URL already.
        const bool isUrl = words->compare(0, 2, "//") == 0;
        return openThroughPostgresqlModule(isUrl ? url : *words, mode, secondsToWait());
    }
    reject(shownPart(url), "is invalid");
}

} // namespace devices::database
