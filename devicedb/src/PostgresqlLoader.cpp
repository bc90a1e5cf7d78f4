#include "PostgresqlModule.h"

#include <Poco/Exception.h>
#include <Poco/SharedLibrary.h>

#include <filesystem>
#include <stdexcept>

#include <dlfcn.h>

namespace devices::database {

namespace {

constexpr const char* moduleFile = "libdevice-database-postgresql.so";

// The directory of the file that holds this code.
std::filesystem::path ownDirectory()
{
    Dl_info own{};
    if (dladdr(reinterpret_cast<const void*>(&ownDirectory), &own) == 0 ||
        own.dli_fname == nullptr) {
        return ".";
    }
    std::error_code ignored;
    return std::filesystem::canonical(own.dli_fname, ignored).parent_path();
}

std::filesystem::path modulePath()
{
    const std::filesystem::path own = ownDirectory();
    // The last one is for a program that is linked statically with the library.
    for (const auto& directory :
         {own / "device-database", own, own.parent_path() / "lib" / "device-database"}) {
        std::error_code ignored;
        if (std::filesystem::exists(directory / moduleFile, ignored)) {
            return directory / moduleFile;
        }
    }
    throw std::runtime_error(std::string("Cannot open a PostgreSQL device database: its driver ") +
                             moduleFile + " is not installed in " +
                             (own / "device-database").string());
}

// The driver's own library is optional for packages, so it is the one that is missing. The loader's
// reason begins with its name.
std::string adviceFor(const std::string& reason)
{
    return reason.compare(0, 5, "libpq") == 0
               ? "; install libpq, which is the package libpq5 in Debian"
               : "";
}

OpenPostgresqlRecordStore load()
{
    const std::string path = modulePath().string();
    try {
        Poco::SharedLibrary library(path); // stays loaded when this object is destroyed
        const auto version =
            *static_cast<const int*>(library.getSymbol("postgresqlRecordStoreVersion"));
        if (version != postgresqlModuleVersion) {
            throw Poco::LibraryLoadException(path + " is of another version");
        }
        return reinterpret_cast<OpenPostgresqlRecordStore>(
            library.getSymbol("openPostgresqlRecordStore"));
    } catch (const Poco::Exception& failure) {
        throw std::runtime_error(
            "Cannot open a PostgreSQL device database: its driver cannot be loaded: " +
            failure.message() + adviceFor(failure.message()));
    }
}

} // namespace

std::unique_ptr<RecordStore> openThroughPostgresqlModule(const std::string& words, OpenMode mode,
                                                         unsigned patience)
{
    static const OpenPostgresqlRecordStore open = load();
    return std::unique_ptr<RecordStore>(open(words, mode, patience));
}

} // namespace devices::database
