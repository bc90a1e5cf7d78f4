#include "devices/parser/mx/Parser_kv38.h"

#include "DecimalText.h"
#include "LogLine.h"

#include <mxformat/ParameterRecord.h>

#include <cassert>
#include <utility>

namespace devices::parser::mx {

namespace {

constexpr std::size_t mostBasicInformation = 19; // static properties and product image

using Attributes = std::vector<std::shared_ptr<datamodel::Attribute>>;

bool isParameterOf(const datamodel::Attribute& attribute, std::uint8_t channelNumber)
{
    return attribute.typeCode() == datamodel::parameterTypeCode &&
           static_cast<const Parser_kv38::ParameterP&>(attribute).privateProps.channelNumber ==
               channelNumber;
}

// The sets of a device while its attributes are walked; none is registered yet.
struct SetsOfDevice
{
    std::shared_ptr<datamodel::Set> basicInformation = std::make_shared<datamodel::Set>();
    std::shared_ptr<datamodel::Set> deviceParameters = std::make_shared<datamodel::Set>();
    std::shared_ptr<datamodel::Set> channels = std::make_shared<datamodel::Set>();
    std::vector<std::shared_ptr<datamodel::Set>> channelParameters;

    explicit SetsOfDevice(const Attributes& all) : attributes(all)
    {
        basicInformation->members.reserve(mostBasicInformation);
        for (const auto& attribute : attributes) {
            add(*attribute);
        }
    }

private:
    void add(const datamodel::Attribute& attribute)
    {
        switch (attribute.typeCode()) {
        case datamodel::binaryObjectTypeCode:
        case datamodel::staticPropertyTypeCode:
            basicInformation->members.push_back(attribute.id);
            break;
        case datamodel::parameterTypeCode:
            if (isParameterOf(attribute, mxformat::moduleLevel)) {
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

    // A channel's parameters are found by walking all attributes once more: a module has few of
    // both.
    void addChannel(const Parser_kv38::ChannelP& channel)
    {
        auto parameters = std::make_shared<datamodel::Set>();
        for (const auto& attribute : attributes) {
            if (isParameterOf(*attribute, channel.privateProps.channelNumber)) {
                parameters->members.push_back(attribute->id);
            }
        }
        if (!parameters->members.empty()) {
            parameters->name = "channelParams_" + channel.id;
            channelParameters.push_back(std::move(parameters));
        }
        if (!channel.dataType.empty()) {
            channels->members.push_back(channel.id);
        }
    }

    const Attributes& attributes;
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
    const SetsOfDevice sets(dev->attributes);

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
    parameters->members.reserve(1 + sets.channelParameters.size());
    for (const auto& set : sets.channelParameters) {
        parameters->members.push_back(decimalText(assignIdAndAddAttribute(set)));
    }
    place(parameters, "parameter", *role);
    place(sets.channels, "channels", *role);
    assignIdAndAddAttribute(role);
}

} // namespace devices::parser::mx
