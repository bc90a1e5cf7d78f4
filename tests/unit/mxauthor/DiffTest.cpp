// Each difference of two modules is found, classified and judged for a stored parameter image.

#include "MxBuffer.h"

#include <mxauthor/Diff.h>

#include <gmock/gmock.h>

namespace {

using mxauthor::Comparison;
using mxauthor::effectName;
using testing::ElementsAre;
using testing::IsEmpty;
using testkit::ChannelRecord;
using testkit::MxBuffer;
using testkit::ParameterRecord;

// A module with the parameters "Filter" (byte 0, options 0 and 1) and "Limit" (bytes 1 and 2, 1 to
// 500, of channel 0), and the input channels 0 (16 bits) and 1 (1 bit). Byte 3 is free and holds 7.
struct Module
{
    std::vector<std::string> sizes = {"InData,s=WB", "Parameter,s=BBBB"};
    std::uint32_t id = 0x5A000001;
    std::string block = "01 0064 07";
    ParameterRecord filter;
    ParameterRecord limit;
    std::vector<ParameterRecord> more;
    bool limitFirst = false;
    std::vector<std::pair<std::uint64_t, unsigned>> options = {{0, 102}, {1, 103}};
    std::vector<ChannelRecord> channels = {{0, 0x84, 16, 0, 0}, {1, 0x85, 1, 0, 0}};
    std::vector<std::pair<unsigned, std::string>> texts = {
        {100, "Filter"}, {101, "Limit"}, {102, "off"}, {103, "on"}, {104, "More"}};
    std::string image = "aabb";
    std::string makers = "01";

    Module()
    {
        filter.mapId = 1;
        limit.number = 2;
        limit.nameId = 101;
        limit.position = 5;
        limit.datatype = 2;
        limit.minimum = 1;
        limit.maximum = 500;
        limit.channelNumber = 0;
    }

    mxauthor::MxFile file() const
    {
        testkit::Bytes parameters = limitFirst ? testkit::join({limit.bytes(), filter.bytes()})
                                               : testkit::join({filter.bytes(), limit.bytes()});
        for (const ParameterRecord& record : more) {
            parameters = testkit::join({parameters, record.bytes()});
        }
        testkit::Bytes records;
        for (const ChannelRecord& record : channels) {
            records = testkit::join({records, record.bytes()});
        }
        MxBuffer buffer = testkit::minimalModule(sizes, id);
        buffer.group(0x0010, testkit::hexBytes("0000" + block));
        buffer.group(0x20C0, parameters);
        buffer.group(0x20C1, testkit::optionList(1, options));
        buffer.group(0x20D0, records);
        buffer.group(0x20D3, testkit::textTablePayload(texts));
        buffer.group(0x20F1, testkit::hexBytes(image));
        buffer.group(0x7ABC, testkit::hexBytes(makers));
        return mxauthor::readMxFile(buffer.chars());
    }
};

Comparison compared(const Module& after)
{
    return compare(Module().file(), after.file());
}

std::vector<std::string> linesOf(const Comparison& comparison)
{
    std::vector<std::string> lines;
    for (const mxauthor::Difference& difference : comparison.differences) {
        lines.push_back(std::string(effectName(difference.effect)) + " " + difference.subject +
                        ": " + difference.text);
    }
    return lines;
}

void expectKept(const Comparison& comparison)
{
    EXPECT_TRUE(comparison.imageStaysValid);
    EXPECT_EQ(comparison.because,
              "every parameter keeps its place and still accepts its old values");
}

void expectBroken(const Comparison& comparison, const std::string& because)
{
    EXPECT_FALSE(comparison.imageStaysValid);
    EXPECT_EQ(comparison.because, because);
}

TEST(Diff, findsNothingInTheSameFile)
{
    const Comparison same = compared(Module());
    EXPECT_THAT(linesOf(same), IsEmpty());
    expectKept(same);
}

TEST(Diff, aDefaultMayChange)
{
    Module after;
    after.block = "00 0064 07";
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found),
                ElementsAre("compatible parameter 1 \"Filter\": default 1 becomes 0"));
    expectKept(found);
}

TEST(Diff, aWiderRangeAcceptsTheValuesOfTheNarrowOne)
{
    Module after;
    after.limit.maximum = 501;
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found), ElementsAre("compatible parameter 2 \"Limit\" of channel 0: range "
                                            "1 to 500 becomes 1 to 501"));
    expectKept(found);
}

