#include "GeneratedModules.h"

#include "DeviceReport.h"
#include "catalogue/ModuleContent.h"

#include <devices/parser/mx/LoadFile.h>
#include <devices/parser/mx/Parser_kv38.h>

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace bench {

namespace {

std::vector<std::string> exampleFiles()
{
    std::vector<std::string> contents;
    for (const auto& file : std::filesystem::directory_iterator(EXAMPLE_MODULES)) {
        if (file.path().extension() == ".bin" && file.path().filename() != "MX9999.bin") {
            std::ifstream stream(file.path(), std::ios::binary);
            contents.emplace_back(std::istreambuf_iterator<char>(stream),
                                  std::istreambuf_iterator<char>());
        }
    }
    std::sort(contents.begin(), contents.end());
    return contents;
}

// The identifier follows the dataset's identifier, its length, a byte and the module type.
std::string withIdentifier(std::string mx, std::size_t number)
{
    const auto dataset = mx.find(std::string("\xFB\x05\x00", 3));
    for (std::size_t byte = 0; byte < 4; ++byte) {
        mx[dataset + 4 + byte] = static_cast<char>(number >> (8 * (3 - byte)) & 0xFFU);
    }
    return mx;
}

} // namespace

GeneratedModules::GeneratedModules(const std::filesystem::path& directory, std::size_t count,
                                   std::size_t modules)
{
    const auto examples = exampleFiles();
    std::filesystem::create_directories(directory);
    for (std::size_t number = 0; number < count; ++number) {
        std::ofstream(directory / fmt::format("MX{:08x}.bin", number), std::ios::binary)
            << withIdentifier(examples[number % examples.size()],
                              modules == 0 ? number : number % modules);
    }
    // In the order of the parser's walk, in which populating inserts them.
    for (const auto& file : std::filesystem::directory_iterator(directory)) {
        paths.push_back(file.path().string());
    }
}

std::vector<GeneratedModules::Module> GeneratedModules::translate() const
{
    devices::parser::mx::Parser_kv38 parser;
    std::vector<Module> modules;
    for (const std::string& path : paths) {
        std::vector<char> mxData;
        devices::parser::mx::loadFile(path, mxData);
        const auto device = parser.parse(mxData, nullptr, 0, 0);
        device->privateProps.mxFileData = new std::vector<char>(mxData);
        modules.push_back({device->privateProps, mxmodule::catalogueContent(mxmodule::makeReport(
                                                     *device, mxmodule::conversionsOf(mxData)))});
    }
    return modules;
}

} // namespace bench
