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

// What of a URL that is not understood may be shown: its scheme, since a password may follow.
std::string shownPart(const std::string& url)
{
    const auto colon = url.find(':');
    return colon == std::string::npos ? url : url.substr(0, colon) + ":...";
}

[[noreturn]] void refuse(const std::string& shown, const std::string& reason)
{
    throw std::runtime_error("Device database URL \"" + shown + "\" " + reason +
                             ", expected sqlite:PATH or sqlite::memory:");
}

} // namespace

std::unique_ptr<RecordStore> openRecordStore(const std::string& url)
{
    if (const auto path = behind("sqlite:", url)) {
        if (path->empty()) {
            refuse(url, "names no file");
        }
        if (path->find('\0') != std::string::npos) {
            refuse("sqlite:...", "holds a NUL byte");
        }
        return std::make_unique<SqliteRecordStore>(*path);
    }
    if (behind("postgresql:", url)) {
        refuse("postgresql:...", "cannot be opened: this build holds no PostgreSQL engine");
    }
    refuse(shownPart(url), "is not understood");
}

} // namespace devices::database
