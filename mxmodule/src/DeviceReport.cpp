#include "DeviceReport.h"

#include <mxformat/Groups.h>

#include <algorithm>

namespace mxmodule {

namespace {

using devices::parser::mx::Parser_kv38;

std::vector<DeviceReport::Option> makeOptions(const Parser_kv38::ParameterP& parameter)
{
    std::vector<DeviceReport::Option> options;
    bool found = false;
    for (std::size_t i = 0; i < parameter.options.size(); ++i) {
        const datamodel::ParameterOption& option = *parameter.options[i];
        const bool current = !found && option.value == parameter.value;
        found = found || current;
        options.push_back(
            {option.text, option.value, parameter.privateProps.optionValues[i], current});
    }
    return options;
}

DeviceReport::Parameter makeParameter(const Parser_kv38::ParameterP& parameter)
{
    const auto record =
        mxformat::readRecord<mxformat::ParameterRecord>(parameter.privateProps.record);
    return {parameter.id,
            record.channel,
            {},
            parameter.name,
            parameter.value,
            parameter.unit,
            parameter.valueRange->min,
            parameter.valueRange->max,
            parameter.hasOptionList,
            makeOptions(parameter),
            parameter.flagBit0,
            parameter.flagBit1,
            mxformat::isConverted(record.flags),
            record};
}

void addParameter(const Parser_kv38::ParameterP& parameter,
                  const mxformat::ConversionTable& conversions, DeviceReport& report)
{
    DeviceReport::Parameter& shown = report.parameters.emplace_back(makeParameter(parameter));
    const mxformat::BlockField& field = shown.field;
    shown.raw = rawIn(report.parameterBlock, shown);
    const auto [minimum, maximum] = rangeOf(shown.record, field);
    shown.rawMin = field.number(minimum);
    shown.rawMax = field.number(maximum);
    if (shown.converted) {
        shown.scale = conversions.scale(shown.record.conversion);
    }
}

void addAttribute(const datamodel::Attribute& attribute,
                  const mxformat::ConversionTable& conversions, DeviceReport& report)
{
    switch (attribute.typeCode()) {
    case datamodel::channelTypeCode:
        report.channels.push_back(reportOf(static_cast<const Parser_kv38::ChannelP&>(attribute)));
        break;
    case datamodel::parameterTypeCode:
        addParameter(static_cast<const Parser_kv38::ParameterP&>(attribute), conversions, report);
        break;
    case datamodel::staticPropertyTypeCode: {
        const auto& property = static_cast<const datamodel::StaticProperty&>(attribute);
        report.properties.push_back({property.id, property.name, property.value});
        break;
    }
    case datamodel::binaryObjectTypeCode: {
        const auto& object = static_cast<const datamodel::BinaryObject&>(attribute);
        report.binaries.push_back(
            {object.id, object.name, object.mimeType, object.encoding, object.data});
        break;
    }
    case datamodel::setTypeCode:
    case datamodel::roleTypeCode: {
        const auto& set = static_cast<const datamodel::Set&>(attribute);
        report.sets.push_back(
            {set.id, set.name, set.typeCode() == datamodel::roleTypeCode, set.members});
        break;
    }
    default:
        break;
    }
}

} // namespace

unsigned DeviceReport::Parameter::bitOffset() const
{
    return record.datatype == mxformat::bitFieldDatatype ? record.bitOffset : 0;
}

unsigned DeviceReport::Parameter::bitLength() const
{
    if (record.datatype != mxformat::bitFieldDatatype) {
        return 0;
    }
    return record.bitLength == 0 && record.bitOffset != 0 ? field.bits() : record.bitLength;
}

const DeviceReport::Option* DeviceReport::Parameter::currentOption() const
{
    const auto found = std::find_if(options.begin(), options.end(),
                                    [](const Option& option) { return option.current; });
    return found == options.end() ? nullptr : &*found;
}

std::string DeviceReport::property(const std::string& name) const
{
    const auto found =
        std::find_if(properties.begin(), properties.end(),
                     [&name](const Property& property) { return property.name == name; });
    return found == properties.end() ? "" : found->value;
}

DeviceReport::Channel reportOf(const Parser_kv38::ChannelP& channel)
{
    const auto& place = channel.privateProps;
    return {channel.id,        place.channelNumber, channel.name,
            channel.direction, channel.iecSymbol,   channel.dataType,
            place.byteAddress, place.bitOffset,     place.bitLength};
}

DeviceReport makeReport(const Parser_kv38::DeviceP& device,
                        const mxformat::ConversionTable& conversions)
{
    DeviceReport report;
    report.label = device.brandLabelName;
    report.deviceTypeId = device.deviceTypeId;
    report.parameterBlock = *device.privateProps.defaultParameterBlock;
    for (const auto& attribute : device.attributes) {
        addAttribute(*attribute, conversions, report);
    }
    for (DeviceReport::Parameter& parameter : report.parameters) {
        for (const DeviceReport::Channel& channel : report.channels) {
            auto& names = parameter.channelNames;
            // An input and an output often have the same number and name.
            if (!parameter.ofModule() && channel.number == parameter.channelNumber &&
                std::find(names.begin(), names.end(), channel.name) == names.end()) {
                names.push_back(channel.name);
            }
        }
    }
    return report;
}

std::optional<mxformat::WholeNumber> rawIn(const std::vector<char>& image,
                                           const DeviceReport::Parameter& parameter)
{
    const mxformat::BlockField& field = parameter.field;
    if (!field.liesWithin(image.size())) {
        return std::nullopt;
    }
    return field.number(field.read(reinterpret_cast<const std::uint8_t*>(image.data())));
}

mxformat::ConversionTable conversionsOf(const std::vector<char>& mxData)
{
    devices::parser::mx::Parser container;
    container.parse(mxData.data(), static_cast<std::uint32_t>(mxData.size()));
    std::uint32_t size = 0;
    const std::uint8_t* const payload = container.getGroup(mxformat::group::conversions, &size);
    return payload == nullptr ? mxformat::ConversionTable()
                              : mxformat::ConversionTable(payload, size);
}

} // namespace mxmodule
