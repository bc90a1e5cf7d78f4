#include <datamodel/DataModel.h>
#include <devices/database/DeviceProperties.h>

#include <gtest/gtest.h>

namespace {

struct HostRecord
{};

void expectAttributeTags(const datamodel::Attribute& attribute)
{
    EXPECT_EQ(attribute.baseObjectTag, "BaseObject");
    EXPECT_EQ(attribute.attributeTag, "Attribute");
}

void expectDeviceTags(const datamodel::Device& device)
{
    expectAttributeTags(device);
    EXPECT_EQ(device.catalogDeviceInfoTag, "CatalogDeviceInfo");
    EXPECT_EQ(device.deviceTag, "Device");
}

TEST(ClassTag, OfABaseObject)
{
    EXPECT_EQ(datamodel::BaseObject().baseObjectTag, "BaseObject");
}

TEST(ClassTag, OfAnAttribute)
{
    expectAttributeTags(datamodel::Attribute());
}

TEST(ClassTag, OfAStaticProperty)
{
    const datamodel::StaticProperty property;
    expectAttributeTags(property);
    EXPECT_EQ(property.staticPropertyTag, "StaticProperty");
}

TEST(ClassTag, OfACatalogDeviceInfo)
{
    const datamodel::CatalogDeviceInfo info;
    expectAttributeTags(info);
    EXPECT_EQ(info.catalogDeviceInfoTag, "CatalogDeviceInfo");
}

TEST(ClassTag, OfADevice)
{
    expectDeviceTags(datamodel::Device());
}

TEST(ClassTag, OfADeviceTemplateIsThatOfTheDeviceAtEveryLevel)
{
    expectDeviceTags(datamodel::Device_p<devices::database::DeviceProperties>());
}

TEST(ClassTag, OfTheUsersDeviceIsThatOfADevice)
{
    expectDeviceTags(datamodel::ParamDevice());
}

TEST(ClassTag, OfABinaryObject)
{
    const datamodel::BinaryObject object;
    expectAttributeTags(object);
    EXPECT_EQ(object.binaryObjectTag, "BinaryObject");
}

TEST(ClassTag, OfASet)
{
    const datamodel::Set set;
    expectAttributeTags(set);
    EXPECT_EQ(set.setTag, "Set");
}

TEST(ClassTag, OfARoleHoldsTheSetsTagToo)
{
    const datamodel::Role role;
    expectAttributeTags(role);
    EXPECT_EQ(role.setTag, "Set");
    EXPECT_EQ(role.roleTag, "Role");
}

TEST(ClassTag, OfAChannel)
{
    const datamodel::Channel channel;
    expectAttributeTags(channel);
    EXPECT_EQ(channel.channelTag, "Channel");
    EXPECT_EQ(datamodel::Channel_p<HostRecord>().channelTag, "Channel");
}

TEST(ClassTag, OfAParameter)
{
    const datamodel::Parameter parameter;
    expectAttributeTags(parameter);
    EXPECT_EQ(parameter.parameterTag, "Parameter");
    EXPECT_EQ(datamodel::Parameter_p<HostRecord>().parameterTag, "Parameter");
}

TEST(ClassTag, OfAnOptionAndAValueRange)
{
    EXPECT_EQ(datamodel::ParameterOption().parameterOptionTag, "ParameterOption");
    EXPECT_EQ(datamodel::ParameterValueRange().parameterValueRangeTag, "ParameterValueRange");
}

} // namespace
