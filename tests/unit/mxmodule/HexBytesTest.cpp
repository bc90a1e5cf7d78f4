#include "HexBytes.h"

#include "InvalidInput.h"

#include <gmock/gmock.h>

namespace {

using mxmodule::bytesOfHex;
using testing::ElementsAre;

TEST(HexBytes, areTwoDigitsEach)
{
    EXPECT_THAT(bytesOfHex("00ffA5"), ElementsAre(0, '\xFF', '\xA5'));
    EXPECT_TRUE(bytesOfHex("").empty());
}

TEST(HexBytes, mayBeSeparated)
{
    EXPECT_THAT(bytesOfHex(" 01 02\n03:04,0x05 0X06\t"), ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(HexBytes, refuseEverythingElse)
{
    for (const char* text : {"1", "1 2", "0g", "g0", "01 2", "-1", "01;02", "0x1"}) {
        EXPECT_THROW(bytesOfHex(text), mxmodule::InvalidInput) << text;
    }
}

TEST(HexBytes, nameThePlaceOfWhatIsWrong)
{
    try {
        bytesOfHex("01 0z");
        FAIL();
    } catch (const mxmodule::InvalidInput& invalid) {
        EXPECT_STREQ(invalid.what(), "Found \"0z\" at character 4, expected two hexadecimal digits "
                                     "for each byte");
    }
}

} // namespace