TEST(Diff, aNarrowerRangeDoesNot)
{
    Module after;
    after.limit.minimum = 2;
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found), ElementsAre("breaking parameter 2 \"Limit\" of channel 0: range 1 "
                                            "to 500 becomes 2 to 500"));
    expectBroken(found, "parameter 2 \"Limit\" of channel 0: range 1 to 500 becomes 2 to 500");
}

TEST(Diff, anAdditionalOptionIsCompatible)
{
    Module after;
    after.options.emplace_back(2, 104);
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found),
                ElementsAre("compatible parameter 1 \"Filter\": option 2 \"More\" is new"));
    expectKept(found);
}

TEST(Diff, anOptionThatIsGoneMayBeStored)
{
    Module after;
    after.options = {{1, 103}};
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found),
                ElementsAre("breaking parameter 1 \"Filter\": option 0 \"off\" is gone",
                            "breaking parameter 1 \"Filter\": options change their positions, "
                            "which Modbus registers hold"));
    expectBroken(found, "parameter 1 \"Filter\": option 0 \"off\" is gone");
}

TEST(Diff, optionsInAnotherOrderBreakRegistersButNoImage)
{
    Module after;
    after.options = {{1, 103}, {0, 102}};
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found), ElementsAre("breaking parameter 1 \"Filter\": options change their "
                                            "positions, which Modbus registers hold"));
    expectKept(found);
}

TEST(Diff, aParameterThatMovesBreaksTheImage)
{
    Module after;
    after.limit.position = 6;
    after.block = "01 00 0064";
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found), ElementsAre("breaking parameter 2 \"Limit\" of channel 0: place "
                                            "byte 1 becomes byte 2"));
    EXPECT_FALSE(found.imageStaysValid);
}

TEST(Diff, anotherDatatypeOfTheSameBitsKeepsValuesThatBothRead)
{
    Module after;
    after.filter.datatype = 3; // signed; the options are 0 and 1
    EXPECT_THAT(linesOf(compared(after)),
                ElementsAre("compatible parameter 1 \"Filter\": datatype UInt8 becomes SInt8"));
    expectKept(compared(after));
    after = Module();
    after.limit.datatype = 4;
    EXPECT_THAT(
        linesOf(compared(after)),
        ElementsAre(
            "compatible parameter 2 \"Limit\" of channel 0: datatype UInt16 becomes SInt16"));
    expectKept(compared(after));
}

TEST(Diff, anotherSignBreaksTheImageWhereItReadsAnotherNumber)
{
    Module before;
    before.limit.maximum = 0x8000; // -32768 when it is signed
    Module after;
    after.limit.datatype = 4;
    after.limit.maximum = 0x7FFF;
    const Comparison found = compare(before.file(), after.file());
    EXPECT_THAT(
        linesOf(found),
        ElementsAre("breaking parameter 2 \"Limit\" of channel 0: datatype UInt16 becomes SInt16",
                    "breaking parameter 2 \"Limit\" of channel 0: range 1 to 32768 becomes 1 to "
                    "32767"));
    EXPECT_FALSE(found.imageStaysValid);
}

TEST(Diff, aByteIsTheSamePlaceAsItsEightBits)
{
    Module after;
    after.filter.datatype = 5;
    after.filter.bitLength = 8;
    const Comparison found = compared(after);
    EXPECT_THAT(
        linesOf(found),
        ElementsAre("compatible parameter 1 \"Filter\": place byte 0 becomes byte 0, 8 bits from "
                    "bit 0",
                    "compatible parameter 1 \"Filter\": datatype UInt8 becomes Byte"));
    expectKept(found);
}

TEST(Diff, fewerBitsKeepTheValuesThatTheyHold)
{
    Module after;
    after.filter.datatype = 5;
    after.filter.bitLength = 1;
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found),
                ElementsAre("compatible parameter 1 \"Filter\": place byte 0 becomes byte 0, 1 bit "
                            "from bit 0",
                            "compatible parameter 1 \"Filter\": datatype UInt8 becomes Byte"));
    EXPECT_TRUE(found.imageStaysValid);
    EXPECT_EQ(found.because, "every parameter keeps its value and still accepts its old values");
    Module before;
    before.options = {{0, 102}, {2, 103}}; // 2 needs a second bit
    after.options = before.options;
    EXPECT_FALSE(compare(before.file(), after.file()).imageStaysValid);
}

TEST(Diff, bitsOutsideTheirByteAreNamedSo)
{
    Module after;
    after.filter.datatype = 5;
    after.filter.bitLength = 3;
    after.filter.bitOffset = 6;
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found),
                testing::Contains("breaking parameter 1 \"Filter\": place byte 0 becomes byte 0, "
                                  "bits outside it"));
    EXPECT_FALSE(found.imageStaysValid);
    Module other = after;
    other.filter.bitOffset = 7;
    EXPECT_THAT(
        linesOf(compare(after.file(), other.file())),
        ElementsAre("cosmetic : only bytes without effect differ: order, identifiers, bytes "
                    "that are not read"));
}

