// MX0108, MX0116 and MX0208, worked out by hand from their bytes.

#include "ExampleView.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

const std::string filterOptions = "; 0.2 ms=0(0); 3 ms=1(1); 10 ms=2(2); 20 ms=3(3)";

TEST(ExampleDigital, eightInputsHaveABitEach)
{
    const ConfiguredModule module = exampleModule("MX0108.bin");
    EXPECT_THAT(channelLines(module),
                ElementsAre("0 DI 1 | in IX0_0 X | 0.0, 1", "1 DI 2 | in IX0_1 X | 0.1, 1",
                            "2 DI 3 | in IX0_2 X | 0.2, 1", "3 DI 4 | in IX0_3 X | 0.3, 1",
                            "4 DI 5 | in IX0_4 X | 0.4, 1", "5 DI 6 | in IX0_5 X | 0.5, 1",
                            "6 DI 7 | in IX0_6 X | 0.6, 1", "7 DI 8 | in IX0_7 X | 0.7, 1"));
    EXPECT_EQ(
        propertiesOf(*module.device),
        withSizes(exampleProperties("5a010108", "01", "K38-108", "8 DI 24 V DC 3 ms", "kv38-0108"),
                  {{"gtin", "2000000000108"}, {"calibrationDate", "2024-05-3"}}, "1", "0", "2",
                  "0"));
}

// Block 01 00: the second filter option, no input inverted.
TEST(ExampleDigital, eightInputsHaveAFilterAndABitToInvertEach)
{
    const ConfiguredModule module = exampleModule("MX0108.bin");
    std::vector<std::string> expected = {"255 Input filter = 1  | 0..255 | 0+1.0,0" +
                                         filterOptions};
    for (int bit = 0; bit < 8; ++bit) {
        expected.push_back(std::to_string(bit) + " Invert input " + std::to_string(bit + 1) +
                           " = 0  | 0..1 | 1+1." + std::to_string(bit) + ",1");
    }
    EXPECT_THAT(parameterLines(module), ElementsAreArray(expected));
}

// Ids: 18 properties and the image 0-18, parameters 19-27, channels 28-35.
TEST(ExampleDigital, eightInputsHaveASetPerChannel)
{
    EXPECT_THAT(setLines(exampleModule("MX0108.bin")),
                ElementsAre("36 basicInformation: 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18",
                            "37 deviceParameter: 19", "38 channelParams_28: 20",
                            "39 channelParams_29: 21", "40 channelParams_30: 22",
                            "41 channelParams_31: 23", "42 channelParams_32: 24",
                            "43 channelParams_33: 25", "44 channelParams_34: 26",
                            "45 channelParams_35: 27", "46 parameter: 37 38 39 40 41 42 43 44 45",
                            "47 channels: 28 29 30 31 32 33 34 35", "48 default: 36 46 47"));
}

TEST(ExampleDigital, eightInputsAreCandidatesOfOneByte)
{
    const ConfiguredModule module = exampleModule("MX0108.bin");
    const std::map<std::string, std::vector<std::string>> expected = {
        {"IB0", {"28", "29", "30", "31", "32", "33", "34", "35"}}};
    EXPECT_EQ(module.parser.aggregatedChannelCandidates, expected);
}

TEST(ExampleDigital, eightInputsHaveAnImageOfOneLine)
{
    const ConfiguredModule module = exampleModule("MX0108.bin");
    const auto images = attributesOf<datamodel::BinaryObject>(*module.device, 7);
    ASSERT_EQ(images.size(), 1U);
    EXPECT_EQ(images[0]->id, "18");
    EXPECT_EQ(images[0]->name, "productImage");
    EXPECT_EQ(images[0]->mimeType, "image/svgz");
    EXPECT_EQ(images[0]->encoding, "base64");
    // 261 bytes, that begin 1f 8b 08 00 00 00.
    EXPECT_EQ(images[0]->data.size(), 348U);
    EXPECT_EQ(images[0]->data.substr(0, 8), "H4sIAAAA");
}

