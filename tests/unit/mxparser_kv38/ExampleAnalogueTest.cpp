// MX0304, MX0404 and MX0502, worked out by hand from their bytes. Texts are bytes: \xB1 is the
// plus-minus sign, \xB0 the degree sign, \xB5 the micro sign and \x85 the ellipsis of Windows-1252.

#include "ExampleView.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

TEST(ExampleAnalogue, inputsHaveAWordEach)
{
    const ConfiguredModule module = exampleModule("MX0304.bin");
    EXPECT_THAT(channelLines(module),
                ElementsAre("0 AI 1 | in IW0 W | 0.0, 16", "1 AI 2 | in IW2 W | 2.0, 16",
                            "2 AI 3 | in IW4 W | 4.0, 16", "3 AI 4 | in IW6 W | 6.0, 16"));
    const std::string label = "4 AI \xB1"
                              "10 V / 0-20 mA";
    EXPECT_EQ(module.device->brandLabelName, label);
    EXPECT_EQ(module.device->privateProps.brandLabelName, label);
    EXPECT_EQ(propertiesOf(*module.device),
              withSizes(exampleProperties("5a030304", "03", "K38-304", label, "kv38-0304"),
                        {{"gtin", "20000003040005"}, {"calibrationDate", "2024-05-3"}}, "8", "0",
                        "33", "4"));
}

// Conversion 1: factor 0.001, unit V; conversion 2: factor 0.1, offset -5, unit %. The block holds
// per channel c the sensor, 0x251c + c, 0xdae4 - c, 0x3c + c and 0x40 + 2 c.
TEST(ExampleAnalogue, inputsHaveConvertedLimits)
{
    const ConfiguredModule module = exampleModule("MX0304.bin");
    const std::string sensors = "; \xB1"
                                "10 V=0(0); 0-10 V=1(1); 0-20 mA=2(2); 4-20 mA=3(3); off=9(9)";
    const char* const sensor[] = {"0", "1", "2", "9"};
    // The binary32 nearest to 9502 * 0.001 is 9.50200081, and so for -9.502.
    const char* const limit[] = {"9.500000", "9.501000", "9.502001", "9.503000"};
    const char* const hysteresis[] = {"1.000000", "1.100000", "1.200000", "1.300000"};
    std::vector<std::string> expected = {"255 Mains suppression = 50 Hz | 0..60 | 0+1.0,0"};
    for (int c = 0; c < 4; ++c) {
        const auto place = [c](int offset) { return std::to_string(1 + 8 * c + offset); };
        const std::string channel = std::to_string(c) + " ";
        expected.push_back(channel + "Signal range = " + sensor[c] + "  | 0..255 | " + place(0) +
                           "+1.0,0" + sensors);
        expected.push_back(channel + "Upper limit = " + limit[c] + " V | -10.000000..10.000000 | " +
                           place(1) + "+2.0,0");
        expected.push_back(channel + "Lower limit = -" + limit[c] +
                           " V | -10.000000..10.000000 | " + place(3) + "+2.0,0");
        expected.push_back(channel + "Hysteresis = " + hysteresis[c] +
                           " % | -5.000000..95.000000 | " + place(5) + "+2.0,0");
        expected.push_back(channel + "Wire break check = 1  | 0..1 | " + place(7) + "+1.6,1");
        expected.push_back(channel + "Filter depth = " + std::to_string(c) + "  | 0..7 | " +
                           place(7) + "+1.1,3");
    }
    EXPECT_THAT(parameterLines(module), ElementsAreArray(expected));
}

// Conversion 3: factor -0.01, offset 20, unit mA; so minimum and maximum change places. The
// parameters are in the order of the channels 3 to 0.
TEST(ExampleAnalogue, outputsHaveANegativeFactor)
{
    const ConfiguredModule module = exampleModule("MX0404.bin");
    EXPECT_THAT(channelLines(module),
                ElementsAre("0 AO 1 | out QW0 W | 0.0, 16", "1 AO 2 | out QW2 W | 2.0, 16",
                            "2 AO 3 | out QW4 W | 4.0, 16", "3 AO 4 | out QW6 W | 6.0, 16"));
    EXPECT_THAT(parameterLines(module),
                ElementsAre("3 Substitute current = 20.000000 mA | 0.000000..20.000000 | 0+2.0,0",
                            "2 Substitute current = 19.000000 mA | 0.000000..20.000000 | 2+2.0,0",
                            "1 Substitute current = 18.000000 mA | 0.000000..20.000000 | 4+2.0,0",
                            "0 Substitute current = 17.000000 mA | 0.000000..20.000000 | 6+2.0,0",
                            "255 Ramp = -70000 \xB5"
                            "A/s | -100000..100000 | 8+4.0,0"));
    // "OutData,s=WW" occurs twice; the extension has a version, no GTIN and an empty date.
    EXPECT_EQ(propertiesOf(*module.device),
              withSizes(exampleProperties("5a040404", "04", "K38-404", "4 AO 0-20 mA", "kv38-0404"),
                        {{"calibrationDate", ""}}, "0", "8", "12", "1"));
}

// Ids: 17 properties and the image 0-17, parameters 18-22, channels 23-26.
TEST(ExampleAnalogue, outputsHaveTheirSetsInTheOrderOfTheChannels)
{
    EXPECT_THAT(setLines(exampleModule("MX0404.bin")),
                ElementsAre("27 basicInformation: 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17",
                            "28 deviceParameter: 22", "29 channelParams_23: 21",
                            "30 channelParams_24: 20", "31 channelParams_25: 19",
                            "32 channelParams_26: 18", "33 parameter: 28 29 30 31 32",
                            "34 channels: 23 24 25 26", "35 default: 27 33 34"));
}

// The option list 2 occurs twice; channel 1 has no name; wires are signed bytes.
TEST(ExampleAnalogue, temperatureInputsHaveARepeatedOptionList)
{
    const ConfiguredModule module = exampleModule("MX0502.bin");
    EXPECT_THAT(channelLines(module), ElementsAre("0 Temperature 1 | in IW0 W | 0.0, 16",
                                                  "1 channel_1 | in IW2 W | 2.0, 16"));
    const std::string sensors = "; Pt100=0(0); Pt1000=1(1); Ni120=2(2); 10 \x85 1200 Ohm=5(5); "
                                "Potentiometer=6(6)";
    const std::string limit = " Temperature limit = 450.000000 \xB0"
                              "C | -200.000000..850.000000 | ";
    EXPECT_THAT(parameterLines(module),
                ElementsAre("0 Sensor type = 0  | 0..255 | 0+1.0,0" + sensors,
                            "0" + limit + "1+2.0,0", "0 Wires = -3  | -4..-2 | 3+1.0,0",
                            "1 Sensor type = 6  | 0..255 | 4+1.0,0" + sensors,
                            "1" + limit + "5+2.0,0", "1 Wires = -3  | -4..-2 | 7+1.0,0"));
    EXPECT_EQ(
        propertiesOf(*module.device),
        withSizes(exampleProperties("5a050502", "03", "K38-502", "2 AI RTD Pt100", "kv38-0502"),
                  {{"gtin", "20000005020005"}, {"calibrationDate", "2023-11-0"}}, "4", "0", "8",
                  "2"));
}

} // namespace
