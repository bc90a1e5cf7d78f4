#include "DeviceView.h"
#include "ExampleModule.h"
#include "ParserAccess.h"

#include <gmock/gmock.h>

#include <type_traits>
#include <vector>

namespace {

using devices::parser::mx::MxChannelPrivateProps;
using devices::parser::mx::MxParameterPrivateProps;
using testing::ElementsAre;
using testing::IsEmpty;
using testkit::ParserAccess;

TEST(PrivateProps, TemplatesReportTheCodesOfTheirBases)
{
    EXPECT_EQ(ParserAccess::ChannelP().typeCode(), 9);
    EXPECT_EQ(ParserAccess::ParameterP().typeCode(), 25);
    EXPECT_EQ(ParserAccess::DeviceP().typeCode(), 10);
}

TEST(PrivateProps, OfANewChannelAreZero)
{
    const ParserAccess::ChannelP channel;
    EXPECT_EQ(channel.privateProps.channelNumber, 0);
    EXPECT_EQ(channel.privateProps.byteAddress, 0U);
    EXPECT_EQ(channel.privateProps.bitOffset, 0);
    EXPECT_EQ(channel.privateProps.bitLength, 0);
    EXPECT_EQ(channel.privateProps.flagBit6, 0);
    EXPECT_TRUE(std::is_trivially_destructible_v<MxChannelPrivateProps>);
}

TEST(PrivateProps, MembersOfAChannelAreInThisOrder)
{
    const MxChannelPrivateProps props;
    const auto* start = reinterpret_cast<const char*>(&props);
    const auto offset = [start](const void* member) {
        return static_cast<const char*>(member) - start;
    };
    EXPECT_EQ(offset(&props.channelNumber), 0);
    EXPECT_EQ(offset(&props.byteAddress), 4);
    EXPECT_EQ(offset(&props.bitOffset), 8);
    EXPECT_EQ(offset(&props.bitLength), 9);
    EXPECT_EQ(offset(&props.flagBit6), 10);
}

TEST(PrivateProps, FourPlacesOfAParameterAreConsecutiveBytes)
{
    const MxParameterPrivateProps props;
    const auto* start = reinterpret_cast<const char*>(&props);
    const auto offset = [start](const void* member) {
        return static_cast<const char*>(member) - start;
    };
    EXPECT_EQ(offset(&props.channelNumber), 0);
    EXPECT_EQ(offset(&props.record), 8);
    EXPECT_EQ(offset(&props.dataSize), 16);
    EXPECT_EQ(offset(&props.byteOffset), 17);
    EXPECT_EQ(offset(&props.bitOffset), 18);
    EXPECT_EQ(offset(&props.bitLength), 19);
    EXPECT_EQ(offset(&props.optionValues), 24);
}

// A parser with a device in which single records are translated.
class ParameterProps : public testing::Test
{
protected:
    ParameterProps() { parser.initializeDataStructs(data, nullptr); }

    const MxParameterPrivateProps& propsOf(const testkit::ParameterRecord& record)
    {
        bytes = record.bytes();
        parser.parseParameter(bytes.data());
        return static_cast<const ParserAccess::ParameterP&>(*parser.dev->attributes.back())
            .privateProps;
    }

