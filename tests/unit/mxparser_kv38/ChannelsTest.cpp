// Addresses and symbols: the result of setupChannel for kind, number of bits and bit offset.

#include "FailedAssertion.h"
#include "ParserAccess.h"

#include <gmock/gmock.h>

namespace {

using testkit::ParserAccess;
using ChannelP = ParserAccess::ChannelP;

constexpr std::uint8_t input = 0x80;

class Channels : public testing::Test
{
protected:
    ChannelP setup(std::uint8_t kind, std::uint8_t bitLength = 0, std::uint8_t bitOffset = 0)
    {
        ChannelP channel;
        parser.setupChannel(&channel, "a name", 7, kind, bitLength, bitOffset);
        return channel;
    }

    std::string symbol(std::uint8_t kind, std::uint8_t bitLength = 0, std::uint8_t bitOffset = 0)
    {
        return setup(kind, bitLength, bitOffset).iecSymbol;
    }

    ParserAccess parser;
};

TEST_F(Channels, tenSingleBitsPrintTheirOwnOffsetsAndMoveToTheNextByteAfterTheEighth)
{
    for (std::uint8_t bit = 0; bit < 10; ++bit) {
        const std::string byte = bit < 8 ? "0" : "1";
        EXPECT_EQ(symbol(input | 5, 1, bit), "IX" + byte + "_" + std::to_string(bit));
        EXPECT_EQ(parser.inBytePosition, bit < 7 ? 0U : 1U);
    }
    EXPECT_EQ(parser.inBitPosition, 2U);
}

TEST_F(Channels, aWordAfterThreeBitsGetsAddress2AndAByteAddress1)
{
    for (std::uint8_t bit = 0; bit < 3; ++bit) {
        symbol(input | 5, 1, bit);
        symbol(5, 1, bit);
    }
    EXPECT_EQ(symbol(input | 2, 16), "IW2");
    EXPECT_EQ(symbol(1, 8), "QB1");
}

TEST_F(Channels, aDoubleWordAfterAnOpenBitAtByte0Gets2AndAtByte4Gets6)
{
    symbol(input | 5, 1);
    EXPECT_EQ(symbol(input | 6, 32), "ID2");
    parser.outBytePosition = 4;
    symbol(5, 1);
    EXPECT_EQ(symbol(7, 32), "QD6");
}

TEST_F(Channels, everyAlignmentAfterAnOpenByteIsAsTheModulesHaveIt)
{
    for (std::uint32_t byte = 0; byte < 20; ++byte) {
        const std::uint32_t next = byte + 1;
        const std::pair<std::uint8_t, std::uint32_t> expected[] = {{1, next},
                                                                   {3, next},
                                                                   {2, (byte + 2) / 2 * 2},
                                                                   {4, (byte + 2) / 2 * 2},
                                                                   {6, next + next % 4},
                                                                   {7, next + next % 4},
                                                                   {8, next + next % 8},
                                                                   {9, next + next % 8}};
        for (const auto& [kind, address] : expected) {
            parser.inBytePosition = byte;
            parser.inBitPosition = 1;
            EXPECT_EQ(setup(input | kind).privateProps.byteAddress, address)
                << int{kind} << " at " << byte;
            EXPECT_EQ(parser.inBitPosition, 0U);
        }
    }
}

TEST_F(Channels, nothingIsAlignedWhenNoByteIsOpen)
{
    const std::pair<std::uint8_t, std::uint32_t> sizes[] = {{1, 1}, {3, 1}, {2, 2}, {4, 2},
                                                            {6, 4}, {7, 4}, {8, 8}, {9, 8}};
    for (const auto& [kind, size] : sizes) {
        parser.outBytePosition = 3;
        parser.outBitPosition = 0;
        EXPECT_EQ(setup(kind).privateProps.byteAddress, 3U) << int{kind};
        EXPECT_EQ(parser.outBytePosition, 3 + size) << int{kind};
    }
}

TEST_F(Channels, eachKindHasItsSizeLetterAndSymbol)
{
    const std::pair<std::uint8_t, const char*> letters[] = {{1, "B"}, {3, "B"}, {2, "W"}, {4, "W"},
                                                            {6, "D"}, {7, "D"}, {8, "L"}, {9, "L"}};
    for (const auto& [kind, letter] : letters) {
        parser.inBytePosition = parser.outBytePosition = 5;
        const ChannelP in = setup(input | kind);
        EXPECT_EQ(in.dataType, letter);
        EXPECT_EQ(in.iecSymbol, "I" + std::string(letter) + "5");
        EXPECT_EQ(setup(kind).iecSymbol, "Q" + std::string(letter) + "5");
    }
}

TEST_F(Channels, otherKindsGetNoPlaceNoSymbolAndNoSizeLetter)
{
    for (std::uint8_t kind = 0; kind < 32; ++kind) {
        if (kind >= 1 && kind <= 9) {
            continue;
        }
        parser.inBytePosition = 4;
        parser.inBitPosition = 3;
        const ChannelP channel = setup(input | kind, 8, 2);
        EXPECT_EQ(channel.dataType, "");
        EXPECT_EQ(channel.iecSymbol, "");
        EXPECT_EQ(channel.privateProps.byteAddress, 0U);
        EXPECT_EQ(channel.privateProps.bitLength, 8);
        EXPECT_EQ(channel.privateProps.bitOffset, 2);
        EXPECT_EQ(channel.direction, "in");
        EXPECT_EQ(parser.inBytePosition, 4U);
        EXPECT_EQ(parser.inBitPosition, 3U);
    }
}

TEST_F(Channels, kind31ClearsASizeLetterAndOtherUnknownKindsKeepIt)
{
    ChannelP channel;
    channel.dataType = "W";
    parser.setupChannel(&channel, "", 0, 31, 0, 0);
    EXPECT_EQ(channel.dataType, "");
    channel.dataType = "W";
    parser.setupChannel(&channel, "", 0, 12, 0, 0);
    EXPECT_EQ(channel.dataType, "W");
}

TEST_F(Channels, aBitFieldPrintsItsOffsetAndMask)
{
    const ChannelP channel = setup(input | 5, 2, 2);
    EXPECT_EQ(channel.iecSymbol, "IB0#2,3");
    EXPECT_EQ(channel.dataType, "B");
    EXPECT_EQ(parser.inBitPosition, 2U);
}

TEST_F(Channels, theMaskIsThatOf32BitsForEveryLengthFrom32On)
{
    for (unsigned length = 0; length < 256; ++length) {
        if (length == 1) {
            continue; // a single bit has no mask
        }
        parser.inBytePosition = parser.inBitPosition = 0;
        const std::uint64_t mask = length >= 32 ? 4294967295U : (std::uint64_t{1} << length) - 1;
        EXPECT_EQ(symbol(input | 5, static_cast<std::uint8_t>(length)),
                  "IB0#0," + std::to_string(mask));
    }
}

TEST_F(Channels, aBitFieldMovesByOneByteAtMost)
{
    parser.inBitPosition = 6;
    symbol(input | 5, 20); // 26 bits: one byte on, two bits of it taken
    EXPECT_EQ(parser.inBytePosition, 1U);
    EXPECT_EQ(parser.inBitPosition, 2U);
    symbol(input | 5, 6); // exactly eight
    EXPECT_EQ(parser.inBytePosition, 2U);
    EXPECT_EQ(parser.inBitPosition, 0U);
}

TEST_F(Channels, outputsDoNotDisturbInputsNorInputsOutputs)
{
    symbol(input | 5, 1);
    symbol(2);
    EXPECT_EQ(parser.inBytePosition, 0U);
    EXPECT_EQ(parser.inBitPosition, 1U);
    EXPECT_EQ(parser.outBytePosition, 2U);
    symbol(input | 8);
    EXPECT_EQ(parser.outBytePosition, 2U);
    EXPECT_EQ(parser.outBitPosition, 0U);
}

TEST_F(Channels, everyMemberIsWritten)
{
    ChannelP channel;
    channel.extraText = "old";
    parser.setupChannel(&channel, "a name", 7, 0x40 | 2, 16, 3);
    EXPECT_EQ(channel.name, "a name");
    EXPECT_EQ(channel.direction, "out");
    EXPECT_EQ(channel.numberText1, "0.0");
    EXPECT_EQ(channel.numberText2, "0.0");
    EXPECT_EQ(channel.extraText, "");
    EXPECT_EQ(channel.privateProps.channelNumber, 7);
    EXPECT_EQ(channel.privateProps.bitLength, 16);
    EXPECT_EQ(channel.privateProps.bitOffset, 3);
    EXPECT_EQ(channel.privateProps.flagBit6, 1);
    EXPECT_EQ(setup(0xA0 | 2).privateProps.flagBit6, 0); // bit 5 is not read
}

TEST_F(Channels, aByteCounterWrapsIn32Bits)
{
    parser.inBytePosition = 0xFFFFFFFF;
    EXPECT_EQ(symbol(input | 1), "IB4294967295");
    EXPECT_EQ(parser.inBytePosition, 0U);
}

TEST(ChannelsDeath, aNullChannelIsAFailedAssertion)
{
    ParserAccess parser;
    EXPECT_DEATH(parser.setupChannel(nullptr, "", 0, 0, 0, 0),
                 "vendor/mx/src/mxparser_kv38/.*Assertion `chan' failed");
}

TEST(Aggregation, filesIdentifiersUnderTheirKeyInOrder)
{
    ParserAccess parser;
    parser.addToAggregatedChannelCandidate("IB3", "17");
    parser.addToAggregatedChannelCandidate("IB0", "4");
    parser.addToAggregatedChannelCandidate("IB3", "18");
    const std::map<std::string, std::vector<std::string>> expected = {{"IB0", {"4"}},
                                                                      {"IB3", {"17", "18"}}};
    EXPECT_EQ(parser.aggregatedChannelCandidates, expected);
}

} // namespace
