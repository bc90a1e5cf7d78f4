// MX0001, MX0901 and MX9999, worked out by hand from their bytes.

#include "ExampleView.h"
#include "Failure.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Group 0x0011 states a byte each way; this module has none whatever it states.
TEST(ExampleSpecial, theFieldSupplyHasNoProcessData)
{
    const ConfiguredModule module = exampleModule("MX0001.bin");
    EXPECT_THAT(channelLines(module), IsEmpty());
    EXPECT_THAT(parameterLines(module), IsEmpty());
    EXPECT_EQ(
        propertiesOf(*module.device),
        withSizes(exampleProperties("0bc1e800", "09", "K38-001", "Field supply 24 V", "kv38-0001"),
                  {}, "0", "0", "0", "1"));
    EXPECT_THAT(setLines(module),
                ElementsAre("16 basicInformation: 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15",
                            "17 default: 16"));
    EXPECT_EQ(module.parser.paramBuffer, nullptr);
}

// Group 0x0011 states a word each way; this module has two bytes more. Channel 1 is an input and
// an output, both with the first name of the number. The extension names a GTIN and an empty date.
TEST(ExampleSpecial, theCouplerExtensionHasTwoBytesMore)
{
    const ConfiguredModule module = exampleModule("MX0901.bin");
    EXPECT_THAT(channelLines(module), ElementsAre("1 Station state | in IW0 W | 0.0, 16",
                                                  "1 Station state | out QW0 W | 0.0, 16"));
    EXPECT_THAT(parameterLines(module), ElementsAre("255 Cycle time = 2000 \xB5s | 500..65000 | "
                                                    "0+2.0,0"));
    EXPECT_EQ(
        propertiesOf(*module.device),
        withSizes(exampleProperties("0e81276d", "08", "K38-901", "Coupler extension", "kv38-0901"),
                  {{"gtin", "20000009010005"}, {"calibrationDate", ""}}, "4", "4", "2", "0"));
    EXPECT_EQ(module.device->privateProps.inDataSize, 4U);
    EXPECT_EQ(module.device->privateProps.outDataSize, 4U);
}

TEST(ExampleSpecial, theCutOffFileIsRefused)
{
    EXPECT_EQ(testkit::failureOf([] { exampleModule("MX9999.bin"); }),
              "Parser::parse(): Truncated mx buffer");
}

} // namespace
