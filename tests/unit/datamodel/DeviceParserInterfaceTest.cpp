#include "VirtualSlot.h"

#include <devices/parser/IDeviceParser.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>

namespace {

using devices::parser::FieldbusType;
using devices::parser::IDeviceParser;

TEST(DeviceParserInterface, SlotsAreInThisOrder)
{
    // Slots 0 and 1 are the two destructors.
    EXPECT_EQ(testkit::slotOf(&IDeviceParser::populateDatabase), 2);
    EXPECT_EQ(testkit::slotOf(&IDeviceParser::parse), 3);
    EXPECT_EQ(testkit::slotOf(&IDeviceParser::getCalculatedRawConfig), 4);
    EXPECT_EQ(testkit::slotOf(&IDeviceParser::getChannelMappingInfoList), 5);
}

TEST(DeviceParserInterface, IsAbstractWithoutDataMembers)
{
    EXPECT_TRUE(std::is_abstract_v<IDeviceParser>);
    EXPECT_TRUE(std::has_virtual_destructor_v<IDeviceParser>);
    EXPECT_EQ(sizeof(IDeviceParser), sizeof(void*));
}

TEST(DeviceParserInterface, BuiltDeviceIsADevice)
{
    EXPECT_TRUE((std::is_base_of_v<datamodel::Device, IDeviceParser::BuiltDevice>));
    EXPECT_TRUE((std::is_same_v<decltype(IDeviceParser::BuiltDevice::privateProps),
                                devices::database::DeviceProperties>));
}

TEST(ChannelMappingInfo, IsZeroFilledAtFirst)
{
    // Built over non-zero bytes, so that an uninitialised member is detected.
    alignas(IDeviceParser::ChannelMappingInfo) unsigned char
        place[sizeof(IDeviceParser::ChannelMappingInfo)];
    std::memset(place, 0xA5, sizeof place);
    auto* info = new (place) IDeviceParser::ChannelMappingInfo;
    EXPECT_EQ(info->iecSymbol, "");
    EXPECT_EQ(info->area, 0);
    EXPECT_EQ(info->sizeLetter, 0);
    EXPECT_EQ(info->byteAddress, 0U);
    EXPECT_EQ(info->bitOffset, 0);
    EXPECT_EQ(info->mask, 0);
    info->~ChannelMappingInfo();
}

TEST(ChannelMappingInfo, MembersAreInThisOrderAndWidth)
{
    using Info = IDeviceParser::ChannelMappingInfo;
    const Info info;
    const auto* start = reinterpret_cast<const char*>(&info);
    const auto offset = [start](const void* member) {
        return static_cast<const char*>(member) - start;
    };
    const auto symbolSize = static_cast<std::ptrdiff_t>(sizeof(std::string));
    EXPECT_EQ(offset(&info.iecSymbol), 0);
    EXPECT_EQ(offset(&info.area), symbolSize);
    EXPECT_EQ(offset(&info.sizeLetter), symbolSize + 1);
    EXPECT_EQ(offset(&info.byteAddress), symbolSize + 4);
    EXPECT_EQ(offset(&info.bitOffset), symbolSize + 8);
    EXPECT_EQ(offset(&info.mask), symbolSize + 9);
    EXPECT_TRUE((std::is_same_v<decltype(Info::byteAddress), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(Info::mask), std::uint8_t>));
}

TEST(FieldbusType, ModbusIsTwo)
{
    EXPECT_EQ(static_cast<int>(FieldbusType::Modbus), 2);
}

TEST(FieldbusType, TakesAnyValue)
{
    // A fixed underlying type makes every value of it a valid one.
    constexpr auto other = static_cast<FieldbusType>(77);
    EXPECT_NE(other, FieldbusType::Modbus);
    EXPECT_EQ(static_cast<int>(other), 77);
}

} // namespace
