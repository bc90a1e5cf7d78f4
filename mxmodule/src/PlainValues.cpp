#include "PlainValues.h"

#include "ParameterText.h"
#include "configuration/AcceptedValue.h"

#include <text/Utf8.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace mxmodule {

namespace {

std::vector<Option> plainOptions(const DeviceReport::Parameter& parameter)
{
    std::vector<Option> options;
    std::vector<std::string> texts = callTexts(parameter);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const DeviceReport::Option& option = parameter.options[i];
        options.push_back({text::toUtf8(option.text), option.value, option.raw, option.current,
                           std::move(texts[i])});
    }
    return options;
}

Parameter plainParameter(const DeviceReport::Parameter& parameter, const ParameterNames& names)
{
    Parameter plain;
    plain.id = parameter.id;
    if (!parameter.ofModule()) {
        plain.channel = parameter.channelNumber;
    }
    for (const std::string& name : parameter.channelNames) {
        plain.channelNames.push_back(text::toUtf8(name));
    }
    plain.name = text::toUtf8(parameter.name);
    plain.callName = nameInCalls(parameter, names);
    const mxformat::BlockField& field = parameter.field;
    plain.type = field.datatype() != nullptr ? field.datatype()->name : "";
    plain.stored = parameter.raw ? parameter.raw->text() : "";
    plain.value = parameter.value;
    plain.digits = valueDigits(parameter);
    plain.shown = text::toUtf8(valueWithUnit(parameter));
    plain.unit = text::toUtf8(parameter.unit);
    plain.minimum = minimumDigits(parameter);
    plain.maximum = maximumDigits(parameter);
    plain.hasOptions = parameter.hasOptionList;
    plain.options = plainOptions(parameter);
    plain.isPhysical = parameter.converted;
    plain.flagBit0 = parameter.flagBit0;
    plain.flagBit1 = parameter.flagBit1;
    plain.isAccepted = isInRange(parameter);
    plain.place = {field.begin(), field.size(), parameter.bitOffset(), parameter.bitLength()};
    return plain;
}

} // namespace

std::vector<Property> plainProperties(const DeviceReport& device)
{
    std::vector<Property> properties;
    for (const DeviceReport::Property& property : device.properties) {
        properties.push_back({property.id, property.name, text::toUtf8(property.value)});
    }
    return properties;
}

Channel plainChannel(const DeviceReport::Channel& channel)
{
    return {channel.id,          channel.number,    text::toUtf8(channel.name),
            channel.direction,   channel.symbol,    channel.sizeLetter,
            channel.byteAddress, channel.bitOffset, channel.bitLength};
}

std::vector<Channel> plainChannels(const std::vector<DeviceReport::Channel>& channels)
{
    std::vector<Channel> plain;
    std::transform(channels.begin(), channels.end(), std::back_inserter(plain), plainChannel);
    return plain;
}

std::vector<Parameter> plainParameters(const DeviceReport& device, const ParameterNames& names)
{
    std::vector<Parameter> parameters;
    for (const DeviceReport::Parameter& parameter : device.parameters) {
        parameters.push_back(plainParameter(parameter, names));
    }
    return parameters;
}

std::vector<Set> plainSets(const DeviceReport& device)
{
    std::vector<Set> sets;
    for (const DeviceReport::Set& set : device.sets) {
        sets.push_back({set.id, set.name, set.isRole, set.members});
    }
    return sets;
}

std::vector<BinaryObject> plainBinaryObjects(const DeviceReport& device)
{
    std::vector<BinaryObject> objects;
    for (const DeviceReport::Binary& object : device.binaries) {
        objects.push_back({object.id, object.name, object.mimeType, object.encoding, object.data});
    }
    return objects;
}

std::vector<PlacedParameter> plainPlaces(const std::vector<ParameterPlace>& places)
{
    std::vector<PlacedParameter> plain;
    plain.reserve(places.size());
    for (const ParameterPlace& place : places) {
        plain.push_back({place.parameter, place.begin, place.size});
    }
    return plain;
}

} // namespace mxmodule
