#include "devices/parser/mx/Parser_kv38.h"

#include "DecimalText.h"
#include "LogLine.h"
#include "RecordLayout.h"

#include <array>
#include <cassert>

namespace devices::parser::mx {

namespace {

using Attributes = std::vector<std::shared_ptr<datamodel::Attribute>>;

std::uint8_t channelNumberOfParameter(const datamodel::Attribute& attribute)
{
    return static_cast<const Parser_kv38::ParameterP&>(attribute).privateProps.channelNumber;
}

// The parameters of each channel number, in the order of the device: chains through its attributes,
// which take one allocation however many channels there are.
class ParametersOfChannels
{
public:
    explicit ParametersOfChannels(const Attributes& inAttributes)
        : attributes(inAttributes), next(inAttributes.size())
    {
        first.fill(end());
        for (std::size_t position = end(); position-- > 0;) {
            if (attributes[position]->typeCode() == datamodel::parameterTypeCode) {
                std::size_t& begin = first[channelNumberOfParameter(*attributes[position])];
                next[position] = begin;
                begin = position;
            }
        }
    }

    std::vector<std::string> idsOf(std::uint8_t channelNumber) const
    {
        std::size_t count = 0;
        for (std::size_t at = first[channelNumber]; at != end(); at = next[at]) {
            ++count;
        }
        std::vector<std::string> ids;
        ids.reserve(count);
        for (std::size_t at = first[channelNumber]; at != end(); at = next[at]) {
            ids.push_back(attributes[at]->id);
        }
        return ids;
    }

private:
    std::size_t end() const { return attributes.size(); }

    const Attributes& attributes;
    std::array<std::size_t, 256> first;
    std::vector<std::size_t> next;
};

// The sets of a device while its attributes are walked; none is registered yet.
struct SetsOfDevice
{
    std::shared_ptr<datamodel::Set> basicInformation = std::make_shared<datamodel::Set>();
    std::shared_ptr<datamodel::Set> deviceParameters = std::make_shared<datamodel::Set>();
    std::shared_ptr<datamodel::Set> channels = std::make_shared<datamodel::Set>();
    std::vector<std::shared_ptr<datamodel::Set>> channelParameters;

    ParametersOfChannels parametersOf;

    explicit SetsOfDevice(const Attributes& attributes) : parametersOf(attributes) {}

    void addChannel(const Parser_kv38::ChannelP& channel)
    {
        std::vector<std::string> ids = parametersOf.idsOf(channel.privateProps.channelNumber);
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
        case datamodel::parameterTypeCode:
            if (channelNumberOfParameter(attribute) == moduleLevel) {
                deviceParameters->members.push_back(attribute.id);
            }
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
    attribute->id = decimalText(nextObjectId);
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
    assignIdAndAddAttribute(property);
}

void Parser_kv38::setupReferences()
{
    traceEntry(logger, "setupReferences");
    assert(this->dev);
    SetsOfDevice sets(dev->attributes);
    for (const auto& attribute : dev->attributes) {
        sets.add(*attribute);
    }

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