    const std::vector<char> data = bufferOf(exampleGroups()).chars();
    testkit::Bytes bytes;
    ParserAccess parser;
};

TEST_F(ParameterProps, Datatype5WithBytes3And4HasBitLength3AndBitOffset4)
{
    testkit::ParameterRecord record;
    record.datatype = 5;
    record.bitLength = 3;
    record.bitOffset = 4;
    EXPECT_EQ(propsOf(record).bitLength, 3);
    EXPECT_EQ(propsOf(record).bitOffset, 4);
}

TEST_F(ParameterProps, EveryOtherDatatypeHasNeitherBitLengthNorBitOffset)
{
    testkit::ParameterRecord record;
    record.bitLength = 3;
    record.bitOffset = 4;
    for (const std::uint8_t datatype : testkit::Bytes{1, 2, 3, 4, 6, 7, 8, 9}) {
        record.datatype = datatype;
        EXPECT_EQ(propsOf(record).bitLength, 0) << int{datatype};
        EXPECT_EQ(propsOf(record).bitOffset, 0) << int{datatype};
    }
}

TEST_F(ParameterProps, Byte3Of2IsAByteOffsetOf254)
{
    testkit::ParameterRecord record;
    record.position = 2;
    EXPECT_EQ(propsOf(record).byteOffset, 254);
    record.position = 4;
    EXPECT_EQ(propsOf(record).byteOffset, 0);
    record.position = 255;
    EXPECT_EQ(propsOf(record).byteOffset, 251);
}

TEST_F(ParameterProps, WithoutAnOptionListKeepEmptyOptionValues)
{
    EXPECT_THAT(propsOf({}).optionValues, IsEmpty());
}

TEST_F(ParameterProps, OptionValuesBelongToTheOptionsOneByOne)
{
    testkit::ParameterRecord record;
    record.datatype = 5;
    record.mapId = 9;
    EXPECT_THAT(propsOf(record).optionValues, ElementsAre(0, 1));
    const auto& parameter =
        static_cast<const ParserAccess::ParameterP&>(*parser.dev->attributes.back());
    ASSERT_EQ(parameter.options.size(), 2U);
    EXPECT_EQ(parameter.options[0]->text, "off");
    EXPECT_EQ(parameter.options[1]->text, "on");
    EXPECT_TRUE(parameter.hasOptionList);
}

TEST_F(ParameterProps, DataSizeIsInBytes)
{
    const unsigned sizes[] = {1, 2, 1, 2, 1, 4, 4, 8, 8};
    testkit::ParameterRecord record;
    for (std::uint8_t datatype = 1; datatype <= 9; ++datatype) {
        record.datatype = datatype;
        EXPECT_EQ(propsOf(record).dataSize, sizes[datatype - 1]) << int{datatype};
    }
}

TEST_F(ParameterProps, RecordAndChannelNumberAreThoseOfTheRecord)
{
    testkit::ParameterRecord record;
    record.channelNumber = 7;
    const MxParameterPrivateProps& props = propsOf(record);
    EXPECT_EQ(props.channelNumber, 7);
    EXPECT_EQ(props.record, bytes.data());
    EXPECT_EQ(propsOf({}).channelNumber, 255);
}

TEST_F(ParameterProps, RecordsOfATranslationAreViewsOfTheBuffer)
{
    const auto device = parser.parse(data, nullptr, 0, 0);
    const auto parameters = attributesOf<ParserAccess::ParameterP>(*device, 25);
    ASSERT_EQ(parameters.size(), 3U);
    const std::uint8_t* records = parser.getGroup(0x20C0, nullptr);
    EXPECT_EQ(parameters[0]->privateProps.record, records);
    EXPECT_EQ(parameters[1]->privateProps.record, records + 29);
    EXPECT_EQ(parameters[2]->privateProps.record, records + 58);
}

TEST_F(ParameterProps, ChannelOfAKindWithoutAnAddressReportsAddress0)
{
    const testkit::Bytes record = testkit::ChannelRecord{8, 0x9F, 6, 5, 0}.bytes();
    parser.inBytePosition = 12;
    parser.parseChannel(record.data());
    const auto& channel =
        static_cast<const ParserAccess::ChannelP&>(*parser.dev->attributes.back());
    EXPECT_EQ(channel.privateProps.byteAddress, 0U);
    EXPECT_EQ(channel.privateProps.channelNumber, 8);
    EXPECT_EQ(channel.privateProps.bitLength, 6);
    EXPECT_EQ(channel.privateProps.bitOffset, 5);
    EXPECT_EQ(channel.privateProps.flagBit6, 0);
}

TEST_F(ParameterProps, FlagOfAChannelIsBit6OfItsKind)
{
    const testkit::Bytes record = testkit::ChannelRecord{8, 0xC1, 8, 0, 0}.bytes();
    parser.parseChannel(record.data());
    const auto& channel =
        static_cast<const ParserAccess::ChannelP&>(*parser.dev->attributes.back());
    EXPECT_EQ(channel.privateProps.flagBit6, 1);
}

} // namespace
