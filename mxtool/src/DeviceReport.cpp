#include "DeviceReport.h"

#include <devices/parser/mx/ByteReaders.h>
#include <mxfileext/mxfileext.h>
#include <mxformat/Groups.h>

#include <algorithm>
#include <array>

namespace mxtool {

namespace {

using devices::parser::mx::Parser_kv38;

constexpr std::size_t flagsOfRecord = 5;
constexpr std::size_t conversionOfRecord = 6;
constexpr std::size_t recordSize = 29;
constexpr std::size_t rangeOfRecord = 8;
constexpr std::size_t rangeSize = 16; // minimum and maximum
constexpr std::uint8_t convertedFlag = 0x04;

DeviceReport::Channel makeChannel(const Parser_kv38::ChannelP& channel)
{
    const auto& place = channel.privateProps;
    return {channel.id,        place.channelNumber, channel.name,
            channel.direction, channel.iecSymbol,   channel.dataType,
            place.byteAddress, place.bitOffset,     place.bitLength};
}

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
    const auto& place = parameter.privateProps;
    return {parameter.id,
            place.channelNumber,
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
            (place.record[flagsOfRecord] & convertedFlag) != 0,
            place.byteOffset,
            place.dataSize,
            place.bitOffset,
            place.bitLength};
}

// Signed values come sign-extended; of the others only UInt64 reaches the highest bit.
mxformat::WholeNumber numberIn(const unsigned char* slot, const mxfileext::ParameterValue_t& of)
{
    using devices::parser::mx::MxParameterDatatype;
    const bool isSigned =
        static_cast<MxParameterDatatype>(of.datatype) != MxParameterDatatype::UInt64;
    return mxformat::WholeNumber::ofBits(devices::parser::mx::readU64BE(slot), isSigned);
}

// Value and range as the companion library reads them, before they become texts.
void addRawValues(const Parser_kv38::ParameterP& parameter, const std::vector<char>& block,
                  DeviceReport::Parameter& shown)
{
    mxfileext::ParameterValue_t decoded{};
    const auto* const bytes = reinterpret_cast<const unsigned char*>(block.data());
    mxfileext::getParameterValue(parameter.privateProps.record, block.empty() ? nullptr : bytes,
                                 &decoded);
    if (decoded.present) {
        shown.raw = numberIn(decoded.value, decoded);
    }
    shown.rawMin = numberIn(decoded.minimum, decoded);
    shown.rawMax = numberIn(decoded.maximum, decoded);
}

// A record without a range has that of its bits.
void addLimits(const Parser_kv38::ParameterP& parameter, DeviceReport::Parameter& shown)
{
    std::array<std::uint8_t, recordSize> record{};
    std::copy_n(parameter.privateProps.record, rangeOfRecord, record.begin());
    std::copy(parameter.privateProps.record + rangeOfRecord + rangeSize,
              parameter.privateProps.record + recordSize,
              record.begin() + rangeOfRecord + rangeSize);
    mxfileext::ParameterValue_t limits{};
    mxfileext::getParameterValue(record.data(), nullptr, &limits);
    shown.rawLowest = numberIn(limits.minimum, limits);
    shown.rawHighest = numberIn(limits.maximum, limits);
}

void addParameter(const Parser_kv38::ParameterP& parameter,
                  const mxformat::ConversionTable& conversions, DeviceReport& report)
{
    DeviceReport::Parameter& shown = report.parameters.emplace_back(makeParameter(parameter));
    addRawValues(parameter, report.parameterBlock, shown);
    addLimits(parameter, shown);
    if (shown.converted) {
        shown.scale = conversions.scale(parameter.privateProps.record[conversionOfRecord]);
    }
}

void addAttribute(const datamodel::Attribute& attribute,
                  const mxformat::ConversionTable& conversions, DeviceReport& report)
{
    switch (attribute.typeCode()) {
    case datamodel::channelTypeCode:
        report.channels.push_back(
            makeChannel(static_cast<const Parser_kv38::ChannelP&>(attribute)));
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

DeviceReport makeReport(const Parser_kv38::DeviceP& device,
                        const mxformat::ConversionTable& conversions)
{
    DeviceReport report;
    report.label = device.brandLabelName;
    report.deviceTypeId = device.deviceTypeId;
    report.parameterBlock = *device.privateProps.defaultParameterBlock;
    // The companion library is told the size only: it gets the block with each parameter.
    mxfileext::initializeModule(report.parameterBlock.data(),
                                static_cast<unsigned short>(report.parameterBlock.size()));
    for (const auto& attribute : device.attributes) {
        addAttribute(*attribute, conversions, report);
    }
    for (DeviceReport::Parameter& parameter : report.parameters) {
        for (const DeviceReport::Channel& channel : report.channels) {
            auto& names = parameter.channelNames;
            // An input and an output often share number and name.
            if (!parameter.ofModule() && channel.number == parameter.channelNumber &&
                std::find(names.begin(), names.end(), channel.name) == names.end()) {
                names.push_back(channel.name);
            }
        }
    }
    return report;
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

} // namespace mxtool
