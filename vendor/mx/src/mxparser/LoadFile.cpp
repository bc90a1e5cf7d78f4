#include "devices/parser/mx/LoadFile.h"

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace devices::parser::mx {

namespace {

struct CloseFile
{
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

// Appends everything that can be read. Returns false when reading fails, as it does on a directory.
bool readAll(std::FILE* file, std::vector<char>& buffer)
{
    std::array<char, 65536> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file)) {
        buffer.insert(buffer.end(), block.begin(), block.begin() + count);
    }
    return std::ferror(file) == 0;
}

} // namespace

void loadFile(const std::string& path, std::vector<char>& buffer)
{
    buffer.clear();
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr || !readAll(file.get(), buffer)) {
        buffer.clear();
        throw std::runtime_error("Cannot open file: " + path);
    }
    // The value of the read that meets the end of the file belongs to the buffer.
    buffer.push_back('\xFF');
}

} // namespace devices::parser::mx
