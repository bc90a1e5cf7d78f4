#include "channels/FreeBits.h"

#include "ChannelTables.h"

#include <gtest/gtest.h>

namespace {

using mxmodule::BitRun;
using mxmodule::ImageArea;

std::string runsOf(const std::vector<BitRun>& runs)
{
    std::string shown;
    for (const BitRun& run : runs) {
        shown += fmt::format("{}+{} ", run.firstBit, run.bits);
    }
    return shown;
}

// Bits 0 to 9, 2 and 3, 3 to 5, 9 to 11, 16 and 17 of 24.
TEST(FreeBits, areThoseWithoutAChannel)
{
    mxmodule::ChannelTable map = emptyMap(3, 1);
    map.channels = {fieldChannel("A", 'I', 0, 2, 2), fieldChannel("B", 'I', 0, 0, 10),
                    fieldChannel("C", 'I', 0, 3, 3), fieldChannel("D", 'I', 1, 1, 3),
                    fieldChannel("E", 'I', 2, 0, 2), fieldChannel("F", 'Q', 0, 0, 3)};
    const ImageArea input = areaOf(map, true);
    EXPECT_EQ(runsOf(input.free), "12+4 18+6 ");
    EXPECT_EQ(runsOf(input.overlapping), "2+4 9+1 ");
    EXPECT_EQ(runsOf(areaOf(map, false).free), "3+5 ");
}

// The data are bits 8 to 15; channels lie in bits 0 to 8 (two of them), 15 and 16.
TEST(FreeBits, areWithinTheData)
{
    mxmodule::ChannelTable map = emptyMap(0);
    map.input = {1, 1};
    map.channels = {fieldChannel("A", 'I', 0, 0, 9), fieldChannel("B", 'I', 0, 0, 9),
                    fieldChannel("C", 'I', 1, 7, 2), fieldChannel("D", 'I', 1, 2, 0)};
    const ImageArea area = areaOf(map, true);
    EXPECT_EQ(area.firstByte, 1U);
    EXPECT_EQ(area.size, 1U);
    EXPECT_EQ(runsOf(area.free), "9+6 ");
    EXPECT_EQ(runsOf(area.overlapping), "0+9 ");
}

} // namespace
