// The result of parseParameter for a record of group 0x20c0.

#include "DeviceView.h"
#include "Failure.h"
#include "LogCapture.h"
#include "MxBuffer.h"
#include "ParserAccess.h"

#include <mxfileext/mxfileext.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testkit::Bytes;
using testkit::failureOf;
using testkit::MxBuffer;
using testkit::ParameterRecord;
using testkit::ParserAccess;

using ParameterP = ParserAccess::ParameterP;

// factor 0.5, offset 0, unit text 111
const Bytes conversion7 = {7, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0, 111};

class Parameters : public testing::Test
{
protected:
    // A parser with the parameter block `block` and texts 100 "name", 110 "bar", 111 "V".
    void start(const Bytes& block)
    {
        MxBuffer made = testkit::minimalModule({"Parameter,s=" + std::string(block.size(), 'B')});
        made.group(0x0010, testkit::join({{0, 0}, block}));
        made.group(0x20D3, testkit::textTablePayload(
                               {{100, "name"}, {110, "bar"}, {111, "V"}, {120, "on"}}));
        made.group(0x20C2, conversion7);
        made.group(0x20C1, testkit::optionList(3, {{0, 110}, {1, 120}}));
        buffer = made.chars();
        parser.initializeDataStructs(buffer, nullptr);
        parser.mxVersion = "kv38-test";
    }

    const ParameterP& parse(const ParameterRecord& record)
    {
        kept.push_back(record.bytes());
        EXPECT_EQ(parser.parseParameter(kept.back().data()), 29U);
        return static_cast<const ParameterP&>(*parser.dev->attributes.back());
    }

    // A record with the datatype and flags given, at the block's first byte.
    static ParameterRecord record(std::uint8_t datatype, std::uint8_t showMe)
    {
        ParameterRecord made;
        made.datatype = datatype;
        made.showMe = showMe;
        return made;
    }

    std::vector<char> buffer;
    std::vector<Bytes> kept;
    ParserAccess parser;
};

TEST_F(Parameters, thePrivateRecordTellsThePlace)
{
    start({1, 2, 3, 4});
    ParameterRecord made = record(6, 0);
    made.channelNumber = 12;
    const ParameterP& parameter = parse(made);
    EXPECT_EQ(parameter.name, "name");
    EXPECT_EQ(parameter.privateProps.channelNumber, 12);
    EXPECT_EQ(parameter.privateProps.record, kept.back().data());
    EXPECT_EQ(parameter.privateProps.dataSize, 4);
    EXPECT_EQ(parameter.privateProps.byteOffset, 0);
    EXPECT_TRUE(parameter.privateProps.optionValues.empty());
    EXPECT_EQ(parameter.id, "0");
}

TEST_F(Parameters, theByteOffsetWrapsInEightBits)
{
    start({0});
    ParameterRecord made = record(1, 0);
    made.position = 2;
    EXPECT_EQ(parse(made).privateProps.byteOffset, 254);
}

TEST_F(Parameters, bitsCountForDatatype5Alone)
{
    start({0x40});
    ParameterRecord made = record(5, 0);
    made.bitLength = 1;
    made.bitOffset = 6;
    EXPECT_EQ(parse(made).privateProps.bitLength, 1);
    EXPECT_EQ(parse(made).privateProps.bitOffset, 6);
    EXPECT_EQ(parse(made).value, "1");
    made.datatype = 1;
    EXPECT_EQ(parse(made).privateProps.bitLength, 0);
    EXPECT_EQ(parse(made).privateProps.bitOffset, 0);
    EXPECT_EQ(parse(made).value, "64");
}

TEST_F(Parameters, sizesAreThoseOfTheDatatypes)
{
    start(Bytes(8, 0));
    const std::uint8_t sizes[] = {1, 2, 1, 2, 1, 4, 4, 8, 8};
    for (std::uint8_t datatype = 1; datatype <= 9; ++datatype) {
        EXPECT_EQ(parse(record(datatype, 0)).privateProps.dataSize, sizes[datatype - 1]);
    }
}

TEST_F(Parameters, flagsComeFromBits0And1)
{
    start({0});
    for (std::uint8_t showMe = 0; showMe < 4; ++showMe) {
        const ParameterP& parameter = parse(record(1, showMe));
        EXPECT_EQ(parameter.flagBit0, (showMe & 1) != 0);
        EXPECT_EQ(parameter.flagBit1, (showMe & 2) != 0);
    }
}

TEST_F(Parameters, aValueRangeIsRead)
{
    start({200});
    ParameterRecord made = record(1, 0);
    made.minimum = 10;
    made.maximum = 220;
    const ParameterP& parameter = parse(made);
    EXPECT_EQ(parameter.value, "200");
    EXPECT_EQ(parameter.valueRange->min, "10");
    EXPECT_EQ(parameter.valueRange->max, "220");
    EXPECT_EQ(parameter.valueRange->parameterValueRangeTag, "ParameterValueRange");
    EXPECT_FALSE(parameter.hasOptionList);
}

TEST_F(Parameters, withoutABlockAPlainParameterHasNoValueButARange)
{
    start({});
    const ParameterP& parameter = parse(record(1, 0));
    EXPECT_EQ(parameter.value, "");
    EXPECT_EQ(parameter.valueRange->max, "255");
}

