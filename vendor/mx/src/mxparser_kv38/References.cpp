#include "devices/parser/mx/Parser_kv38.h"

#include "DecimalText.h"
#include "LogLine.h"

#include <mxformat/ParameterRecord.h>

#include <array>
#include <cassert>
#include <utility>

namespace devices::parser::mx {

namespace {

using Attributes = std::vector<std::shared_ptr<datamodel::Attribute>>;

std::uint8_t channelNumberOfParameter(const datamodel::Attribute& attribute)
{
    return static_cast<const Parser_kv38::ParameterP&>(attribute).privateProps.channelNumber;
}

// What the sets are made of, found in one walk. The parameters of a channel number are a chain
// through the attributes, which takes one allocation however many channels there are.
class Census
{
public:
    std::size_t channels = 0;
    std::size_t basicInformation = 0; // static properties and binary objects

    explicit Census(const Attributes& inAttributes)
        : attributes(inAttributes), next(inAttributes.size())
    {
        first.fill(end());
        for (std::uint32_t position = end(); position-- > 0;) {
            count(*attributes[position], position);
        }
    }

    // The ids of the parameters of a channel number, in the order of the device.
    std::vector<std::string> idsOfParameters(std::uint8_t channelNumber) const
    {
        std::size_t length = 0;
        for (std::uint32_t at = first[channelNumber]; at != end(); at = next[at]) {
            ++length;
        }
        std::vector<std::string> ids;
        ids.reserve(length);
        for (std::uint32_t at = first[channelNumber]; at != end(); at = next[at]) {
            ids.push_back(attributes[at]->id);
        }
        return ids;
    }

private:
    std::uint32_t end() const { return static_cast<std::uint32_t>(attributes.size()); }

    void count(const datamodel::Attribute& attribute, std::uint32_t position)
    {
        switch (attribute.typeCode()) {
        case datamodel::parameterTypeCode: {
            std::uint32_t& begin = first[channelNumberOfParameter(attribute)];
            next[position] = begin;
            begin = position;
            break;
        }
        case datamodel::channelTypeCode:
            ++channels;
            break;
        default:
            ++basicInformation;
        }
    }

    const Attributes& attributes;
    std::array<std::uint32_t, 256> first;
    std::vector<std::uint32_t> next;
};

// The sets of a device while its attributes are walked; none is registered yet.
struct SetsOfDevice
{
    std::shared_ptr<datamodel::Set> basicInformation = std::make_shared<datamodel::Set>();
    std::shared_ptr<datamodel::Set> deviceParameters = std::make_shared<datamodel::Set>();
    std::shared_ptr<datamodel::Set> channels = std::make_shared<datamodel::Set>();
    std::vector<std::shared_ptr<datamodel::Set>> channelParameters;

    Census census;

    explicit SetsOfDevice(const Attributes& attributes) : census(attributes)
    {
        basicInformation->members.reserve(census.basicInformation);
        channels->members.reserve(census.channels);
        deviceParameters->members = census.idsOfParameters(mxformat::moduleLevel);
        for (const auto& attribute : attributes) {
            add(*attribute);
        }
    }

    void addChannel(const Parser_kv38::ChannelP& channel)
    {
        std::vector<std::string> ids = census.idsOfParameters(channel.privateProps.channelNumber);
        if (!ids.empty()) {
            auto parameters = std::make_shared<datamodel::Set>();
            parameters->name = "channelParams_" + channel.id;
            parameters->members = std::move(ids);
            channelParameters.push_back(std::move(parameters));
        }
        if (!channel.dataType.empty()) {
            channels->members.push_back(channel.id);
        }
    }

    void add(const datamodel::Attribute& attribute)
    {
        switch (attribute.typeCode()) {
        case datamodel::binaryObjectTypeCode:
        case datamodel::staticPropertyTypeCode:
            basicInformation->members.push_back(attribute.id);
            break;
        case datamodel::channelTypeCode:
            addChannel(static_cast<const Parser_kv38::ChannelP&>(attribute));
            break;
        default:
            break;
        }
    }
};

} // namespace

std::uint32_t
Parser_kv38::assignIdAndAddAttribute(const std::shared_ptr<datamodel::Attribute>& attribute)
{
    traceEntry(logger, "assignIdAndAddAttribute");
    attribute->id.clear();
    appendDecimal(attribute->id, nextObjectId);
    dev->attributes.push_back(attribute);
    return nextObjectId++;
}

void Parser_kv38::addStaticProperty(const std::string& name, const std::string& value)
{
    traceEntry(logger, "addStaticProperty");
    assert(this->dev);
    auto property = std::make_shared<datamodel::StaticProperty>();
    property->name = name;
    property->value = value;
    assignIdAndAddAttribute(std::move(property));
}

void Parser_kv38::setupReferences()
{
    traceEntry(logger, "setupReferences");
    assert(this->dev);
    SetsOfDevice sets(dev->attributes);

    // Registers `set` as a member of `owner`, unless it stayed empty.
    const auto place = [this](const std::shared_ptr<datamodel::Set>& set, const char* name,
                              datamodel::Set& owner) {
        if (set->members.empty()) {
            return;
        }
        set->name = name;
        owner.members.push_back(decimalText(assignIdAndAddAttribute(set)));
    };
    const auto role = std::make_shared<datamodel::Role>();
    role->name = "default";
    place(sets.basicInformation, "basicInformation", *role);
    const auto parameters = std::make_shared<datamodel::Set>();
    place(sets.deviceParameters, "deviceParameter", *parameters);
    for (const auto& set : sets.channelParameters) {
        parameters->members.push_back(decimalText(assignIdAndAddAttribute(set)));
    }
    place(parameters, "parameter", *role);
    place(sets.channels, "channels", *role);
    assignIdAndAddAttribute(role);
}

} // namespace devices::parser::mx
