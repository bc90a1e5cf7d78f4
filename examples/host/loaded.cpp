// A host that uses the interface alone: it loads the parser library at the given path and creates
// the parser by its class name.

#include <devices/parser/IDeviceParser.h>

#include <Poco/ClassLoader.h>

#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

using Loader = Poco::ClassLoader<devices::parser::IDeviceParser>;

std::vector<char> bytesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot be opened");
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Parser and device must be destroyed before the library is unloaded: their code is in it.
void listChannels(const Loader& loader, const std::string& path)
{
    const std::vector<char> mxData = bytesOf(path);
    const std::unique_ptr<devices::parser::IDeviceParser> parser(
        loader.create("devices::parser::mx::Parser_kv38"));
    const auto device = parser->parse(mxData, nullptr, 0, 0);
    for (const auto& channel : parser->getChannelMappingInfoList(device.get())) {
        std::cout << channel->iecSymbol << '\n';
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "Usage: loaded LIBRARY MX-FILE\n";
        return 2;
    }
    try {
        Loader loader;
        loader.loadLibrary(argv[1]);
        listChannels(loader, argv[2]);
        loader.unloadLibrary(argv[1]);
        return 0;
    } catch (const Poco::Exception& error) {
        std::cerr << "loaded: " << error.displayText() << '\n';
    } catch (const std::exception& error) {
        std::cerr << "loaded: " << argv[2] << ": " << error.what() << '\n';
    }
    return 1;
}
