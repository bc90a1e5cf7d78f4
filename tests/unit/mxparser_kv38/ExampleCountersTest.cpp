// MX0602, MX0701 and MX0803, worked out by hand from their bytes.

#include "ExampleView.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

// Bits, fields and 32/64-bit values side by side, see docs/format/channels.md for the addresses.
// The names of the outputs 0 and 2 are those of the inputs: the first entry of a number counts.
TEST(ExampleCounters, channelsAreAlignedAsTheModuleDoes)
{
    const ConfiguredModule module = exampleModule("MX0602.bin");
    EXPECT_THAT(
        channelLines(module),
        ElementsAre("0 Gate 1 open | in IX0_0 X | 0.0, 1", "1 State 1 | in IB0#1,7 B | 0.1, 3",
                    "2 Count 1 | in ID2 D | 2.0, 32", "3 Gate 2 open | in IX6_0 X | 6.0, 1",
                    "4 Frequency 2 | in IW8 W | 8.0, 16", "5 State 2 | in IB10#3,31 B | 10.3, 5",
                    "6 Count 2 | in IL14 L | 14.0, 64", "0 Gate 1 open | out QX0_0 X | 0.0, 1",
                    "2 Count 1 | out QB1 B | 1.0, 8", "7 Reset 2 | out QX2_7 X | 2.7, 1",
                    "8 Set value | out QD6 D | 6.0, 32", "9 Reserved | out   | 0.0, 4",
                    "10 No image | out   | 0.0, 4"));
}

TEST(ExampleCounters, parametersReachToTheEndsOfTheirRanges)
{
    const ConfiguredModule module = exampleModule("MX0602.bin");
    const std::string preset = " Preset = 4000000000  | 0..4294967295 | "; // ee6b2800
    EXPECT_THAT(
        parameterLines(module),
        ElementsAre(
            "255 Mode = 2  | 0..255 | 0+1.0,0; up=0(0); down=1(1); up/down=2(2); gate=200(200)",
            "0" + preset + "1+4.0,0",
            // 2^64 - 616 and 2^64 - 615
            "0 Total = 18446744073709551000  | 0..18446744073709551615 | 5+8.0,0",
            "2" + preset + "13+4.0,0",
            "2 Total = 18446744073709551001  | 0..18446744073709551615 | 17+8.0,0"));
    EXPECT_EQ(
        propertiesOf(*module.device),
        withSizes(exampleProperties("5a060602", "05", "K38-602", "2 counters 32 bit", "kv38-0602"),
                  {{"gtin", "20000006020005"}, {"calibrationDate", "2024-05-3"}}, "22", "10", "25",
                  "0"));
}

// Ids: 18 properties 0-17 (no image), parameters 18-22, channels 23-35. Inputs and outputs share
// the numbers 0 and 2; the last two channels have no process data.
TEST(ExampleCounters, sharedNumbersHaveTheirSetsTwice)
{
    EXPECT_THAT(setLines(exampleModule("MX0602.bin")),
                ElementsAre("36 basicInformation: 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17",
                            "37 deviceParameter: 18", "38 channelParams_23: 19 20",
                            "39 channelParams_25: 21 22", "40 channelParams_30: 19 20",
                            "41 channelParams_31: 21 22", "42 parameter: 37 38 39 40 41",
                            "43 channels: 23 24 25 26 27 28 29 30 31 32 33",
                            "44 default: 36 42 43"));
}

TEST(ExampleCounters, candidatesAreTheSingleBitsAlone)
{
    const ConfiguredModule module = exampleModule("MX0602.bin");
    const std::map<std::string, std::vector<std::string>> expected = {
        {"IB0", {"23"}}, {"IB6", {"26"}}, {"QB0", {"30"}}, {"QB2", {"32"}}};
    EXPECT_EQ(module.parser.aggregatedChannelCandidates, expected);
}

TEST(ExampleCounters, theRecordOfTheDatabaseIsFilled)
{
    const ConfiguredModule module = exampleModule("MX0602.bin");
    const auto& record = module.device->privateProps;
    EXPECT_EQ(module.device->deviceTypeId, "kv38.5a060602");
    EXPECT_EQ(record.family, "kv38");
    EXPECT_EQ(record.moduleIdText, "5a060602");
    EXPECT_EQ(record.brandLabelName, "2 counters 32 bit");
    EXPECT_EQ(record.text4, std::string(1, '\0'));
    EXPECT_EQ(record.text5, std::string(1, '\0'));
    EXPECT_EQ(record.inDataSize, 22U);
    EXPECT_EQ(record.outDataSize, 10U);
    EXPECT_TRUE(record.hostBytes->empty());
    EXPECT_TRUE(record.mxFileData->empty()); // filled when a database is populated
    const testkit::Bytes block =
        testkit::hexBytes("02 ee6b2800 fffffffffffffd98 ee6b2800 fffffffffffffd99");
    EXPECT_THAT(*record.defaultParameterBlock,
                ElementsAreArray(std::vector<char>(block.begin(), block.end())));
}

