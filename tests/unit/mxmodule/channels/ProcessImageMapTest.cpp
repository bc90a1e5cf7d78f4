#include "channels/ChannelMapOutput.h"

#include "ChannelTables.h"

#include <gmock/gmock.h>
#include <text/TextWidth.h>

#include <sstream>

namespace {

using mxmodule::ChannelTable;
using mxmodule::makeProcessImage;
using testing::HasSubstr;

std::string mapOf(const ChannelTable& map, bool coloured = false)
{
    return mxmodule::processImageMap(makeProcessImage(map), coloured);
}

TEST(ProcessImageMap, isALinePerByte)
{
    ChannelTable map = emptyMap(2);
    map.channels = {bitChannel("Door", 'I', 0, 7), wholeChannel("Level", 'I', 'B', 1, 8)};
    const std::string gap = "········│";
    EXPECT_EQ(mapOf(map), "Module (kv38.01020304)\n\n"
                          "Inputs: 2 bytes from byte 0\n"
                          " Byte  7        6        5        4        3        2        1        "
                          "0\n"
                          "    0 │Door    │" +
                              gap + gap + gap + gap + gap + gap + gap +
                              "\n"
                              "    1 │Level  IB1" +
                              std::string(61, ' ') +
                              "│\n"
                              "  no channel: 7 bits, from byte 0 bit 0\n"
                              "\nOutputs: no data\n");
}

TEST(ProcessImageMap, everyLineFitsInEightyColumns)
{
    ChannelTable map = emptyMap(5000, 3);
    for (std::uint8_t i = 0; i < 12; ++i) {
        map.channels.push_back(fieldChannel(std::string(200, 'x'), 'I', i, 1, 255));
        map.channels.push_back(bitChannel("\u6E29\u5EA6\u6E29\u5EA6\u6E29", 'Q', i, i));
    }
    std::istringstream lines(mapOf(map));
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(text::columnsOf(line), 80U) << line;
    }
}

TEST(ProcessImageMap, marksOverlapsAndWhatLiesOutside)
{
    ChannelTable map = emptyMap(1);
    map.channels = {wholeChannel("A", 'I', 'B', 0, 8), bitChannel("B", 'I', 0, 7),
                    bitChannel("C", 'I', 1, 7)};
    const std::string text = mapOf(map);
    EXPECT_THAT(text, HasSubstr("\n    0!│A  IB0"));
    EXPECT_THAT(text, HasSubstr("\n     !│B  IX0_7│"));
    EXPECT_THAT(text, HasSubstr("\n    1>│C  IX1_7│        │"));
    EXPECT_THAT(text, HasSubstr("  ! several channels: 1 bit, from byte 0 bit 7\n"));
    EXPECT_THAT(text, HasSubstr("  > outside the data of the module\n"));
}

TEST(ProcessImageMap, tellsHowManyItDoesNotShow)
{
    ChannelTable map = emptyMap(1);
    map.channels.assign(7, wholeChannel("A", 'I', 'B', 0, 8));
    EXPECT_THAT(mapOf(map), HasSubstr("│and 3 more "));
}

TEST(ProcessImageMap, namesARunWithoutAChannel)
{
    EXPECT_THAT(mapOf(emptyMap(4000)), HasSubstr("  ... │bytes 0 to 3999: no channel"));
}

TEST(ProcessImageMap, isColouredOnlyWhenAsked)
{
    ChannelTable map = emptyMap(1);
    map.channels = {wholeChannel("A\033[2J", 'I', 'B', 0, 8)};
    EXPECT_EQ(mapOf(map).find('\033'), std::string::npos);
    EXPECT_THAT(mapOf(map, true), HasSubstr("\033[30;48;5;153mA\\x1b[2J  IB0"));
}

} // namespace
