// A complete translation: device, channel mapping list, both raw configurations, and a ParamDevice
// made from the input's words. Words: offsets of the data (2 x 2 bytes), custom block (count,
// bytes), 'X' for another device type, then a line per value: one byte that selects the parameter,
// then the text.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <devices/parser/mx/Parser_kv38.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <string>

namespace {

using datamodel::Device;
using datamodel::ParamDevice;
using datamodel::Parameter;
using devices::parser::FieldbusType;
using devices::parser::mx::Parser_kv38;

// The user's copy of `device` without any value.
ParamDevice copyOf(const Device& device)
{
    ParamDevice copy;
    copy.deviceTypeId = device.deviceTypeId;
    return copy;
}

void setValue(ParamDevice& copy, const std::string& id, const std::string& value)
{
    auto parameter = std::make_shared<Parameter>();
    parameter->id = id;
    parameter->value = value;
    copy.attributes.push_back(parameter);
}

// Every parameter with its present value.
ParamDevice ownValues(const Device& device)
{
    ParamDevice copy = copyOf(device);
    for (const auto& attribute : device.attributes) {
        if (attribute->typeCode() != datamodel::parameterTypeCode) {
            continue;
        }
        const auto& parameter = static_cast<const Parameter&>(*attribute);
        setValue(copy, parameter.id, parameter.value);
    }
    return copy;
}

ParamDevice chosenValues(const Device& device, fuzz::Words& words)
{
    ParamDevice copy = copyOf(device);
    if (words.takeByte() == 'X') {
        copy.deviceTypeId += 'X'; // of another module: rejected
    }
    while (!words.empty()) {
        const std::size_t chosen = words.takeByte();
        const std::string line = words.takeLine();
        // After the end of the list: an identifier of no parameter.
        const std::string id = chosen < device.attributes.size() ? device.attributes[chosen]->id
                                                                 : std::to_string(chosen * chosen);
        setValue(copy, id, line);
    }
    return copy;
}

void configure(Parser_kv38& parser, const std::vector<char>& file, Device& device,
               ParamDevice* values)
{
    for (const FieldbusType fieldbus : {FieldbusType::Raw, FieldbusType::Modbus}) {
        try {
            const auto bytes = parser.getCalculatedRawConfig(fieldbus, file, &device, values);
            if (bytes == nullptr) {
                std::abort();
            }
        } catch (const std::exception&) {
            // a valid result
        }
    }
}

void translate(Parser_kv38& parser, const std::vector<char>& file, fuzz::Words& words)
{
    const unsigned inOffset = words.takeU16();
    const unsigned outOffset = words.takeU16();
    const auto device = parser.parse(file, nullptr, inOffset, outOffset);
    parser.getChannelMappingInfoList(device.get());
    configure(parser, file, *device, nullptr);
    ParamDevice own = ownValues(*device);
    configure(parser, file, *device, &own);

    const auto given = words.takeBytes(words.takeByte());
    std::vector<char> block = *device->privateProps.defaultParameterBlock;
    for (std::size_t i = 0; i < given.size() && i < block.size(); ++i) {
        block[i] = static_cast<char>(given[i]);
    }
    if (given.size() > block.size()) {
        block.push_back('\0'); // one byte too long: rejected
    }
    ParamDevice chosen = chosenValues(*device, words);
    configure(parser, file, *device, &chosen);
    const auto configured = parser.parse(file, &block, outOffset, inOffset);
    configure(parser, file, *configured, nullptr);
    // The first device must still work after the second translation, and with another file.
    configure(parser, file, *device, &own);
    configure(parser, {}, *device, &own);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool silent = (fuzz::silence(), true);
    static_cast<void>(silent);
    fuzz::FuzzInput input(data, size);
    Parser_kv38 parser;
    // Log lines are formatted for every second input, to run the code with and without them.
    parser.setLoggingLevel(size % 2 == 0 ? "trace" : "information");
    try {
        translate(parser, input.file, input.words);
    } catch (const std::exception&) {
        // a valid result
    }
    return 0;
}