// A status and a control byte, then 23 bytes each way in turns.
TEST(ExampleCounters, serialBytesAreInterleaved)
{
    const ConfiguredModule module = exampleModule("MX0701.bin");
    std::vector<std::string> expected = {"0 Status | in IB0 B | 0.0, 8",
                                         "1 Control | out QB0 B | 0.0, 8"};
    for (int i = 0; i < 23; ++i) {
        const std::string byte = std::to_string(i + 1);
        expected.push_back(std::to_string(2 + i) + " Rx " + std::to_string(i) + " | in IB" + byte +
                           " B | " + byte + ".0, 8");
        expected.push_back(std::to_string(32 + i) + " Tx " + std::to_string(i) + " | out QB" +
                           byte + " B | " + byte + ".0, 8");
    }
    EXPECT_THAT(channelLines(module), ElementsAreArray(expected));
}

// Block 03 01 00fa eeddef0b82167eeb: 9600 baud, parity in the bits 0-1 and stop bits in bit 4 of
// the second byte. The number is -(2^64 - 0xeeddef0b82167eeb) = -1234567890123456789.
TEST(ExampleCounters, serialParametersHaveBitFieldsWithOptions)
{
    const ConfiguredModule module = exampleModule("MX0701.bin");
    EXPECT_THAT(
        parameterLines(module),
        ElementsAre("255 Baud rate = 3  | 0..255 | 0+1.0,0; 1200=1(1); 9600=3(3); 19200=5(5); "
                    "115200=8(8)",
                    "255 Parity = 1  | 0..3 | 1+1.0,2; none=0(0); even=1(1); odd=2(2)",
                    "255 Stop bits = 0  | 0..1 | 1+1.4,1; 1=0(0); 2=1(1)",
                    "255 Receive timeout = 250 ms | 1..60000 | 2+2.0,0",
                    "255 Serial number = -1234567890123456789  | "
                    "-9223372036854775808..9223372036854775807 | 4+8.0,0"));
    EXPECT_EQ(
        propertiesOf(*module.device),
        withSizes(exampleProperties("5a070701", "06", "K38-701", "RS-485 interface", "kv38-0701"),
                  {{"gtin", "20000007010005"}, {"calibrationDate", "2024-05-3"}}, "24", "24", "12",
                  "1"));
}

// Three phases of 4 + 4 + 4 + 2 bytes, then 8 bytes of energy.
TEST(ExampleCounters, powerValuesFollowWithoutGaps)
{
    const ConfiguredModule module = exampleModule("MX0803.bin");
    EXPECT_THAT(
        channelLines(module),
        ElementsAre("10 L1 U | in ID0 D | 0.0, 32", "11 L1 I | in ID4 D | 4.0, 32",
                    "12 L1 P | in ID8 D | 8.0, 32", "23 L1 cos phi | in IW12 W | 12.0, 16",
                    "24 L2 U | in ID14 D | 14.0, 32", "25 L2 I | in ID18 D | 18.0, 32",
                    "26 L2 P | in ID22 D | 22.0, 32", "27 L2 cos phi | in IW26 W | 26.0, 16",
                    "28 L3 U | in ID28 D | 28.0, 32", "29 L3 I | in ID32 D | 32.0, 32",
                    "30 L3 P | in ID36 D | 36.0, 32", "31 L3 cos phi | in IW40 W | 40.0, 16",
                    "90 Energy | in IL42 L | 42.0, 64"));
}

// Conversion 1: factor 0.5, no offset, unit A. The block is 00 00c8 000f 000f 000f.
TEST(ExampleCounters, powerParametersBelongToTheModuleAndThreeChannels)
{
    const ConfiguredModule module = exampleModule("MX0803.bin");
    EXPECT_THAT(parameterLines(module),
                ElementsAre("255 Wiring = 0  | 0..255 | 0+1.0,0; Star=0(0); Delta=1(1)",
                            "255 Transformer ratio = 100.000000 A | 0.500000..10000.000000 | "
                            "1+2.0,0",
                            "10 Demand interval = 15 min | 1..60 | 3+2.0,0",
                            "11 Demand interval = 15 min | 1..60 | 5+2.0,0",
                            "12 Demand interval = 15 min | 1..60 | 7+2.0,0"));
    EXPECT_EQ(propertiesOf(*module.device),
              withSizes(exampleProperties("5a080803", "07", "K38-803", "3-phase power measurement",
                                          "kv38-0803"),
                        {{"gtin", "20000008030005"}, {"calibrationDate", "2024-05-3"}}, "50", "0",
                        "9", "4"));
}

} // namespace
