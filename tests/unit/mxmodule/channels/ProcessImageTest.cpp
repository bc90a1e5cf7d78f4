#include "channels/ProcessImage.h"

#include "ChannelTables.h"

#include <gmock/gmock.h>
#include <text/TextWidth.h>

namespace {

using mxmodule::ChannelTable;
using mxmodule::makeProcessImage;
using mxmodule::MappedChannel;
using mxmodule::ProcessImage;
using mxmodule::totalBits;

using Area = ProcessImage::Area;
using Row = ProcessImage::Row;

Area inputOf(std::uint64_t size, std::vector<MappedChannel> channels)
{
    ChannelTable map = emptyMap(size);
    map.channels = std::move(channels);
    return makeProcessImage(map).input;
}

// Each row as "first byte x count".
std::vector<std::string> rowsOf(const Area& area)
{
    std::vector<std::string> rows;
    for (const Row& row : area.rows) {
        rows.push_back(
            fmt::format("{}x{}{}", row.firstByte, row.count, row.inData ? "" : " outside"));
    }
    return rows;
}

using Names = std::vector<std::string>;

TEST(ProcessImage, hasARowPerByteOfTheDataWithItsGaps)
{
    const Area area = inputOf(1, {bitChannel("A", 'I', 0, 0), fieldChannel("B", 'I', 0, 2, 3)});
    ASSERT_EQ(area.rows.size(), 1U);
    const Row& row = area.rows[0];
    EXPECT_EQ(row.occupied, 0b00011101);
    EXPECT_EQ(row.gaps(), 0b11100010);
    EXPECT_EQ(row.overlaps, 0);
    EXPECT_EQ(row.lanes, 1U);
    ASSERT_EQ(row.pieces.size(), 2U);
    EXPECT_EQ(row.pieces[1].highBit, 4U);
    EXPECT_EQ(row.pieces[1].lowBit, 2U);
    EXPECT_EQ(totalBits(area.gaps), 4U);
}

TEST(ProcessImage, keepsInputsAndOutputsApart)
{
    ChannelTable map = emptyMap(1, 1);
    map.channels = {bitChannel("A", 'I', 0, 0), bitChannel("B", 'Q', 0, 1)};
    const ProcessImage image = makeProcessImage(map);
    EXPECT_EQ(image.input.rows[0].occupied, 0b01);
    EXPECT_EQ(image.output.rows[0].occupied, 0b10);
    EXPECT_EQ(image.output.channels[0].name, "B");
}

TEST(ProcessImage, aValueOfSeveralBytesIsOneBlock)
{
    const Area area = inputOf(4, {wholeChannel("A", 'I', 'D', 0, 32)});
    ASSERT_EQ(area.rows.size(), 4U);
    for (unsigned byte = 0; byte < 4; ++byte) {
        const auto& piece = area.rows[byte].pieces.at(0);
        EXPECT_EQ(piece.byte, byte);
        EXPECT_EQ(piece.joinsAbove, byte != 0);
        EXPECT_EQ(piece.joinsBelow, byte != 3);
    }
}

TEST(ProcessImage, neighboursOfTheSameNameAreNoBlock)
{
    const Area area =
        inputOf(2, {wholeChannel("A", 'I', 'B', 0, 8), wholeChannel("A", 'I', 'B', 1, 8)});
    EXPECT_FALSE(area.rows[0].pieces[0].joinsBelow);
    EXPECT_FALSE(area.rows[1].pieces[0].joinsAbove);
    EXPECT_NE(area.channels[0].colour, area.channels[1].colour);
}

TEST(ProcessImage, aFieldThatCrossesAByteHasAPieceInBoth)
{
    const Area area = inputOf(2, {fieldChannel("A", 'I', 0, 6, 5)});
    EXPECT_EQ(area.rows[0].occupied, 0b11000000);
    EXPECT_EQ(area.rows[1].occupied, 0b00000111);
    EXPECT_EQ(area.rows[1].pieces[0].byte, 1U);
    EXPECT_FALSE(area.rows[1].pieces[0].joinsAbove);
}

TEST(ProcessImage, channelsThatShareBitsLieInDifferentLanes)
{
    const Area area = inputOf(1, {fieldChannel("A", 'I', 0, 0, 5), fieldChannel("B", 'I', 0, 3, 5),
                                  bitChannel("C", 'I', 0, 5)});
    const Row& row = area.rows[0];
    EXPECT_EQ(row.overlaps, 0b00111000); // A and B share 3 and 4, B and C share 5
    EXPECT_EQ(row.lanes, 2U);
    EXPECT_EQ(row.pieces[0].lane, 0U);
    EXPECT_EQ(row.pieces[1].lane, 1U);
    EXPECT_EQ(row.pieces[2].lane, 0U); // A ends below bit 5
    ASSERT_EQ(area.overlaps.size(), 1U);
    EXPECT_EQ(area.overlaps[0].firstBit, 3U);
    EXPECT_EQ(area.overlaps[0].bits, 3U);
}

TEST(ProcessImage, showsAtMostFourChannelsOnTopOfOneAnother)
{
    std::vector<MappedChannel> channels(6, bitChannel("A", 'I', 0, 0));
    const Area area = inputOf(1, channels);
    EXPECT_EQ(area.rows[0].pieces.size(), 4U);
    EXPECT_EQ(area.rows[0].lanes, 4U);
    EXPECT_EQ(area.rows[0].hidden, 2U);
    EXPECT_EQ(area.channels.size(), 6U);
}

TEST(ProcessImage, aLongRunWithoutAChannelIsOneRow)
{
    EXPECT_EQ(rowsOf(inputOf(4000, {bitChannel("A", 'I', 0, 0), bitChannel("B", 'I', 3, 0),
                                    bitChannel("C", 'I', 7, 0)})),
              (Names{"0x1", "1x1", "2x1", "3x1", "4x3", "7x1", "8x3992"}));
    const Area empty = inputOf(520000, {});
    EXPECT_EQ(rowsOf(empty), (Names{"0x520000"}));
    EXPECT_EQ(totalBits(empty.gaps), 8U * 520000);
}

TEST(ProcessImage, showsChannelsAfterTheDataAndNoGapsThere)
{
    const Area area = inputOf(1, {bitChannel("A", 'I', 0, 0), bitChannel("B", 'I', 9, 0)});
    EXPECT_EQ(rowsOf(area), (Names{"0x1", "1x8 outside", "9x1 outside"}));
    EXPECT_EQ(totalBits(area.gaps), 7U);
    EXPECT_EQ(area.rows[2].gaps(), 0);
}

TEST(ProcessImage, beginsAtTheOffsetOfTheModule)
{
    ChannelTable map = emptyMap(2);
    map.input = {10, 2};
    map.channels = {bitChannel("A", 'I', 11, 0)};
    EXPECT_EQ(rowsOf(makeProcessImage(map).input), (Names{"10x1", "11x1"}));
}

TEST(ProcessImage, addressesThatHaveWrappedAreAFewRows)
{
    ChannelTable map = emptyMap(2);
    map.input = {0xFFFFFFFF, 2};
    map.channels = {wholeChannel("A", 'I', 'B', 0xFFFFFFFF, 8), wholeChannel("B", 'I', 'B', 0, 8)};
    EXPECT_EQ(rowsOf(makeProcessImage(map).input),
              (Names{"0x1 outside", "1x4294967294 outside", "4294967295x1", "4294967296x1"}));
}

TEST(ProcessImage, aModuleWithoutDataHasNoRows)
{
    EXPECT_TRUE(inputOf(0, {}).rows.empty());
    EXPECT_EQ(rowsOf(inputOf(0, {bitChannel("A", 'I', 5, 0)})), (Names{"5x1 outside"}));
}

TEST(ProcessImage, aFieldOfNoBitsIsAChannelWithoutAPlace)
{
    const Area area = inputOf(1, {fieldChannel("A", 'I', 0, 0, 0)});
    EXPECT_EQ(area.channels.size(), 1U);
    EXPECT_EQ(area.rows[0].occupied, 0);
}

TEST(ProcessImage, nineThousandLongFieldsStaySmall)
{
    std::vector<MappedChannel> channels;
    for (std::uint32_t byte = 0; byte < 9000; ++byte) {
        channels.push_back(fieldChannel(std::string(1000, 'x'), 'I', byte, 0, 255));
    }
    const Area area = inputOf(9000, channels);
    EXPECT_EQ(area.rows.size(), 9031U); // the last one holds 32 bytes
    std::size_t pieces = 0;
    for (const Row& row : area.rows) {
        pieces += row.pieces.size();
    }
    EXPECT_LE(pieces, 4 * area.rows.size());
    EXPECT_EQ(text::columnsOf(area.channels[0].name), 100U);
}

TEST(PieceText, showsTheSymbolWhereThereIsRoom)
{
    const ProcessImage::Channel channel{"DI 1", "IX0_0", 0, 1, 0};
    EXPECT_EQ(mxmodule::pieceText(channel, {}, 11), "DI 1  IX0_0");
    EXPECT_EQ(mxmodule::pieceText(channel, {}, 10), "DI 1");
}

TEST(PieceText, aShortenedNameKeepsItsNumber)
{
    EXPECT_EQ(mxmodule::pieceText({"Valve block 12", "IX0_0", 0, 1, 0}, {}, 8), "Valve\u2026"
                                                                                "12");
    EXPECT_EQ(mxmodule::pieceText({"Gate 1 open", "IX0_0", 0, 1, 0}, {}, 8), "Gate 1 \u2026");
    EXPECT_EQ(mxmodule::pieceText({"123456789", "IX0_0", 0, 1, 0}, {}, 8), "1234567\u2026");
}

TEST(PieceText, countsTheFurtherBytes)
{
    ProcessImage::Piece piece{};
    piece.byte = 31;
    EXPECT_EQ(mxmodule::pieceText({"Counter", "IL0", 0, 64, 0}, piece, 11), "Counter +31");
    EXPECT_EQ(mxmodule::pieceText({"Counter", "IL0", 0, 64, 0}, piece, 8), "Cou\u2026 +31");
}

} // namespace
