// A directory with one mx file, read from disk into a device record.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <devices/database/DeviceDatabase.h>
#include <devices/parser/mx/Parser_kv38.h>

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

// A temporary directory of this process, in memory if the system has such a file system.
class Directory
{
public:
    Directory()
    {
        const fs::path memory = "/dev/shm";
        path = (fs::is_directory(memory) ? memory : fs::temp_directory_path()) /
               ("fuzz-populate-" + std::to_string(getpid()));
        fs::create_directories(path);
    }
    ~Directory()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    void write(const char* name, const std::uint8_t* data, std::size_t size) const
    {
        std::ofstream file(path / name, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }

    fs::path path;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool silent = (fuzz::silence(), true);
    static_cast<void>(silent);
    static const Directory directory;
    directory.write("MX1.bin", data, size);
    directory.write("other.bin", data, size);
    unsigned inserted = 0;
    devices::database::insertThrough([&](devices::database::DeviceProperties& record) {
        if (record.mxFileData->size() != size + 1) {
            std::abort(); // the file and the byte that loading appends
        }
        ++inserted;
    });
    devices::parser::mx::Parser_kv38 parser;
    if (parser.populateDatabase(directory.path) != inserted || inserted > 1) {
        std::abort();
    }
    if (parser.populateDatabase(directory.path / "missing") != 0) {
        std::abort();
    }
    return 0;
}
