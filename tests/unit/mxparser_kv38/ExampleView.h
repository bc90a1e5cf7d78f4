#pragma once

#include "ConfiguredModule.h"
#include "DeviceView.h"

#include <string>
#include <vector>

/// A channel as "NUMBER NAME | DIRECTION SYMBOL SIZE LETTER | BYTE.BIT, BITS".
inline std::vector<std::string> channelLines(const ConfiguredModule& module)
{
    std::vector<std::string> lines;
    for (const auto* channel : attributesOf<testkit::ParserAccess::ChannelP>(*module.device, 9)) {
        const auto& place = channel->privateProps;
        lines.push_back(std::to_string(place.channelNumber) + " " + channel->name + " | " +
                        channel->direction + " " + channel->iecSymbol + " " + channel->dataType +
                        " | " + std::to_string(place.byteAddress) + "." +
                        std::to_string(place.bitOffset) + ", " + std::to_string(place.bitLength));
    }
    return lines;
}

/// A parameter as "CHANNEL NAME = VALUE UNIT | MIN..MAX | BYTE+SIZE.BIT,BITS", options after it as
/// "; TEXT=VALUE(RAW)".
inline std::vector<std::string> parameterLines(const ConfiguredModule& module)
{
    std::vector<std::string> lines;
    for (const auto* parameter :
         attributesOf<testkit::ParserAccess::ParameterP>(*module.device, 25)) {
        const auto& place = parameter->privateProps;
        std::string line = std::to_string(place.channelNumber) + " " + parameter->name + " = " +
                           parameter->value + " " + parameter->unit + " | " +
                           parameter->valueRange->min + ".." + parameter->valueRange->max + " | " +
                           std::to_string(place.byteOffset) + "+" + std::to_string(place.dataSize) +
                           "." + std::to_string(place.bitOffset) + "," +
                           std::to_string(place.bitLength);
        for (std::size_t i = 0; i < parameter->options.size(); ++i) {
            line += "; " + parameter->options[i]->text + "=" + parameter->options[i]->value + "(" +
                    std::to_string(place.optionValues.at(i)) + ")";
        }
        lines.push_back(line);
    }
    return lines;
}

/// A set or role as "ID NAME: MEMBERS".
inline std::vector<std::string> setLines(const ConfiguredModule& module)
{
    std::vector<std::string> lines;
    for (const auto& attribute : module.device->attributes) {
        if (attribute->typeCode() == 27 || attribute->typeCode() == 28) {
            const auto& set = static_cast<const datamodel::Set&>(*attribute);
            std::string line = set.id + " " + set.name + ":";
            for (const std::string& member : set.members) {
                line += " " + member;
            }
            lines.push_back(line);
        }
    }
    return lines;
}

/// The static properties that all examples have; the catalogue entries differ in three.
inline NamesAndValues exampleProperties(const std::string& moduleId, const std::string& moduleType,
                                        const std::string& orderCode, const std::string& label,
                                        const std::string& component)
{
    return {{"moduleId", moduleId},        {"moduleType", moduleType},
            {"brandVersion", "2.1"},       {"brandId", "41"},
            {"brandSerialNumber", "0"},    {"productVersion", "01.02.03"},
            {"brandOrderCode", orderCode}, {"brandLabelName", label},
            {"brandHwRevision", "05"},     {"mxVersion", component + " 01.02.03"}};
}

/// The first properties, then those of the extension and the sizes.
inline NamesAndValues withSizes(NamesAndValues properties, const NamesAndValues& extension,
                                const std::string& in, const std::string& out,
                                const std::string& parameters, const std::string& diagnosis)
{
    properties.insert(properties.end(), extension.begin(), extension.end());
    const NamesAndValues sizes = {
        {"inDataSize", in},     {"outDataSize", out},          {"inDataOffset", "0"},
        {"outDataOffset", "0"}, {"paramDataSize", parameters}, {"diagDataSize", diagnosis}};
    properties.insert(properties.end(), sizes.begin(), sizes.end());
    return properties;
}
