#include "RecordStore.h"
#include "SqliteRecordStore.h"

#include <stdexcept>

namespace devices::database {

namespace {

// Returns what stands behind `scheme` in `url`, or nothing.
std::optional<std::string> behind(const std::string& scheme, const std::string& url)
{
    if (url.compare(0, scheme.size(), scheme) != 0) {
        return std::nullopt;
    }
    return url.substr(scheme.size());
}

} // namespace

std::unique_ptr<RecordStore> openRecordStore(const std::string& url)
{
    if (const auto path = behind("sqlite:", url)) {
        if (path->empty()) {
            throw std::runtime_error("Device database URL \"" + url +
                                     "\" names no file, expected sqlite:PATH or sqlite::memory:");
        }
        return std::make_unique<SqliteRecordStore>(*path);
    }
    // What stands behind the scheme may hold a password and is not repeated.
    if (behind("postgresql:", url)) {
        throw std::runtime_error("Device database URL \"postgresql:...\" cannot be opened: this "
                                 "build holds no PostgreSQL engine, expected sqlite:PATH");
    }
    throw std::runtime_error("Device database URL \"" + url +
                             "\" is not understood, expected sqlite:PATH or sqlite::memory:");
}

} // namespace devices::database
