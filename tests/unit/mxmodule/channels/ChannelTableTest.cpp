#include "channels/ChannelMapOutput.h"

#include "../ExampleModules.h"
#include "ChannelTables.h"
#include "MxBuffer.h"
#include "TranslatedModule.h"

#include <devices/parser/mx/LoadFile.h>

#include <mxmodule/Module.h>

#include <gtest/gtest.h>
#include <text/JsonText.h>

namespace {

using mxmodule::ChannelTable;
using mxmodule::MappedChannel;
using text::Json;

ChannelTable mapOf(const std::string& module, unsigned inOffset = 0, unsigned outOffset = 0)
{
    std::vector<char> bytes;
    devices::parser::mx::loadFile(std::string(EXAMPLE_MODULES) + "/" + module, bytes);
    return mxmodule::makeChannelTable(
        mxmodule::TranslatedModule(module, bytes, {inOffset, outOffset}));
}

TEST(ChannelTable, joinsTheMappingWithTheChannelsInTheirOrder)
{
    const ChannelTable map = mapOf("MX0602.bin");
    ASSERT_EQ(map.channels.size(), 11U);
    const MappedChannel& state = map.channels[5];
    EXPECT_EQ(state.name, "State 2");
    EXPECT_EQ(state.number, 5);
    EXPECT_EQ(state.symbol, "IB10#3,31");
    EXPECT_TRUE(state.isInput);
    EXPECT_EQ(state.kind, 'B');
    EXPECT_EQ(state.byteAddress, 10U);
    EXPECT_EQ(state.bitOffset, 3);
    EXPECT_EQ(state.bitLength, 5);
    EXPECT_EQ(state.mask, 31);
    EXPECT_TRUE(state.isBitField);
    EXPECT_EQ(state.firstBit, 83U);
    EXPECT_EQ(state.bits, 5U);
}

TEST(ChannelTable, namesTheChannelsWithoutASymbol)
{
    const ChannelTable map = mapOf("MX0602.bin");
    ASSERT_EQ(map.withoutSymbol.size(), 2U);
    EXPECT_EQ(map.withoutSymbol[0].name, "Reserved");
    EXPECT_EQ(map.withoutSymbol[1].name, "No image");
    EXPECT_EQ(map.channels.back().name, "Set value"); // joined across the gap
}

// Kinds 1 to 9: UInt8, UInt16, SInt8, SInt16, two bits, UInt32, SInt32,
// UInt64, SInt64; then kind 30, which has no symbol, and SInt16 once more with the number of the
// first. The sixth is left out by its name.
TEST(ChannelTable, knowsWhichValuesHaveASign)
{
    std::vector<testkit::ChannelRecord> records;
    for (const std::uint8_t kind : testkit::Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 30}) {
        records.push_back({kind, static_cast<std::uint8_t>(0x80U | kind), 2});
    }
    records.push_back({1, 0x84, 2});
    const mxmodule::ChannelMap map = mapOfRecords(records, "-");
    std::string signs;
    for (const MappedChannel& channel : map.channels()) {
        signs += channel.symbol.substr(0, 2) + (channel.isSigned ? "- " : "+ ");
    }
    EXPECT_EQ(signs, "IB+ IW+ IB- IW- IB+ ID- IL+ IL- IW- ");
}

// A measured value of 12 bits in a word.
TEST(ChannelTable, theSizeLetterNotTheLengthTellsTheBytesOfAValue)
{
    const mxmodule::ChannelMap map = mapOfRecords({{1, 0x82, 12}});
    EXPECT_EQ(map.channels()[0].symbol, "IW0");
    EXPECT_EQ(map.channels()[0].bits, 16U);
    EXPECT_FALSE(map.channels()[0].isBitField);
}

// The byte address of the parser has been moved on already.
TEST(ChannelTable, aBitOffsetAbove7CountsWithinTheByte)
{
    const mxmodule::ChannelMap map = mapOfRecords({{1, 0x81}, {2, 0x85, 1, 9}});
    EXPECT_EQ(map.channels()[1].symbol, "IX1_9");
    EXPECT_EQ(map.channels()[1].bitOffset, 9);
    EXPECT_EQ(map.channels()[1].firstBit, 9U); // bit 1 of byte 1
    EXPECT_EQ(map.channels()[1].bits, 1U);
    EXPECT_TRUE(map.channels()[1].isBitField);
}

TEST(ChannelTable, knowsTheDataOfTheModule)
{
    const ChannelTable map = mapOf("MX0602.bin", 100, 200);
    EXPECT_EQ(map.input.firstByte, 100U);
    EXPECT_EQ(map.input.size, 22U);
    EXPECT_EQ(map.output.firstByte, 200U);
    EXPECT_EQ(map.output.size, 10U);
    EXPECT_EQ(map.channels[0].symbol, "IX100_0");
    const auto shared = exampleModule("MX0602.bin").at({100, 200}).channelMap();
    EXPECT_EQ(shared.data(true).firstByte, 100U);
    EXPECT_EQ(shared.data(true).size, 22U);
    EXPECT_EQ(shared.data(false).firstByte, 200U);
    EXPECT_EQ(shared.data(false).size, 10U);
}

TEST(ChannelMapJson, tellsFreeAndOverlappingBits)
{
    ChannelTable map = emptyMap(2, 1);
    map.channels = {fieldChannel("A", 'I', 0, 0, 5), fieldChannel("B", 'I', 0, 4, 3)};
    const Json json = mxmodule::channelMapJson(map, mxmodule::makeProcessImage(map));
    EXPECT_EQ(json["schema"].dump(), R"({"name":"mxtool.channels","version":1})");
    EXPECT_EQ(json["input"].dump(), R"({"first_byte":0,"size":2,)"
                                    R"("free":[{"byte":0,"bit":7,"bits":9}],)"
                                    R"("overlapping":[{"byte":0,"bit":4,"bits":1}]})");
    EXPECT_EQ(json["channels"][1].dump(),
              R"({"id":"2","number":2,"name":"B","direction":"in","symbol":"IB0#4,7","area":"I",)"
              R"("size_letter":"B","byte":0,"bit_offset":4,"bit_length":3,"mask":7})");
}

TEST(ChannelMapJson, isValidUtf8WhateverTheNamesHold)
{
    ChannelTable map = emptyMap(1);
    map.label = "\xFF\x80";
    const Json json =
        Json::parse(text::jsonText(mxmodule::channelMapJson(map, mxmodule::makeProcessImage(map))));
    EXPECT_EQ(json["label"], "\u00FF\u20AC");
    const Json named = Json::parse(mapOfRecords({{6, 0x85}}, "\xC3(").json());
    EXPECT_EQ(named["channels"][0]["name"], "\u00C3(");
}

TEST(ChannelMapText, isATableWithoutControlCharacters)
{
    ChannelTable map = emptyMap(1);
    map.channels = {bitChannel("A\033", 'Q', 0, 3)};
    EXPECT_EQ(mxmodule::channelMapText(map),
              "Channel  Name   Direction  Symbol  Byte  Bit  Bits  Mask\n"
              "1        A\\x1b  out        QX0_3   0     3    1     0x01\n");
}

TEST(ChannelMapCsv, quotesSymbolsWithACommaInThem)
{
    ChannelTable map = emptyMap(1);
    map.channels = {fieldChannel("State", 'I', 0, 1, 3)};
    EXPECT_EQ(mxmodule::channelMapCsv(map),
              "number,name,direction,symbol,size_letter,byte,bit_offset,bit_length,mask\r\n"
              "2,State,in,\"IB0#1,7\",B,0,1,3,7\r\n");
}

} // namespace
