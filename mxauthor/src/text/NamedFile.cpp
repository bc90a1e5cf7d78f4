#include "mxauthor/NamedFile.h"

#include <fstream>

namespace mxauthor {

namespace {

constexpr std::uintmax_t largestFile = 0x1000000;

} // namespace

NamedFile readNamedFile(const std::filesystem::path& path)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return {"", "there is no file " + path.string()};
    }
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    std::ifstream file(path, std::ios::binary);
    std::string content(error || size > largestFile ? 0 : size, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (!file || error || size > largestFile) {
        return {"", "cannot read " + path.string() + (size > largestFile ? ": too large" : "")};
    }
    return {content, {}};
}

} // namespace mxauthor
