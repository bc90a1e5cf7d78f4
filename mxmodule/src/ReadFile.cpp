#include "mxmodule/ReadFile.h"

#include "mxmodule/Finding.h"

#include <devices/parser/mx/LoadFile.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace mxmodule {

std::vector<char> readFile(const std::string& path)
{
    std::vector<char> bytes;
    errno = 0;
    try {
        devices::parser::mx::loadFile(path, bytes);
    } catch (const std::runtime_error& failure) {
        const std::string reason = errno != 0 ? std::string(": ") + std::strerror(errno) : "";
        std::error_code ignored;
        throw Failure(Origin::Input, path, failure.what() + reason,
                      std::filesystem::is_directory(path, ignored) ? "name a file in this directory"
                                                                   : "");
    }
    bytes.pop_back(); // the byte 0xFF that ends every loaded file
    return bytes;
}

} // namespace mxmodule
