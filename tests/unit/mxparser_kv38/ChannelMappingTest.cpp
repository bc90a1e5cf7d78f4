#include "ConfiguredModule.h"
#include "LogCapture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testkit::ParserAccess;

std::shared_ptr<ParserAccess::ChannelP> channel(const std::string& id, const std::string& symbol,
                                                std::uint8_t bitLength)
{
    auto made = std::make_shared<ParserAccess::ChannelP>();
    made->id = id;
    made->name = "name of " + id;
    made->iecSymbol = symbol;
    made->privateProps.bitLength = bitLength;
    return made;
}

TEST(ChannelMapping, aDeviceWithoutChannelsGivesAnEmptyList)
{
    ConfiguredModule module = exampleModule("MX0001.bin");
    EXPECT_TRUE(module.parser.getChannelMappingInfoList(module.device.get()).empty());
}

TEST(ChannelMapping, listsEveryChannelWithASymbolInItsOrder)
{
    ConfiguredModule module = exampleModule("MX0602.bin");
    std::vector<std::string> symbols;
    for (const auto& info : module.parser.getChannelMappingInfoList(module.device.get())) {
        symbols.push_back(info->iecSymbol);
    }
    EXPECT_THAT(symbols, ElementsAre("IX0_0", "IB0#1,7", "ID2", "IX6_0", "IW8", "IB10#3,31", "IL14",
                                     "QX0_0", "QB1", "QX2_7", "QD6"));
}

TEST(ChannelMapping, copiesThePlaceOfTheChannel)
{
    ParserAccess parser;
    datamodel::Device device;
    auto made = channel("4", "QB300#3,31", 5);
    made->privateProps.byteAddress = 300;
    made->privateProps.bitOffset = 3;
    device.attributes = {std::make_shared<datamodel::StaticProperty>(), made};
    const auto list = parser.getChannelMappingInfoList(&device);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0]->iecSymbol, "QB300#3,31");
    EXPECT_EQ(list[0]->area, 'Q');
    EXPECT_EQ(list[0]->sizeLetter, 'B');
    EXPECT_EQ(list[0]->byteAddress, 300U);
    EXPECT_EQ(list[0]->bitOffset, 3);
    EXPECT_EQ(list[0]->mask, 31);
}

TEST(ChannelMapping, theMaskIsCutToAByteForEveryLength)
{
    ParserAccess parser;
    for (unsigned length = 0; length < 256; ++length) {
        datamodel::Device device;
        device.attributes = {channel("0", "IX0_0", static_cast<std::uint8_t>(length))};
        const unsigned expected = length >= 8 ? 255 : (1U << length) - 1;
        EXPECT_EQ(parser.getChannelMappingInfoList(&device)[0]->mask, expected) << length;
    }
}

TEST(ChannelMapping, aSymbolOfOneCharacterIsSkippedWithAWarningThatNamesTheId)
{
    ParserAccess parser;
    datamodel::Device device;
    device.attributes = {channel("10", "I", 1), channel("11", "", 1), channel("12", "IX", 1)};
    const testkit::LogCapture log("warning");
    const auto list = parser.getChannelMappingInfoList(&device);
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0]->iecSymbol, "IX");
    EXPECT_THAT(
        log.texts(Poco::Message::PRIO_WARNING),
        ElementsAre("channel 10: no IEC symbol assigned", "channel 11: no IEC symbol assigned"));
}

TEST(ChannelMappingDeath, aNullDeviceIsAFailedAssertion)
{
    ParserAccess parser;
    EXPECT_DEATH(parser.getChannelMappingInfoList(nullptr),
                 "vendor/mx/src/mxparser_kv38/.*Assertion `dev != nullptr' failed");
}

} // namespace
