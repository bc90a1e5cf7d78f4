#include "RoundTripFiles.h"

#include <devices/parser/mx/LoadFile.h>

#include <algorithm>
#include <filesystem>

namespace roundtrip {

mxauthor::Bytes asBytes(const std::vector<char>& chars)
{
    return {chars.begin(), chars.end()};
}

std::vector<char> loadExample(const std::string& name)
{
    std::vector<char> chars;
    devices::parser::mx::loadFile(std::string(EXAMPLE_MODULES) + "/" + name, chars);
    chars.pop_back(); // the byte after every loaded file
    return chars;
}

std::vector<std::string> examples()
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLE_MODULES)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == ".bin" && name != "MX9999.bin") {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace roundtrip
