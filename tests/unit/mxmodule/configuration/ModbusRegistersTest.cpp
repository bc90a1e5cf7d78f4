#include "configuration/DecodedImage.h"

#include "InvalidInput.h"
#include "TestModule.h"

#include <gmock/gmock.h>

namespace {

using mxmodule::imageOfRegisters;
using mxmodule::placesInRegisters;
using testing::ElementsAre;
using testing::HasSubstr;
using testkit::Bytes;
using testkit::hexBytes;

class ModbusRegisters : public testing::Test
{
protected:
    ModbusRegisters()
    {
        // Without the parameter outside the image, those of the module are Filter, A=B, X/Y, Low
        // bits, Whole byte, Gain; then comes Level of AI 1 and AI 2.
        device.parameters.erase(device.parameters.begin() + 7);
    }

    Bytes image(const std::string& registers)
    {
        const Bytes bytes = hexBytes(registers);
        const auto decoded = imageOfRegisters(
            {bytes.begin(), bytes.end()}, placesInRegisters(device), device, device.parameterBlock);
        return {decoded.begin(), decoded.end()};
    }

    std::string messageFor(const std::string& registers)
    {
        try {
            image(registers);
        } catch (const mxmodule::InvalidInput& invalid) {
            return invalid.what();
        }
        return "accepted";
    }

    void setType(std::size_t parameter, std::uint8_t datatype)
    {
        device.parameters[parameter].field = {0, datatype, 0, 0};
    }

    TestModule module;
    mxmodule::DeviceReport device = module.report();
};

TEST_F(ModbusRegisters, standInWholeRegistersAfterEachOther)
{
    setType(3, 6);  // A=B: UInt32
    setType(4, 2);  // X/Y: UInt16
    setType(5, 10); // Low bits: of no datatype
    std::vector<std::pair<std::size_t, std::size_t>> places;
    for (const auto& place : placesInRegisters(device)) {
        places.emplace_back(place.begin, place.size);
    }
    using Pair = std::pair<std::size_t, std::size_t>;
    EXPECT_THAT(places, ElementsAre(Pair(0, 2), Pair(2, 4), Pair(6, 2), Pair(8, 0), Pair(8, 2),
                                    Pair(10, 2), Pair(12, 2), Pair(14, 2)));
}

TEST_F(ModbusRegisters, giveTheImageBack)
{
    // Filter's third option has the number 2; A=B -1; X/Y 9; low bits 5 of the byte 0x15; gain
    // 0x40; levels 11 and 12. Byte 7 belongs to no parameter.
    EXPECT_EQ(image("0200 ff00 0900 0500 1500 4000 0b00 0c00"),
              hexBytes("02 0b 0c ff 15 40 09 00"));
}

TEST_F(ModbusRegisters, keepTheBitsThatTheyDoNotHold)
{
    device.parameters.erase(device.parameters.begin() + 6); // Whole byte
    device.parameterBlock[4] = '\xF2';
    EXPECT_EQ(image("0000 0500 0000 0500 6400 0a00 0b00"), hexBytes("00 0a 0b 05 f5 64 00 00"));
}

TEST_F(ModbusRegisters, haveOneSize)
{
    EXPECT_EQ(messageFor("02"),
              "Found 1 byte, expected the 16 bytes of the module's Modbus registers");
    EXPECT_EQ(messageFor("0200"),
              "Found 2 bytes, expected the 16 bytes of the module's Modbus registers");
    EXPECT_THAT(messageFor("0200 ff00 0900 0500 1500 4000 0b00 0c00 00"),
                HasSubstr("Found 17 bytes"));
}

TEST_F(ModbusRegisters, holdPositionsInOptionLists)
{
    EXPECT_THAT(messageFor("0600 ff00 0900 0500 1500 4000 0b00 0c00"),
                HasSubstr("parameter \"Filter\" of the module (#" + device.parameters[0].id +
                          ", byte 0): found 06 00 in byte 0 of the registers, expected 00 00 to "
                          "05 00, the position of one of its options [off = 0]"));
    EXPECT_THAT(messageFor("0001 ff00 0900 0500 1500 4000 0b00 0c00"), HasSubstr("found 00 01"));
    device.parameters[0].options.clear();
    EXPECT_THAT(messageFor("0000 ff00 0900 0500 1500 4000 0b00 0c00"),
                HasSubstr("its option list is empty"));
}

TEST_F(ModbusRegisters, holdNoMoreThanABitField)
{
    EXPECT_THAT(messageFor("0200 ff00 0900 0800 1500 4000 0b00 0c00"),
                HasSubstr("found 08 00 in byte 6 of the registers, expected 00 to 07, its 3 bits"));
}

TEST_F(ModbusRegisters, ofAParameterOutsideTheImageStandForNothing)
{
    device.parameters[4].field = {mxformat::statedPosition(8), 1, 0, 0};
    EXPECT_THAT(messageFor("0200 ff00 0900 0500 1500 4000 0b00 0c00"),
                HasSubstr("none: it lies outside the parameter image of 8 bytes"));
}

} // namespace