TEST(Diff, moreBitsKeepTheValueWhereTheOthersAreZero)
{
    Module before;
    before.filter.datatype = 5;
    before.filter.bitLength = 1;
    EXPECT_TRUE(compare(before.file(), Module().file()).imageStaysValid);
    before.block = "81 0064 07"; // a bit of no parameter, which an old image holds
    Module after;
    after.options.emplace_back(129, 104);
    EXPECT_FALSE(compare(before.file(), after.file()).imageStaysValid);
}

TEST(Diff, anotherWidthMovesTheModbusRegister)
{
    Module before;
    before.limit.maximum = 200;
    Module after = before;
    after.limit.datatype = 1;
    after.limit.position = 6; // the low byte of the two, whose high byte is always 0
    const Comparison found = compare(before.file(), after.file());
    EXPECT_THAT(linesOf(found),
                ElementsAre("compatible parameter 2 \"Limit\" of channel 0: place byte 1 becomes "
                            "byte 2",
                            "breaking parameter 2 \"Limit\" of channel 0: datatype UInt16 becomes "
                            "UInt8: its Modbus registers change"));
    EXPECT_TRUE(found.imageStaysValid);
}

TEST(Diff, aRangeMayBecomeTheOptionsOfItsValues)
{
    Module before;
    before.filter.mapId = 0;
    before.filter.maximum = 1;
    const Comparison found = compare(before.file(), Module().file());
    EXPECT_THAT(linesOf(found),
                ElementsAre("compatible parameter 1 \"Filter\": its range becomes an option list "
                            "with all its values"));
    expectKept(found);
    expectKept(compare(Module().file(), before.file()));
    before.filter.maximum = 2;
    expectBroken(compare(before.file(), Module().file()),
                 "parameter 1 \"Filter\": its range becomes an option list without 2");
}

TEST(Diff, registersHoldThePlaceOfAnOption)
{
    Module before;
    before.filter.mapId = 0;
    before.filter.maximum = 1;
    Module after;
    after.options = {{1, 103}, {0, 102}};
    EXPECT_THAT(linesOf(compare(before.file(), after.file())),
                ElementsAre("breaking parameter 1 \"Filter\": its range becomes an option list: "
                            "Modbus registers hold the positions of options"));
    expectKept(compare(before.file(), after.file()));
}

TEST(Diff, anOptionThatTheFieldCannotHoldWasNeverStored)
{
    Module before;
    before.filter.datatype = 5;
    before.filter.bitLength = 2;
    before.options.emplace_back(4, 104);
    Module after = before;
    after.options.pop_back();
    const Comparison found = compare(before.file(), after.file());
    EXPECT_THAT(linesOf(found),
                ElementsAre("compatible parameter 1 \"Filter\": option 4 \"More\" is "
                            "gone, which its bits could not hold"));
    expectKept(found);
}

TEST(Diff, anOptionThatTakesTheTextOfAnotherMeansAnotherValue)
{
    Module after;
    after.options = {{0, 103}, {1, 102}};
    EXPECT_THAT(
        linesOf(compared(after)),
        ElementsAre("breaking parameter 1 \"Filter\": option 0 \"off\" becomes \"on\": same "
                    "bytes, other values",
                    "breaking parameter 1 \"Filter\": option 1 \"on\" becomes \"off\": same "
                    "bytes, other values"));
    EXPECT_FALSE(compared(after).imageStaysValid);
}

TEST(Diff, anotherUnitGivesTheSameBytesOtherValues)
{
    Module after;
    after.limit.unitId = 104;
    after.limit.showMe = 1;
    const Comparison found = compared(after);
    EXPECT_THAT(
        linesOf(found),
        ElementsAre("compatible parameter 2 \"Limit\" of channel 0: flags 3 becomes 1",
                    "breaking parameter 2 \"Limit\" of channel 0: unit none becomes \"More\": same "
                    "bytes, other values"));
    EXPECT_FALSE(found.imageStaysValid);
}

// A module whose "Limit" is converted by the entry `conversion` of group 0x20c2.
mxauthor::MxFile convertedModule(const std::string& conversion)
{
    Module module;
    module.limit.showMe = 7;
    module.limit.conversionId = 1;
    mxauthor::MxFile file = module.file();
    mxauthor::Group group;
    group.id = 0x20C2;
    group.content = mxauthor::readPayload(0x20C2, testkit::hexBytes(conversion), 0);
    file.groups.push_back(group);
    return file;
}