TEST_F(Parameters, anOptionListBringsOptionsAndTheRawValue)
{
    start({1});
    ParameterRecord made = record(1, 0);
    made.mapId = 3;
    const ParameterP& parameter = parse(made);
    EXPECT_TRUE(parameter.hasOptionList);
    EXPECT_EQ(parameter.value, "1");
    ASSERT_EQ(parameter.options.size(), 2U);
    EXPECT_EQ(parameter.options[1]->text, "on");
}

TEST_F(Parameters, withoutABlockAnOptionParameterIsEmpty)
{
    start({});
    ParameterRecord made = record(1, 0);
    made.mapId = 3;
    made.maximum = 9;
    const ParameterP& parameter = parse(made);
    EXPECT_TRUE(parameter.hasOptionList);
    EXPECT_EQ(parameter.value, "");
    EXPECT_EQ(parameter.valueRange->min, "");
    EXPECT_EQ(parameter.valueRange->max, "");
}

TEST_F(Parameters, aConvertedParameterShowsPhysicalValues)
{
    start({0xFF, 0xFD}); // -3
    ParameterRecord made = record(4, 4);
    made.conversionId = 7;
    made.minimum = 0xFFFFFFFFFFFFFFF6; // -10
    made.maximum = 5;
    made.mapId = 3; // not read
    const ParameterP& parameter = parse(made);
    EXPECT_EQ(parameter.value, "-1.500000");
    EXPECT_EQ(parameter.valueRange->min, "-5.000000");
    EXPECT_EQ(parameter.valueRange->max, "2.500000");
    EXPECT_EQ(parameter.unit, "V");
    EXPECT_FALSE(parameter.hasOptionList);
    EXPECT_TRUE(parameter.options.empty());
}

TEST_F(Parameters, withoutABlockAConvertedParameterIsZeroAndWithoutUnit)
{
    start({});
    ParameterRecord made = record(1, 4);
    made.conversionId = 7;
    const ParameterP& plain = parse(made);
    EXPECT_EQ(plain.value, "0.000000");
    EXPECT_EQ(plain.valueRange->min, "0.000000");
    EXPECT_EQ(plain.valueRange->max, "0.000000");
    EXPECT_EQ(plain.unit, "");
    made.unitId = 110;
    EXPECT_EQ(parse(made).unit, "bar");
}

TEST_F(Parameters, theRecordsUnitOverridesTheConversions)
{
    start({2});
    ParameterRecord made = record(1, 4);
    made.conversionId = 7;
    made.unitId = 110;
    EXPECT_EQ(parse(made).unit, "bar");
    made.showMe = 0;
    EXPECT_EQ(parse(made).unit, "bar");
    made.unitId = 0;
    EXPECT_EQ(parse(made).unit, "");
}

TEST_F(Parameters, theDebugLinesShowTheConversionsUnit)
{
    start({2});
    ParameterRecord made = record(1, 7);
    made.number = 200;
    made.conversionId = 7;
    made.mapId = 250;
    made.unitId = 110;
    made.maximum = 4;
    const testkit::LogCapture log("debug");
    parse(made);
    EXPECT_THAT(log.texts(Poco::Message::PRIO_DEBUG),
                ElementsAre("showMe = 7, mapId = 250",
                            "kv38-test: Parameter 200 (name): value = 1.000000, min = 0.000000, "
                            "max = 2.000000, unit = [V]"));
}

TEST_F(Parameters, otherPathsSayNothingAtDebugPriority)
{
    start({1});
    const testkit::LogCapture log("debug");
    parse(record(1, 3));
    EXPECT_THAT(log.texts(Poco::Message::PRIO_DEBUG), ElementsAre());
}

TEST_F(Parameters, anInvalidDatatypeFailsBeforeTheNameIsLookedUp)
{
    start({1});
    ParameterRecord made = record(10, 0);
    made.nameId = 999;
    EXPECT_EQ(failureOf([&] { parse(made); }), "Invalid datatype");
    made.datatype = 0;
    EXPECT_EQ(failureOf([&] { parse(made); }), "Invalid datatype");
    EXPECT_TRUE(parser.dev->attributes.empty());
}

TEST_F(Parameters, missingTextsLeaveTheParameterOut)
{
    start({1});
    ParameterRecord made = record(1, 0);
    made.nameId = 999;
    EXPECT_EQ(failureOf([&] { parse(made); }), "Cannot find requested text string: ID = 999");
    made.nameId = 100;
    made.unitId = 998;
    EXPECT_EQ(failureOf([&] { parse(made); }), "Cannot find requested text string: ID = 998");
    EXPECT_TRUE(parser.dev->attributes.empty());
    EXPECT_EQ(parser.nextObjectId, 0U);
}

TEST(ParametersDeath, missingDeviceAndNullRecordAreFailedAssertions)
{
    ParserAccess parser;
    const Bytes record = ParameterRecord{}.bytes();
    const std::string file = "vendor/mx/src/mxparser_kv38/.*";
    EXPECT_DEATH(parser.parseParameter(record.data()), file + "Assertion `this->dev' failed");
    parser.dev = std::make_shared<ParserAccess::DeviceP>();
    EXPECT_DEATH(parser.parseParameter(nullptr), file + "Assertion `x20C0' failed");
}

} // namespace
