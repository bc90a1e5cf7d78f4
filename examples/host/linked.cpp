// The smallest host: linked with the parser, it lists the content of the module in an mx file.

#include <devices/parser/mx/LoadFile.h>
#include <devices/parser/mx/Parser_kv38.h>

#include <exception>
#include <iostream>

namespace {

void show(const datamodel::Attribute& attribute)
{
    if (attribute.typeCode() == datamodel::channelTypeCode) {
        const auto& channel = static_cast<const datamodel::Channel&>(attribute);
        std::cout << channel.iecSymbol << ' ' << channel.name << '\n';
    } else if (attribute.typeCode() == datamodel::parameterTypeCode) {
        const auto& parameter = static_cast<const datamodel::Parameter&>(attribute);
        std::cout << parameter.name << " = " << parameter.value << ' ' << parameter.unit << '\n';
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "Usage: linked MX-FILE\n";
        return 2;
    }
    try {
        std::vector<char> mxData; // the device's parameters point into it: must outlive the device
        devices::parser::mx::loadFile(argv[1], mxData);

        devices::parser::mx::Parser_kv38 parser;
        const auto device = parser.parse(mxData, nullptr, 0, 0);
        for (const auto& attribute : device->attributes) {
            show(*attribute);
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << argv[1] << ": " << error.what() << '\n';
        return 1;
    }
}
