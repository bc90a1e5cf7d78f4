#include "DeviceTree.h"

#include <Poco/Base64Decoder.h>
#include <Poco/Base64Encoder.h>

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace bench {

namespace {

using devices::parser::mx::Parser_kv38;
using ChannelP = Parser_kv38::ChannelP;
using ParameterP = Parser_kv38::ParameterP;
using datamodel::Attribute;
using Attributes = std::vector<std::shared_ptr<Attribute>>;

template <typename T>
const T& as(const Attribute& attribute)
{
    return static_cast<const T&>(attribute);
}

std::shared_ptr<Attribute> copyOf(const datamodel::StaticProperty& ready)
{
    auto property = std::make_shared<datamodel::StaticProperty>();
    property->name = ready.name;
    property->value = ready.value;
    return property;
}

std::string encoded(const std::string& bytes)
{
    std::ostringstream text;
    Poco::Base64Encoder encoder(text);
    encoder.rdbuf()->setLineLength(0);
    encoder << bytes;
    encoder.close();
    return text.str();
}

std::shared_ptr<Attribute> copyOf(const datamodel::BinaryObject& ready, const std::string& image)
{
    auto object = std::make_shared<datamodel::BinaryObject>();
    object->name = ready.name;
    object->mimeType = ready.mimeType;
    object->encoding = ready.encoding;
    object->data = encoded(image);
    return object;
}

std::shared_ptr<Attribute> copyOf(const ChannelP& ready)
{
    auto channel = std::make_shared<ChannelP>();
    channel->name = ready.name;
    channel->dataType = ready.dataType;
    channel->direction = ready.direction;
    channel->numberText1 = ready.numberText1;
    channel->numberText2 = ready.numberText2;
    channel->iecSymbol = ready.iecSymbol;
    channel->privateProps = ready.privateProps;
    return channel;
}

std::shared_ptr<Attribute> copyOf(const ParameterP& ready)
{
    auto parameter = std::make_shared<ParameterP>();
    parameter->name = ready.name;
    parameter->value = ready.value;
    parameter->unit = ready.unit;
    parameter->flagBit0 = ready.flagBit0;
    parameter->flagBit1 = ready.flagBit1;
    parameter->hasOptionList = ready.hasOptionList;
    for (const auto& readyOption : ready.options) {
        auto option = std::make_shared<datamodel::ParameterOption>();
        option->text = readyOption->text;
        option->value = readyOption->value;
        parameter->options.push_back(option);
    }
    parameter->valueRange->min = ready.valueRange->min;
    parameter->valueRange->max = ready.valueRange->max;

    auto& place = parameter->privateProps;
    const auto& readyPlace = ready.privateProps;
    place.channelNumber = readyPlace.channelNumber;
    place.record = readyPlace.record;
    place.dataSize = readyPlace.dataSize;
    place.byteOffset = readyPlace.byteOffset;
    place.bitOffset = readyPlace.bitOffset;
    place.bitLength = readyPlace.bitLength;
    for (const std::uint8_t value : readyPlace.optionValues) {
        place.optionValues.push_back(value);
    }
    return parameter;
}

bool isParameterOf(const Attribute& attribute, std::uint8_t channelNumber)
{
    return attribute.typeCode() == datamodel::parameterTypeCode &&
           as<ParameterP>(attribute).privateProps.channelNumber == channelNumber;
}

// The members of the channel's set, found by walking the whole list.
std::vector<std::string> parametersOf(const ChannelP& channel, const Attributes& attributes)
{
    std::vector<std::string> ids;
    for (const auto& attribute : attributes) {
        if (isParameterOf(*attribute, channel.privateProps.channelNumber)) {
            ids.push_back(attribute->id);
        }
    }
    return ids;
}

std::vector<std::vector<std::string>> groupByChannel(const Attributes& attributes)
{
    std::vector<std::vector<std::string>> groups;
    for (const auto& attribute : attributes) {
        if (attribute->typeCode() == datamodel::channelTypeCode) {
            auto ids = parametersOf(as<ChannelP>(*attribute), attributes);
            if (!ids.empty()) {
                groups.push_back(std::move(ids));
            }
        }
    }
    return groups;
}

void fill(datamodel::Set& set, const datamodel::Set& ready)
{
    set.name = ready.name;
    for (const std::string& member : ready.members) {
        set.members.push_back(member);
    }
}

// Copies the sets and the role; sets of channels get the grouped members.
class SetCopier
{
public:
    explicit SetCopier(std::vector<std::vector<std::string>> grouped) : groups(std::move(grouped))
    {}

    std::shared_ptr<Attribute> copyOf(const datamodel::Set& ready)
    {
        auto set = std::make_shared<datamodel::Set>();
        if (ready.name.rfind("channelParams_", 0) == 0) {
            set->name = ready.name;
            set->members = std::move(groups.at(next++));
        } else {
            fill(*set, ready);
        }
        return set;
    }

private:
    std::vector<std::vector<std::string>> groups;
    std::size_t next = 0;
};

std::shared_ptr<Attribute> copyOf(const datamodel::Role& ready)
{
    auto role = std::make_shared<datamodel::Role>();
    fill(*role, ready);
    return role;
}

// Null for a set, which needs the attributes before it.
std::shared_ptr<Attribute> copyOf(const Attribute& ready, const std::string& image)
{
    switch (ready.typeCode()) {
    case datamodel::channelTypeCode:
        return copyOf(as<ChannelP>(ready));
    case datamodel::parameterTypeCode:
        return copyOf(as<ParameterP>(ready));
    case datamodel::binaryObjectTypeCode:
        return copyOf(as<datamodel::BinaryObject>(ready), image);
    case datamodel::staticPropertyTypeCode:
        return copyOf(as<datamodel::StaticProperty>(ready));
    case datamodel::roleTypeCode:
        return copyOf(as<datamodel::Role>(ready));
    default:
        return nullptr;
    }
}

void add(Device& device, const std::shared_ptr<Attribute>& attribute, const Attribute& ready)
{
    attribute->id = ready.id;
    device.attributes.push_back(attribute);
}

void copyRecord(Device& device, const Device& ready)
{
    device.brandLabelName = ready.brandLabelName;
    device.deviceTypeId = ready.deviceTypeId;
    auto& record = device.privateProps;
    const auto& readyRecord = ready.privateProps;
    record.family = readyRecord.family;
    record.moduleIdText = readyRecord.moduleIdText;
    record.brandLabelName = readyRecord.brandLabelName;
    record.text4 = readyRecord.text4;
    record.text5 = readyRecord.text5;
    record.inDataSize = readyRecord.inDataSize;
    record.outDataSize = readyRecord.outDataSize;
    *record.defaultParameterBlock = *readyRecord.defaultParameterBlock;
}

// The visible content of one attribute, for comparison.
std::vector<std::string> textsOf(const Attribute& attribute)
{
    std::vector<std::string> texts{std::to_string(attribute.typeCode()), attribute.id};
    if (attribute.typeCode() == datamodel::parameterTypeCode) {
        const auto& parameter = as<ParameterP>(attribute);
        texts.insert(texts.end(), {parameter.name, parameter.value, parameter.unit,
                                   parameter.valueRange->min, parameter.valueRange->max});
        for (const auto& option : parameter.options) {
            texts.insert(texts.end(), {option->text, option->value});
        }
    } else if (attribute.typeCode() == datamodel::channelTypeCode) {
        const auto& channel = as<ChannelP>(attribute);
        texts.insert(texts.end(), {channel.name, channel.dataType, channel.direction,
                                   channel.numberText1, channel.numberText2, channel.iecSymbol});
    } else if (attribute.typeCode() == datamodel::staticPropertyTypeCode) {
        const auto& property = as<datamodel::StaticProperty>(attribute);
        texts.insert(texts.end(), {property.name, property.value});
    } else if (attribute.typeCode() == datamodel::binaryObjectTypeCode) {
        const auto& object = as<datamodel::BinaryObject>(attribute);
        texts.insert(texts.end(), {object.name, object.mimeType, object.encoding, object.data});
    } else if (attribute.typeCode() == datamodel::setTypeCode ||
               attribute.typeCode() == datamodel::roleTypeCode) {
        const auto& set = as<datamodel::Set>(attribute);
        texts.push_back(set.name);
        texts.insert(texts.end(), set.members.begin(), set.members.end());
    }
    return texts;
}

} // namespace

std::string imageOf(const Device& device)
{
    for (const auto& attribute : device.attributes) {
        if (attribute->typeCode() == datamodel::binaryObjectTypeCode) {
            std::istringstream text(as<datamodel::BinaryObject>(*attribute).data);
            Poco::Base64Decoder decoder(text);
            return {std::istreambuf_iterator<char>(decoder), {}};
        }
    }
    return "";
}

std::shared_ptr<Device> buildFromReadyValues(const Device& ready, const std::string& image)
{
    auto device = std::make_shared<Device>();
    auto next = ready.attributes.begin();
    const auto end = ready.attributes.end();
    for (; next != end && (*next)->typeCode() != datamodel::setTypeCode &&
           (*next)->typeCode() != datamodel::roleTypeCode;
         ++next) {
        add(*device, copyOf(**next, image), **next);
    }
    SetCopier sets(groupByChannel(device->attributes));
    for (; next != end; ++next) {
        const bool isSet = (*next)->typeCode() == datamodel::setTypeCode;
        add(*device, isSet ? sets.copyOf(as<datamodel::Set>(**next)) : copyOf(**next, image),
            **next);
    }
    copyRecord(*device, ready);
    return device;
}

bool sameTree(const Device& first, const Device& second)
{
    if (first.attributes.size() != second.attributes.size() ||
        first.brandLabelName != second.brandLabelName ||
        first.deviceTypeId != second.deviceTypeId) {
        return false;
    }
    for (std::size_t i = 0; i < first.attributes.size(); ++i) {
        if (textsOf(*first.attributes[i]) != textsOf(*second.attributes[i])) {
            return false;
        }
    }
    return true;
}

} // namespace bench