// Each byte's bits count from 0 again; the second byte follows the eighth channel.
TEST(ExampleDigital, sixteenInputsFillTwoBytes)
{
    const ConfiguredModule module = exampleModule("MX0116.bin");
    std::vector<std::string> channels;
    std::vector<std::string> parameters = {"255 Input filter = 1  | 0..255 | 0+1.0,0" +
                                           filterOptions};
    for (int i = 0; i < 16; ++i) {
        const std::string byte = std::to_string(i / 8);
        const std::string bit = std::to_string(i % 8);
        const std::string number = std::to_string(i);
        const std::string label = std::to_string(i + 1);
        channels.push_back(number + " DI " + label + " | in IX" + byte + "_" + bit + " X | " +
                           byte + "." + bit + ", 1");
        parameters.push_back(number + " Invert input " + label + " = 0  | 0..1 | " +
                             std::to_string(1 + i / 8) + "+1." + bit + ",1");
    }
    EXPECT_THAT(channelLines(module), ElementsAreArray(channels));
    EXPECT_THAT(parameterLines(module), ElementsAreArray(parameters));
    EXPECT_EQ(
        propertiesOf(*module.device),
        withSizes(exampleProperties("5a010116", "01", "K38-116", "16 DI 24 V DC 3 ms", "kv38-0116"),
                  {{"gtin", "2000000000116"}, {"calibrationDate", "2024-05-3"}}, "2", "0", "3",
                  "0"));
}

TEST(ExampleDigital, sixteenInputsMoveWithTheOffset)
{
    ConfiguredModule module = exampleModule("MX0116.bin");
    module.device = module.parser.parse(module.mxData, nullptr, 10, 20);
    const std::vector<std::string> lines = channelLines(module);
    EXPECT_EQ(lines.front(), "0 DI 1 | in IX10_0 X | 10.0, 1");
    EXPECT_EQ(lines.back(), "15 DI 16 | in IX11_7 X | 11.7, 1");
    EXPECT_EQ(propertyOf(*module.device, "inDataOffset"), "10");
    EXPECT_EQ(propertyOf(*module.device, "outDataOffset"), "20");
}

// Outputs, then six overload inputs (kind byte c5: bit 6 set); the inputs 14 and 15 are called "-".
TEST(ExampleDigital, outputsHaveTheirOverloadsAsInputsAndTwoAreDropped)
{
    const ConfiguredModule module = exampleModule("MX0208.bin");
    std::vector<std::string> expected;
    for (int i = 0; i < 8; ++i) {
        const std::string bit = std::to_string(i);
        expected.push_back(bit + " DO " + std::to_string(i + 1) + " | out QX0_" + bit + " X | 0." +
                           bit + ", 1");
    }
    for (int i = 0; i < 6; ++i) {
        const std::string bit = std::to_string(i);
        expected.push_back(std::to_string(8 + i) + " Overload " + std::to_string(i + 1) +
                           " | in IX0_" + bit + " X | 0." + bit + ", 1");
    }
    EXPECT_THAT(channelLines(module), ElementsAreArray(expected));
    const auto channels = attributesOf<testkit::ParserAccess::ChannelP>(*module.device, 9);
    EXPECT_EQ(channels[7]->privateProps.flagBit6, 0);
    EXPECT_EQ(channels[8]->privateProps.flagBit6, 1);
    // The dropped bits have filled the byte.
    EXPECT_EQ(module.parser.inBytePosition, 1U);
    EXPECT_EQ(module.parser.inBitPosition, 0U);
}

// Block 02 aa: the third option; the bits 1, 3, 5 and 7 are set.
TEST(ExampleDigital, outputsHaveSubstituteValues)
{
    const ConfiguredModule module = exampleModule("MX0208.bin");
    std::vector<std::string> expected = {
        "255 Behaviour on bus fault = 2  | 0..255 | 0+1.0,0; Substitute value=0(0); Hold last "
        "value=1(1); Switch off=2(2)"};
    for (int i = 0; i < 8; ++i) {
        expected.push_back(std::to_string(i) + " Substitute value = " + std::to_string(i % 2) +
                           "  | 0..1 | 1+1." + std::to_string(i) + ",1");
    }
    EXPECT_THAT(parameterLines(module), ElementsAreArray(expected));
    EXPECT_EQ(
        propertiesOf(*module.device),
        withSizes(exampleProperties("5a020208", "02", "K38-208", "8 DO 24 V DC 0.5 A", "kv38-0208"),
                  {{"gtin", "20000002080005"}, {"calibrationDate", "2024-05-3"}}, "1", "1", "2",
                  "2"));
}

} // namespace
