#include <datamodel/DataModel.h>
#include <devices/database/DeviceProperties.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace {

struct AnyRecord
{};

// Asks through the base class, as a host does that walks the flat list of a device.
template <class Class>
int reportedCode()
{
    const std::unique_ptr<datamodel::BaseObject> object = std::make_unique<Class>();
    return object->typeCode();
}

TEST(TypeCode, IsTheCodeOfEachClass)
{
    EXPECT_EQ(reportedCode<datamodel::Attribute>(), 5);
    EXPECT_EQ(reportedCode<datamodel::BaseObject>(), 6);
    EXPECT_EQ(reportedCode<datamodel::BinaryObject>(), 7);
    EXPECT_EQ(reportedCode<datamodel::CatalogDeviceInfo>(), 8);
    EXPECT_EQ(reportedCode<datamodel::Channel>(), 9);
    EXPECT_EQ(reportedCode<datamodel::Device>(), 10);
    EXPECT_EQ(reportedCode<datamodel::Parameter>(), 25);
    EXPECT_EQ(reportedCode<datamodel::Role>(), 27);
    EXPECT_EQ(reportedCode<datamodel::Set>(), 28);
    EXPECT_EQ(reportedCode<datamodel::StaticProperty>(), 29);
}

TEST(TypeCode, OfOptionAndValueRange)
{
    EXPECT_EQ(datamodel::ParameterOption().typeCode(), 23);
    EXPECT_EQ(datamodel::ParameterValueRange().typeCode(), 24);
}

TEST(TypeCode, OfATemplateIsThatOfItsBase)
{
    EXPECT_EQ(reportedCode<datamodel::Channel_p<AnyRecord>>(), 9);
    EXPECT_EQ(reportedCode<datamodel::Parameter_p<AnyRecord>>(), 25);
    EXPECT_EQ(reportedCode<datamodel::Device_p<devices::database::DeviceProperties>>(), 10);
}

TEST(TypeCode, OfTheUsersDeviceIsThatOfADevice)
{
    EXPECT_EQ(reportedCode<datamodel::ParamDevice>(), 10);
}

TEST(TypeCode, IsAnInteger)
{
    EXPECT_TRUE((std::is_same_v<decltype(datamodel::Set().typeCode()), int>));
    EXPECT_TRUE((std::is_same_v<decltype(datamodel::ParameterOption().typeCode()), int>));
}

TEST(ClassTree, HasTheseBases)
{
    using namespace datamodel;
    EXPECT_TRUE((std::is_base_of_v<BaseObject, Attribute>));
    EXPECT_TRUE((std::is_base_of_v<Attribute, BinaryObject>));
    EXPECT_TRUE((std::is_base_of_v<Attribute, CatalogDeviceInfo>));
    EXPECT_TRUE((std::is_base_of_v<Attribute, Channel>));
    EXPECT_TRUE((std::is_base_of_v<CatalogDeviceInfo, Device>));
    EXPECT_TRUE((std::is_base_of_v<Attribute, Parameter>));
    EXPECT_TRUE((std::is_base_of_v<Set, Role>));
    EXPECT_TRUE((std::is_base_of_v<Attribute, Set>));
    EXPECT_TRUE((std::is_base_of_v<Attribute, StaticProperty>));
    EXPECT_TRUE((std::is_base_of_v<Device, ParamDevice>));
}

TEST(ClassTree, OptionAndValueRangeAreRootsOfTheirOwn)
{
    using namespace datamodel;
    EXPECT_FALSE((std::is_base_of_v<BaseObject, ParameterOption>));
    EXPECT_FALSE((std::is_base_of_v<BaseObject, ParameterValueRange>));
    EXPECT_TRUE(std::is_polymorphic_v<ParameterOption>);
    EXPECT_TRUE(std::is_polymorphic_v<ParameterValueRange>);
}

} // namespace
