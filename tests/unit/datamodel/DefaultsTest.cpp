#include <datamodel/DataModel.h>

#include <gmock/gmock.h>

#include <memory>

namespace {

using testing::IsEmpty;

TEST(Defaults, BaseObjectHasNeitherIdNorText)
{
    const datamodel::BaseObject object;
    EXPECT_THAT(object.id, IsEmpty());
    EXPECT_THAT(object.auxText, IsEmpty());
}

TEST(Defaults, StaticPropertyIsEmpty)
{
    const datamodel::StaticProperty property;
    EXPECT_THAT(property.name, IsEmpty());
    EXPECT_THAT(property.value, IsEmpty());
}

TEST(Defaults, DeviceIsEmpty)
{
    const datamodel::Device device;
    EXPECT_THAT(device.brandLabelName, IsEmpty());
    EXPECT_THAT(device.deviceTypeId, IsEmpty());
    EXPECT_THAT(device.attributes, IsEmpty());
}

TEST(Defaults, BinaryObjectIsEmpty)
{
    const datamodel::BinaryObject object;
    EXPECT_THAT(object.name, IsEmpty());
    EXPECT_THAT(object.mimeType, IsEmpty());
    EXPECT_THAT(object.encoding, IsEmpty());
    EXPECT_THAT(object.data, IsEmpty());
}

TEST(Defaults, FreshRoleHasNoNameAndNoMembers)
{
    const datamodel::Role role;
    EXPECT_EQ(role.setTag, "Set");
    EXPECT_EQ(role.roleTag, "Role");
    EXPECT_THAT(role.name, IsEmpty());
    EXPECT_THAT(role.members, IsEmpty());
}

TEST(Defaults, ChannelIsEmpty)
{
    const datamodel::Channel channel;
    EXPECT_THAT(channel.name, IsEmpty());
    EXPECT_THAT(channel.dataType, IsEmpty());
    EXPECT_THAT(channel.direction, IsEmpty());
    EXPECT_THAT(channel.numberText1, IsEmpty());
    EXPECT_THAT(channel.numberText2, IsEmpty());
    EXPECT_THAT(channel.extraText, IsEmpty());
    EXPECT_THAT(channel.iecSymbol, IsEmpty());
}

TEST(Defaults, ParameterHasNoOptionsAndAllFlagsFalse)
{
    const datamodel::Parameter parameter;
    EXPECT_THAT(parameter.name, IsEmpty());
    EXPECT_THAT(parameter.value, IsEmpty());
    EXPECT_THAT(parameter.unit, IsEmpty());
    EXPECT_FALSE(parameter.flagBit0);
    EXPECT_FALSE(parameter.flagBit1);
    EXPECT_FALSE(parameter.hasOptionList);
    EXPECT_THAT(parameter.options, IsEmpty());
}

TEST(Defaults, ParameterHasAnEmptyValueRangeOfItsOwn)
{
    const datamodel::Parameter parameter;
    const datamodel::Parameter other;
    ASSERT_NE(parameter.valueRange, nullptr);
    EXPECT_EQ(parameter.valueRange->parameterValueRangeTag, "ParameterValueRange");
    EXPECT_THAT(parameter.valueRange->min, IsEmpty());
    EXPECT_THAT(parameter.valueRange->max, IsEmpty());
    EXPECT_EQ(parameter.valueRange.use_count(), 1);
    EXPECT_NE(parameter.valueRange, other.valueRange);
}

TEST(Defaults, OptionIsEmpty)
{
    const datamodel::ParameterOption option;
    EXPECT_THAT(option.text, IsEmpty());
    EXPECT_THAT(option.value, IsEmpty());
}

TEST(Ownership, DeviceReleasesItsAttributes)
{
    auto device = std::make_shared<datamodel::Device>();
    const auto kept = std::make_shared<datamodel::Channel>();
    device->attributes.push_back(kept);
    device->attributes.push_back(std::make_shared<datamodel::Parameter>());
    const std::weak_ptr<datamodel::Attribute> watched = device->attributes.back();
    device.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(kept.use_count(), 1);
}

TEST(Ownership, ParameterReleasesItsOptionsAndRange)
{
    auto parameter = std::make_shared<datamodel::Parameter>();
    parameter->options.push_back(std::make_shared<datamodel::ParameterOption>());
    const std::weak_ptr<datamodel::ParameterOption> option = parameter->options.front();
    const std::weak_ptr<datamodel::ParameterValueRange> range = parameter->valueRange;
    parameter.reset();
    EXPECT_TRUE(option.expired());
    EXPECT_TRUE(range.expired());
}

// Records its destruction, which shows the order of a class's members.
struct Witness
{
    Witness() = default;
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    ~Witness()
    {
        if (earlier.lock() != nullptr) {
            *earlierWasAlive = true;
        }
    }
    std::weak_ptr<datamodel::Attribute> earlier;
    bool* earlierWasAlive = nullptr;
};

TEST(Ownership, PrivatePropsGoBeforeTheInheritedMembers)
{
    bool inheritedWasAlive = false;
    {
        datamodel::Device_p<Witness> device;
        device.attributes.push_back(std::make_shared<datamodel::Attribute>());
        device.privateProps.earlier = device.attributes.front();
        device.privateProps.earlierWasAlive = &inheritedWasAlive;
    }
    EXPECT_TRUE(inheritedWasAlive);
}

} // namespace
