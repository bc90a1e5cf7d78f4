// The Modbus buffers of four example modules, worked out by hand from their parameter blocks
// (group 0x0010) and parameter records (group 0x20c0).

#include "ConfiguredModule.h"

#include <gtest/gtest.h>

namespace {

using devices::parser::FieldbusType;
using testkit::hexBytes;

constexpr auto modbus = FieldbusType::Modbus;
constexpr auto raw = FieldbusType::Raw;

// Block: 32, then per channel sensor (1 byte), two limits and a hysteresis (2 bytes each) and one
// byte with wire break in bit 6 and filter depth in bits 1 to 3. Option values 0 1 2 3 9.
TEST(ModbusExamples, analogueInputsByDefault)
{
    ConfiguredModule module = exampleModule("MX0304.bin");
    EXPECT_EQ(module.configuration(modbus, true),
              hexBytes("3200"
                       "0000 251c dae4 003c 0100 0000"    // 40: bit 6, depth 0
                       "0100 251d dae3 003d 0100 0100"    // 42: bit 6, depth 1
                       "0200 251e dae2 003e 0100 0200"    // 44: bit 6, depth 2
                       "0400 251f dae1 003f 0100 0300")); // value 9 is the fifth option
}

TEST(ModbusExamples, analogueInputsWithChangedValues)
{
    ConfiguredModule module = exampleModule("MX0304.bin");
    module.set("Signal range", "9");
    module.set("Upper limit", "5.0"); // factor 0.001: raw 5000 = 0x1388
    module.set("Filter depth", "7");
    module.set("Wire break check", "0", 1);
    EXPECT_EQ(module.configuration(modbus), hexBytes("3200"
                                                     "0400 1388 dae4 003c 0100 0700"
                                                     "0100 251d dae3 003d 0000 0100"
                                                     "0200 251e dae2 003e 0100 0200"
                                                     "0400 251f dae1 003f 0100 0300"));
    EXPECT_EQ(module.configuration(raw),
              hexBytes("32 09 1388 dae4 003c 4e" // 40 and depth 7 in bits 1 to 3
                       "01 251d dae3 003d 02"
                       "02 251e dae2 003e 44"
                       "09 251f dae1 003f 46"));
}

// Block: sensor, limit, wires per channel. The list with values 0 1 2 5 is followed by one of the
// same identifier with value 6.
TEST(ModbusExamples, temperatureInputsByDefault)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    EXPECT_EQ(module.configuration(modbus, true), hexBytes("0000 1194 fd00 0400 1194 fd00"));
}

TEST(ModbusExamples, temperatureInputsWithChangedValues)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    module.set("Sensor type", "5");
    module.set("Temperature limit", "-200"); // factor 0.1: raw -2000 = 0xf830
    module.set("Wires", "-4", 1);
    EXPECT_EQ(module.configuration(modbus), hexBytes("0300 f830 fd00 0400 1194 fc00"));
    EXPECT_EQ(module.configuration(raw), hexBytes("05 f830 fd 06 1194 fc"));
}

// Block: mode, then preset (4 bytes) and total (8 bytes) of channels 0 and 2. Both numbers are
// those of an input and of an output channel, so their parameters are listed twice.
TEST(ModbusExamples, countersByDefault)
{
    ConfiguredModule module = exampleModule("MX0602.bin");
    EXPECT_EQ(module.configuration(modbus, true),
              hexBytes("0200"
                       "ee6b2800 fffffffffffffd98 ee6b2800 fffffffffffffd99"
                       "ee6b2800 fffffffffffffd98 ee6b2800 fffffffffffffd99"));
}

TEST(ModbusExamples, countersWithChangedValues)
{
    ConfiguredModule module = exampleModule("MX0602.bin");
    module.set("Mode", "200"); // the fourth option
    module.set("Preset", "1");
    module.set("Total", "0", 1);
    EXPECT_EQ(module.configuration(modbus),
              hexBytes("0300"
                       "00000001 fffffffffffffd98 ee6b2800 0000000000000000"
                       "00000001 fffffffffffffd98 ee6b2800 0000000000000000"));
    EXPECT_EQ(module.configuration(raw),
              hexBytes("c8 00000001 fffffffffffffd98 ee6b2800 0000000000000000"));
}

// Block: baud rate, one byte with two bit fields (bits 0-1 and bit 4), a 2-byte and an 8-byte
// value.
TEST(ModbusExamples, serialInterfaceByDefault)
{
    ConfiguredModule module = exampleModule("MX0701.bin");
    EXPECT_EQ(module.configuration(modbus, true), hexBytes("0100 0100 0000 00fa eeddef0b82167eeb"));
}

TEST(ModbusExamples, serialInterfaceWithChangedValues)
{
    ConfiguredModule module = exampleModule("MX0701.bin");
    const auto names = module.parser.getParameterListOrderdLikeKv38(module.device.get());
    std::vector<std::string> inOrder;
    for (const auto* parameter : names) {
        inOrder.push_back(parameter->name);
    }
    ASSERT_EQ(inOrder.size(), 5U);
    module.set(inOrder[0], "8"); // the fourth option
    module.set(inOrder[1], "2"); // bits 0-1
    module.set(inOrder[2], "1"); // bit 4
    module.set(inOrder[4], "-1");
    EXPECT_EQ(module.configuration(modbus), hexBytes("0300 0200 0100 00fa ffffffffffffffff"));
    EXPECT_EQ(module.configuration(raw), hexBytes("08 12 00fa ffffffffffffffff"));
}

} // namespace