TEST(Diff, anotherFactorGivesTheSameBytesOtherValues)
{
    // Identifier 1, factor 0.5 and 0.25 as binary32, offset 0, unit text 104 ("More").
    const mxauthor::MxFile before = convertedModule("01 3f000000 00000000 0068");
    const Comparison found = compare(before, convertedModule("01 3e800000 00000000 0068"));
    EXPECT_THAT(linesOf(found),
                ElementsAre("breaking parameter 2 \"Limit\" of channel 0: conversion "
                            "x 0.5 + 0 becomes x 0.25 + 0: same bytes, other values"));
    expectBroken(found, "parameter 2 \"Limit\" of channel 0: conversion x 0.5 + 0 becomes x 0.25 + "
                        "0: same bytes, other values");
    // The unit of the conversion, 101 ("Limit").
    EXPECT_FALSE(compare(before, convertedModule("01 3f000000 00000000 0065")).imageStaysValid);
    // A changed identifier is not a difference of any value.
    EXPECT_TRUE(compare(before, convertedModule("01 3f000000 00000000 0068 02 3e800000 00000000 "
                                                "0068"))
                    .imageStaysValid);
}

TEST(Diff, aConversionThatReadersLeaveOutIsNone)
{
    const std::string half = "01 3f000000 00000000 0000";
    // A byte after the last whole entry: readers use none of the table.
    const Comparison found = compare(convertedModule(half), convertedModule(half + "00"));
    expectBroken(found, "parameter 2 \"Limit\" of channel 0: conversion x 0.5 + 0 becomes none: "
                        "same bytes, other values");
    // A factor of 0 and one that is infinite, an entry after the first with its identifier.
    EXPECT_FALSE(compare(convertedModule(half), convertedModule("01 00000000 00000000 0000"))
                     .imageStaysValid);
    EXPECT_TRUE(compare(convertedModule("01 00000000 00000000 0000"),
                        convertedModule("01 7f800000 00000000 0000"))
                    .imageStaysValid);
    EXPECT_TRUE(compare(convertedModule(half), convertedModule(half + "01 3e800000 00000000 0000"))
                    .imageStaysValid);
}

TEST(Diff, aParameterThatIsGoneIsNotSaidToLieWhereItLay)
{
    Module before;
    ParameterRecord record;
    record.number = 3;
    record.nameId = 104;
    record.position = 7;
    before.more.push_back(record);
    const Comparison found = compare(before.file(), Module().file());
    EXPECT_TRUE(found.imageStaysValid);
    EXPECT_EQ(found.because,
              "every remaining parameter keeps its place and still accepts its old values");
}

// "More" on the bits of "Limit" (bytes 1 and 2, 1 to 500, by default 100) in place of it.
Module withMoreInPlaceOfLimit()
{
    Module after;
    after.limit.number = 3;
    after.limit.nameId = 104;
    after.limit.channelNumber = 255;
    return after;
}

TEST(Diff, aNewParameterHasToTakeAllThatAnOldOneMayHaveStoredThere)
{
    Module after = withMoreInPlaceOfLimit();
    EXPECT_THAT(
        linesOf(compared(after)),
        ElementsAre(
            "breaking parameter 2 \"Limit\" of channel 0: is gone: Modbus registers after it move",
            "compatible parameter 3 \"More\": is new; it accepts all that a stored "
            "image may hold there"));
    EXPECT_TRUE(compared(after).imageStaysValid);
    after.limit.maximum = 499;
    expectBroken(compared(after), "parameter 3 \"More\": is new, and a stored image may hold 500, "
                                  "which it does not accept");
}

TEST(Diff, aNewParameterThatSharesBitsIsJudgedByThem)
{
    Module after;
    ParameterRecord record;
    record.number = 3;
    record.nameId = 104;
    record.position = 5; // the high byte of 1 to 500: 0 or 1
    record.maximum = 1;
    after.more.push_back(record);
    EXPECT_TRUE(compared(after).imageStaysValid);
    after.more[0].position = 6; // the low byte: anything
    after.more[0].maximum = 254;
    expectBroken(compared(after), "parameter 3 \"More\": is new, and a stored image may hold 255, "
                                  "which it does not accept");
}

