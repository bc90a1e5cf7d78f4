#include <datamodel/DataModel.h>
#include <devices/database/DeviceProperties.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

// Hosts are compiled against the order of these members: it must not change.

namespace {

constexpr std::size_t pointerSize = sizeof(void*);
constexpr std::size_t stringSize = sizeof(std::string);

// The distances of `members` from the start of `object`.
template <class Class>
std::vector<std::size_t> offsets(const Class& object, const std::vector<const void*>& members)
{
    const auto* start = reinterpret_cast<const char*>(&object);
    std::vector<std::size_t> result;
    for (const void* member : members) {
        result.push_back(static_cast<std::size_t>(static_cast<const char*>(member) - start));
    }
    return result;
}

// `count` adjacent strings, the first at `first`.
std::vector<std::size_t> strings(std::size_t first, std::size_t count)
{
    std::vector<std::size_t> result;
    for (std::size_t i = 0; i < count; ++i) {
        result.push_back(first + i * stringSize);
    }
    return result;
}

constexpr std::size_t baseObjectSize = pointerSize + 3 * stringSize;
constexpr std::size_t attributeSize = baseObjectSize + stringSize;

TEST(Layout, BaseObject)
{
    const datamodel::BaseObject o;
    EXPECT_EQ(offsets(o, {&o.baseObjectTag, &o.id, &o.auxText}), strings(pointerSize, 3));
    EXPECT_EQ(sizeof o, baseObjectSize);
}

TEST(Layout, Attribute)
{
    const datamodel::Attribute o;
    EXPECT_EQ(offsets(o, {&o.attributeTag}), strings(baseObjectSize, 1));
    EXPECT_EQ(sizeof o, attributeSize);
}

TEST(Layout, StaticProperty)
{
    const datamodel::StaticProperty o;
    EXPECT_EQ(offsets(o, {&o.staticPropertyTag, &o.name, &o.value}), strings(attributeSize, 3));
    EXPECT_EQ(sizeof o, attributeSize + 3 * stringSize);
}

TEST(Layout, CatalogDeviceInfo)
{
    const datamodel::CatalogDeviceInfo o;
    EXPECT_EQ(offsets(o, {&o.catalogDeviceInfoTag, &o.brandLabelName, &o.deviceTypeId}),
              strings(attributeSize, 3));
    EXPECT_EQ(sizeof o, attributeSize + 3 * stringSize);
}

TEST(Layout, Device)
{
    const datamodel::Device o;
    EXPECT_EQ(offsets(o, {&o.deviceTag, &o.attributes}),
              strings(sizeof(datamodel::CatalogDeviceInfo), 2));
    EXPECT_EQ(sizeof o, sizeof(datamodel::CatalogDeviceInfo) + stringSize + sizeof(o.attributes));
}

TEST(Layout, ParamDeviceAddsNothing)
{
    EXPECT_EQ(sizeof(datamodel::ParamDevice), sizeof(datamodel::Device));
}

TEST(Layout, BinaryObject)
{
    const datamodel::BinaryObject o;
    EXPECT_EQ(offsets(o, {&o.binaryObjectTag, &o.name, &o.mimeType, &o.encoding, &o.data}),
              strings(attributeSize, 5));
    EXPECT_EQ(sizeof o, attributeSize + 5 * stringSize);
}

TEST(Layout, SetAndRole)
{
    const datamodel::Role o;
    EXPECT_EQ(offsets(o, {&o.setTag, &o.name, &o.members}), strings(attributeSize, 3));
    EXPECT_EQ(offsets(o, {&o.roleTag}), strings(sizeof(datamodel::Set), 1));
    EXPECT_EQ(sizeof o, sizeof(datamodel::Set) + stringSize);
}

TEST(Layout, Channel)
{
    const datamodel::Channel o;
    EXPECT_EQ(offsets(o, {&o.channelTag, &o.name, &o.dataType, &o.direction, &o.numberText1,
                          &o.numberText2, &o.extraText, &o.iecSymbol}),
              strings(attributeSize, 8));
    EXPECT_EQ(sizeof o, attributeSize + 8 * stringSize);
}

TEST(Layout, Parameter)
{
    const datamodel::Parameter o;
    const std::size_t flags = attributeSize + 4 * stringSize;
    const std::size_t options = flags + pointerSize; // three flags, then the vector's alignment
    EXPECT_EQ(offsets(o, {&o.parameterTag, &o.name, &o.value, &o.unit}), strings(attributeSize, 4));
    EXPECT_EQ(offsets(o, {&o.flagBit0, &o.flagBit1, &o.hasOptionList}),
              (std::vector<std::size_t>{flags, flags + 1, flags + 2}));
    EXPECT_EQ(offsets(o, {&o.options, &o.valueRange}),
              (std::vector<std::size_t>{options, options + sizeof(o.options)}));
    EXPECT_EQ(sizeof o, options + sizeof(o.options) + sizeof(o.valueRange));
}

TEST(Layout, ParameterOption)
{
    const datamodel::ParameterOption o;
    EXPECT_EQ(offsets(o, {&o.parameterOptionTag, &o.text, &o.value}), strings(pointerSize, 3));
    EXPECT_EQ(sizeof o, pointerSize + 3 * stringSize);
}

TEST(Layout, ParameterValueRange)
{
    const datamodel::ParameterValueRange o;
    EXPECT_EQ(offsets(o, {&o.parameterValueRangeTag, &o.min, &o.max}), strings(pointerSize, 3));
    EXPECT_EQ(sizeof o, pointerSize + 3 * stringSize);
}

struct Record
{
    void* content = nullptr;
};

TEST(Layout, PrivatePropsFollowAllInheritedMembers)
{
    const datamodel::Device_p<Record> device;
    const datamodel::Channel_p<Record> channel;
    const datamodel::Parameter_p<Record> parameter;
    EXPECT_EQ(offsets(device, {&device.privateProps}),
              std::vector<std::size_t>{sizeof(datamodel::Device)});
    EXPECT_EQ(offsets(channel, {&channel.privateProps}),
              std::vector<std::size_t>{sizeof(datamodel::Channel)});
    EXPECT_EQ(offsets(parameter, {&parameter.privateProps}),
              std::vector<std::size_t>{sizeof(datamodel::Parameter)});
    EXPECT_EQ(sizeof device, sizeof(datamodel::Device) + sizeof(Record));
}

TEST(Layout, DeviceProperties)
{
    const devices::database::DeviceProperties o;
    const std::size_t numbers = 4 * stringSize;
    const std::size_t hostBytes = numbers + 2 * sizeof(std::uint32_t);
    const std::size_t shared = sizeof(o.hostBytes);
    EXPECT_EQ(offsets(o, {&o.family, &o.moduleIdText, &o.brandLabelName, &o.text4}), strings(0, 4));
    EXPECT_EQ(offsets(o, {&o.inDataSize, &o.outDataSize, &o.hostBytes}),
              (std::vector<std::size_t>{numbers, numbers + 4, hostBytes}));
    const std::size_t text5 = hostBytes + shared;
    EXPECT_EQ(offsets(o, {&o.text5, &o.mxFileData, &o.defaultParameterBlock}),
              (std::vector<std::size_t>{text5, text5 + stringSize, text5 + stringSize + shared}));
}

template <class Class, class = void>
struct HasId : std::false_type
{};

template <class Class>
struct HasId<Class, std::void_t<decltype(std::declval<Class&>().id)>> : std::true_type
{};

TEST(Layout, OptionAndValueRangeHaveNoId)
{
    EXPECT_TRUE(HasId<datamodel::Parameter>::value);
    EXPECT_FALSE(HasId<datamodel::ParameterOption>::value);
    EXPECT_FALSE(HasId<datamodel::ParameterValueRange>::value);
}

} // namespace
