#include "TemporaryCatalogue.h"

#include <devices/database/DeviceDatabase.h>

#include <cstdlib>
#include <stdexcept>

namespace bench {

namespace fs = std::filesystem;

namespace {

fs::path makeDirectory()
{
    std::string name = (fs::temp_directory_path() / "bench-catalogue-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("cannot make " + name);
    }
    return name;
}

} // namespace

TemporaryCatalogue::TemporaryCatalogue(std::size_t moduleCount, std::size_t distinctModules)
    : directory(makeDirectory()), generated(directory / "modules", moduleCount, distinctModules)
{}

TemporaryCatalogue::~TemporaryCatalogue()
{
    std::error_code ignored;
    fs::remove_all(directory, ignored);
}

std::string TemporaryCatalogue::freshSqliteFile() const
{
    const std::string path = (directory / "devices.sqlite").string();
    for (const char* end : {"", "-wal", "-shm"}) {
        fs::remove(path + end);
    }
    devices::database::DeviceDatabase{"sqlite:" + path}; // creates the tables
    return path;
}

} // namespace bench