TEST(Diff, valuesOf64BitsAreComparedWithoutCountingThem)
{
    Module before;
    before.block = "01 0064 07 0000000000000000";
    before.sizes[1] = "Parameter,s=BBBBDD";
    Module after = before;
    ParameterRecord wide;
    wide.number = 3;
    wide.nameId = 104;
    wide.position = 8;
    wide.datatype = 8; // UInt64
    wide.maximum = 0x7FFFFFFFFFFFFFFF;
    before.more.push_back(wide);
    wide.datatype = 9; // SInt64
    after.more.push_back(wide);
    EXPECT_TRUE(compare(before.file(), after.file()).imageStaysValid);
    before.more[0].maximum = 0x8000000000000000;
    EXPECT_FALSE(compare(before.file(), after.file()).imageStaysValid);
}

TEST(Diff, aNewParameterReadsWhatAnOldImageHoldsThere)
{
    Module after;
    ParameterRecord record;
    record.number = 3;
    record.nameId = 104;
    record.position = 7; // byte 3, which held 7
    record.maximum = 7;
    after.more.push_back(record);
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found), ElementsAre("compatible parameter 3 \"More\": is new; a stored "
                                            "image holds 7 there"));
    expectKept(found);
    after.more[0].maximum = 6;
    EXPECT_THAT(linesOf(compared(after)),
                ElementsAre("breaking parameter 3 \"More\": is new, and a stored image holds 7, "
                            "which it does not accept"));
    EXPECT_FALSE(compared(after).imageStaysValid);
}

TEST(Diff, aLargerBlockBreaksTheImage)
{
    Module after;
    after.sizes[1] = "Parameter,s=BBBBB";
    after.block += "00";
    const Comparison found = compared(after);
    EXPECT_THAT(linesOf(found),
                ElementsAre("breaking parameter block: size 4 bytes becomes 5 bytes"));
    expectBroken(found, "parameter block: size 4 bytes becomes 5 bytes");
}

TEST(Diff, theOrderOfParametersIsThatOfRegisters)
{
    Module after;
    after.limitFirst = true;
    const Comparison found = compared(after);
    EXPECT_THAT(
        linesOf(found),
        ElementsAre("breaking : the order changes, and with it that of the Modbus registers"));
    expectKept(found);
}

TEST(Diff, aChannelInFrontMovesTheOthers)
{
    Module after;
    after.channels.insert(after.channels.begin(), {9, 0x81, 8, 0, 0});
    after.sizes[0] = "InData,s=WBB";
    const Comparison found = compared(after);
    // The byte uses byte 0; the word is at byte 1, the bit after it at byte 3.
    EXPECT_THAT(linesOf(found), ElementsAre("breaking InData: size 3 bytes becomes 4 bytes",
                                            "breaking input channel 0: moves from IW0 to IW1",
                                            "breaking input channel 1: moves from IX2_0 to IX3_0",
                                            "compatible input channel 9: at IB0 is new"));
    expectKept(found);
}

TEST(Diff, aChannelOfAnotherKindOrNoneBreaksTheProcessImage)
{
    Module after;
    after.channels = {{0, 0x86, 32, 0, 0}};
    EXPECT_THAT(linesOf(compared(after)),
                ElementsAre("breaking input channel 0: kind 4 of 16 bits at IW0 becomes kind 6 of "
                            "32 bits at ID0",
                            "breaking input channel 1: at IX2_0 is gone"));
}

TEST(Diff, wordingAndPicturesAreCosmetic)
{
    Module after;
    after.texts[0].second = "Input filter";
    after.image = "aabbcc";
    after.makers = "02";
    const Comparison found = compared(after);
    EXPECT_THAT(
        linesOf(found),
        ElementsAre("cosmetic : the product image of 2 bytes becomes another one of 3 bytes",
                    "cosmetic parameter 1 \"Input filter\": name \"Filter\" becomes "
                    "\"Input filter\"",
                    "cosmetic text 100: \"Filter\" becomes \"Input filter\"",
                    "cosmetic group 7abc: holds other bytes"));
    expectKept(found);
}

TEST(Diff, textsUnderOtherIdentifiersAreNoDifferenceOfTheModule)
{
    Module after;
    after.texts = {{200, "Filter"}, {101, "Limit"}, {102, "off"}, {103, "on"}, {104, "More"}};
    after.filter.nameId = 200;
    EXPECT_THAT(linesOf(compared(after)),
                ElementsAre("cosmetic : only bytes without effect differ: order, identifiers, "
                            "bytes that are not read"));
}

TEST(Diff, anotherModuleAcceptsNoImage)
{
    Module after;
    after.id = 0x5A000002;
    expectBroken(compared(after), "module identifier 5a000001 becomes 5a000002");
}

} // namespace
