#include "devices/parser/mx/Parser_kv38.h"

#include "LogLine.h"
#include "OneThreadAtATime.h"

#include <mxfileext/mxfileext.h>
#include <mxformat/RegisterOrder.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <iostream>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

namespace devices::parser::mx {

namespace {

using ParameterList = std::list<Parser_kv38::ParameterP*>;

// The position of the raw value in the parameter's option list.
std::uint8_t optionIndex(const Parser_kv38::ParameterP& parameter, std::uint8_t rawValue)
{
    const auto& values = parameter.privateProps.optionValues;
    const auto found = std::find(values.begin(), values.end(), rawValue);
    if (found == values.end()) {
        throw std::runtime_error("Parameter option list value not found: " + parameter.name);
    }
    const auto index = found - values.begin();
    if (index > 255) {
        throw std::runtime_error("Parameter option list index out of bounds: " + parameter.name);
    }
    return static_cast<std::uint8_t>(index);
}

// Appends the whole registers of one parameter, whose left-aligned value is given.
void appendRegisters(const Parser_kv38::ParameterP& parameter,
                     const std::array<unsigned char, 8>& value, std::vector<char>& registers)
{
    if (parameter.hasOptionList) {
        registers.push_back(static_cast<char>(optionIndex(parameter, value[0])));
        registers.push_back(0);
        return;
    }
    const std::uint8_t size = parameter.privateProps.dataSize;
    registers.insert(registers.end(), value.begin(), value.begin() + size);
    if (size % 2 != 0) {
        registers.push_back(0);
    }
}

// Prints `text` to standard error and throws it.
[[noreturn]] void reportAndThrow(const std::string& text)
{
    std::cerr << text << std::endl;
    throw std::runtime_error(text);
}

// Finds the parameters of a device by their identifiers.
class ParameterSearch
{
public:
    explicit ParameterSearch(const datamodel::Device& searched) : device(searched) {}

    // Returns the first parameter with the identifier text `id`, or null.
    Parser_kv38::ParameterP* find(const std::string& id)
    {
        constexpr std::size_t walksPerIndex = 4; // an index costs more than a walk
        const auto& all = device.attributes;
        if (walked > walksPerIndex * all.size()) {
            return findInIndex(id);
        }
        const auto found = std::find_if(all.begin(), all.end(), [&id](const auto& attribute) {
            return isParameter(*attribute) && attribute->id == id;
        });
        walked += static_cast<std::size_t>(found - all.begin());
        return found == all.end() ? nullptr : parameterOf(**found);
    }

private:
    static bool isParameter(const datamodel::Attribute& attribute)
    {
        return attribute.typeCode() == datamodel::parameterTypeCode;
    }

    static Parser_kv38::ParameterP* parameterOf(datamodel::Attribute& attribute)
    {
        return static_cast<Parser_kv38::ParameterP*>(&attribute);
    }

    Parser_kv38::ParameterP* findInIndex(const std::string& id)
    {
        if (index.empty()) {
            for (const auto& attribute : device.attributes) {
                if (isParameter(*attribute)) {
                    index.emplace(attribute->id, parameterOf(*attribute));
                }
            }
        }
        const auto found = index.find(id);
        return found == index.end() ? nullptr : found->second;
    }

    const datamodel::Device& device;
    std::size_t walked = 0; // attributes
    std::unordered_map<std::string_view, Parser_kv38::ParameterP*> index;
};

} // namespace

ParameterList Parser_kv38::getParameterListOrderdLikeKv38(DeviceP* device)
{
    traceEntry(logger, "getParameterListOrderdLikeKv38");
    std::vector<ParameterP*> parameters;
    std::vector<std::uint8_t> owners;
    std::vector<std::uint8_t> channels;
    for (const auto& attribute : device->attributes) {
        if (attribute->typeCode() == datamodel::parameterTypeCode) {
            parameters.push_back(static_cast<ParameterP*>(attribute.get()));
            owners.push_back(parameters.back()->privateProps.channelNumber);
        } else if (attribute->typeCode() == datamodel::channelTypeCode) {
            channels.push_back(static_cast<ChannelP&>(*attribute).privateProps.channelNumber);
        }
    }
    ParameterList list;
    for (const std::size_t position : mxformat::registerOrder(owners, channels)) {
        list.push_back(parameters[position]);
    }
    return list;
}

// The assertion names the parameter, which is called like the device of the last translation.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"

std::shared_ptr<std::vector<char>>
Parser_kv38::createModbusParamBuffer(DeviceP* dev, std::vector<char>* rawParamBuffer)
{
    traceEntry(logger, "createModbusParamBuffer");
    assert(dev != nullptr);
    assert(rawParamBuffer != nullptr);
    auto registers = std::make_shared<std::vector<char>>();
    for (const ParameterP* parameter : getParameterListOrderdLikeKv38(dev)) {
        const MxParameterPrivateProps& place = parameter->privateProps;
        if (rawParamBuffer->size() < std::size_t{place.byteOffset} + place.dataSize) {
            logLine(logger, Poco::Message::PRIO_DEBUG,
                    "byte offset = %d, data size = %d, bit offset = %d, bit length = %d",
                    int{place.byteOffset}, int{place.dataSize}, int{place.bitOffset},
                    int{place.bitLength});
            throw std::runtime_error("Parameter out of bounds: " + parameter->name);
        }
        std::array<unsigned char, 8> value{};
        mxfileext::getLeftAlignedRawParameter(*rawParamBuffer, value.data(), place.byteOffset,
                                              place.dataSize, place.bitOffset, place.bitLength);
        appendRegisters(*parameter, value, *registers);
    }
    return registers;
}

#pragma GCC diagnostic pop

std::shared_ptr<std::vector<char>>
Parser_kv38::getCalculatedRawConfig(FieldbusType fieldbus, const std::vector<char>& mxData,
                                    datamodel::Device* vanillaDev, datamodel::ParamDevice* paramDev)
{
    traceEntry(logger, "getCalculatedRawConfig");
    assert(vanillaDev != nullptr);
    const OneThreadAtATime::Use use(parsers, "Parser_kv38::getCalculatedRawConfig");
    auto* const device = static_cast<DeviceP*>(vanillaDev);
    auto image = std::make_shared<std::vector<char>>(*device->privateProps.defaultParameterBlock);
    if (paramDev != nullptr) {
        if (vanillaDev->deviceTypeId != paramDev->deviceTypeId) {
            reportAndThrow("deviceTypeId mismatch: " + vanillaDev->deviceTypeId + ", " +
                           paramDev->deviceTypeId);
        }
        initializeDataStructs(mxData, nullptr);
        if (image->size() != paramBufferSize) {
            // Not the mx file of this device: values still have to stay within the image.
            mxfileext::initializeModule(image->data(), static_cast<std::uint16_t>(image->size()));
        }
        ParameterSearch parameters(*vanillaDev);
        for (const auto& attribute : paramDev->attributes) {
            const ParameterP* parameter = parameters.find(attribute->id);
            if (parameter == nullptr) {
                reportAndThrow("parameter not found: " + vanillaDev->deviceTypeId + ", " +
                               attribute->id);
            }
            // The companion's signature asks for writable bytes; the record is only read.
            mxfileext::setParameter(0, reinterpret_cast<unsigned char*>(image->data()),
                                    const_cast<unsigned char*>(parameter->privateProps.record),
                                    static_cast<const datamodel::Parameter&>(*attribute).value);
        }
    }
    if (fieldbus == FieldbusType::Modbus) {
        return createModbusParamBuffer(device, image.get());
    }
    return image;
}

} // namespace devices::parser::mx
