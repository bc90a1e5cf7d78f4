#include "DeviceView.h"
#include "ExampleModule.h"
#include "Failure.h"
#include "LogCapture.h"
#include "ParserAccess.h"

#include <Poco/Exception.h>
#include <Poco/Logger.h>

#include <gmock/gmock.h>

#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testkit::failureOf;
using testkit::hexBytes;
using testkit::minimalModule;
using testkit::ParserAccess;

constexpr const char* blockSizeDiffers = "Provided custom parameter buffer size is not equal to "
                                         "the default parameter bauffer size";

TEST(Construction, MembersAreEmptyAndZero)
{
    const ParserAccess parser;
    EXPECT_EQ(parser.dev, nullptr);
    EXPECT_EQ(parser.paramBuffer, nullptr);
    EXPECT_EQ(parser.paramBufferSize, 0);
    EXPECT_EQ(parser.moduleId, 0U);
    EXPECT_EQ(parser.inDataSize, 0U);
    EXPECT_EQ(parser.outDataSize, 0U);
    EXPECT_EQ(parser.diagDataSize, 0U);
    EXPECT_EQ(parser.inDataOffset, 0U);
    EXPECT_EQ(parser.outDataOffset, 0U);
    EXPECT_EQ(parser.nextObjectId, 0U);
    EXPECT_EQ(parser.inBitPosition, 0U);
    EXPECT_EQ(parser.inBytePosition, 0U);
    EXPECT_EQ(parser.outBitPosition, 0U);
    EXPECT_EQ(parser.outBytePosition, 0U);
    EXPECT_EQ(parser.mxVersion, "");
    EXPECT_THAT(parser.aggregatedChannelCandidates, IsEmpty());
    EXPECT_THAT(parser.groupOrder, IsEmpty());
    EXPECT_THAT(parser.groupIndex, IsEmpty());
    EXPECT_EQ(parser.buffer, nullptr);
}

TEST(Construction, SetsTheLoggersLevelToInformation)
{
    const testkit::LogCapture capture("trace");
    const ParserAccess parser;
    EXPECT_EQ(&parser.logger, &Poco::Logger::get("mxparser-kv38"));
    EXPECT_EQ(parser.logger.getLevel(), Poco::Message::PRIO_INFORMATION);
}

TEST(LoggingLevel, TakesPocosNamesAndNumbersForEveryHolderOfTheLogger)
{
    const testkit::LogCapture capture;
    ParserAccess parser;
    Poco::Logger& logger = Poco::Logger::get("mxparser-kv38");
    parser.setLoggingLevel("debug");
    EXPECT_EQ(logger.getLevel(), Poco::Message::PRIO_DEBUG);
    parser.setLoggingLevel("3");
    EXPECT_EQ(logger.getLevel(), Poco::Message::PRIO_ERROR);
    parser.setLoggingLevel("none");
    EXPECT_EQ(logger.getLevel(), 0);
}

TEST(LoggingLevel, UnknownNameFailsAsPocoFailsAndLeavesTheLevel)
{
    const testkit::LogCapture capture;
    ParserAccess parser;
    EXPECT_THROW(parser.setLoggingLevel("loud"), Poco::InvalidArgumentException);
    EXPECT_EQ(parser.logger.getLevel(), Poco::Message::PRIO_INFORMATION);
}

TEST(Parse, GivesADeviceOwnedTogetherWithTheParser)
{
    ParserAccess parser;
    const std::vector<char> data = minimalModule().chars();
    const auto device = parser.parse(data, nullptr, 0, 0);
    EXPECT_EQ(device, parser.dev);
    EXPECT_EQ(device.use_count(), 2);
}

TEST(Parse, DeviceOutlivesTheParser)
{
    std::shared_ptr<ParserAccess::DeviceP> device;
    const std::vector<char> data = minimalModule().chars();
    {
        ParserAccess parser;
        device = parser.parse(data, nullptr, 0, 0);
    }
    EXPECT_EQ(device.use_count(), 1);
    EXPECT_EQ(device->brandLabelName, "Test module");
}

TEST(Parse, SameBufferTwiceGivesTwoDevicesAndTheFirstStaysValid)
{
    ParserAccess parser;
    const std::vector<char> data = bufferOf(exampleGroups()).chars();
    const auto first = parser.parse(data, nullptr, 0, 0);
    const auto second = parser.parse(data, nullptr, 0, 0);
    EXPECT_NE(first, second);
    EXPECT_EQ(first.use_count(), 1);
    EXPECT_EQ(first->brandLabelName, "Example");
    ASSERT_EQ(first->attributes.size(), second->attributes.size());
    for (std::size_t i = 0; i < first->attributes.size(); ++i) {
        EXPECT_EQ(first->attributes[i]->id, std::to_string(i));
        EXPECT_EQ(second->attributes[i]->id, std::to_string(i));
    }
}

TEST(Parse, EachTranslationStartsFromTheBeginning)
{
    ParserAccess parser;
    const std::vector<char> large = bufferOf(exampleGroups()).chars();
    const std::vector<char> small = minimalModule({"InData W"}).chars();
    parser.parse(large, nullptr, 10, 20);
    EXPECT_THAT(parser.aggregatedChannelCandidates,
                ElementsAre(testing::Pair("IB10", ElementsAre("22"))));
    parser.parse(small, nullptr, 5, 6);
    EXPECT_THAT(parser.aggregatedChannelCandidates, IsEmpty());
    EXPECT_THAT(parser.groupOrder, ElementsAre(0x0001, 0x0020, 0x0040, 0x0011));
    EXPECT_EQ(parser.inDataOffset, 5U);
    EXPECT_EQ(parser.outDataOffset, 6U);
    EXPECT_EQ(parser.inBytePosition, 5U);
    EXPECT_EQ(parser.outBytePosition, 6U);
    EXPECT_EQ(parser.inBitPosition, 0U);
    EXPECT_EQ(parser.outBitPosition, 0U);
    EXPECT_EQ(parser.paramBuffer, nullptr);
    EXPECT_EQ(parser.paramBufferSize, 0);
    EXPECT_EQ(parser.mxVersion, "kv38-test");
}

TEST(Parse, LeavesItsSizesInTheParser)
{
    ParserAccess parser;
    const std::vector<char> data = bufferOf(exampleGroups()).chars();
    parser.parse(data, nullptr, 0, 0);
    EXPECT_EQ(parser.moduleId, 0x01020304U);
    EXPECT_EQ(parser.inDataSize, 6U);
    EXPECT_EQ(parser.outDataSize, 12U);
    EXPECT_EQ(parser.diagDataSize, 2U);
    EXPECT_EQ(parser.paramBufferSize, 4);
    EXPECT_EQ(parser.paramBuffer, parser.dev->privateProps.defaultParameterBlock->data());
}

TEST(Parse, FramingErrorLeavesANewEmptyDevice)
{
    ParserAccess parser;
    const std::vector<char> good = minimalModule().chars();
    const std::vector<char> bad = minimalModule().raw(hexBytes("0005 0001 00")).chars();
    const auto before = parser.parse(good, nullptr, 0, 0);
    // 16 + 166 + 48 + 6 bytes are before the malformed group.
    EXPECT_EQ(failureOf([&] { parser.parse(bad, nullptr, 0, 0); }),
              "Parser::parse(): Error in group 5 (@ 236): Invalid group length");
    ASSERT_NE(parser.dev, nullptr);
    EXPECT_NE(parser.dev, before);
    EXPECT_THAT(parser.dev->attributes, IsEmpty());
    EXPECT_EQ(parser.nextObjectId, 0U);
    EXPECT_EQ(before->attributes.size(), 18U);
}

TEST(Parse, EmptyBufferHasNoIdentity)
{
    ParserAccess parser;
    EXPECT_EQ(failureOf([&] { parser.parse({}, nullptr, 0, 0); }),
              "Parser::getTavoDatasetFromGroup(): No such group: 0001");
}

TEST(Parse, NextTranslationWorksAfterAFailedOne)
{
    ParserAccess parser;
    const std::vector<char> data = minimalModule().chars();
    EXPECT_NE(failureOf([&] { parser.parse({}, nullptr, 0, 0); }), "");
    EXPECT_EQ(parser.parse(data, nullptr, 0, 0)->attributes.size(), 18U);
}

TEST(Parse, FailedTranslationKeepsWhatItDidNotReach)
{
    ParserAccess parser;
    const std::vector<char> good = bufferOf(exampleGroups()).chars();
    parser.parse(good, nullptr, 10, 20);
    const std::vector<char> bad = testkit::MxBuffer().raw(hexBytes("0005 0001 00")).chars();
    EXPECT_NE(failureOf([&] { parser.parse(bad, nullptr, 1, 2); }), "");
    EXPECT_EQ(parser.mxVersion, "kv38-example");
    EXPECT_EQ(parser.moduleId, 0x01020304U);
    EXPECT_EQ(parser.inDataOffset, 10U);
    EXPECT_EQ(parser.paramBufferSize, 4);
    EXPECT_EQ(parser.inBytePosition, 0U);
    EXPECT_THAT(parser.aggregatedChannelCandidates, IsEmpty());
}

class CustomBlock : public testing::Test
{
protected:
    const std::vector<char> data = bufferOf(exampleGroups()).chars();
    ParserAccess parser;
};

TEST_F(CustomBlock, OfEqualSizeBecomesTheDevicesBlock)
{
    std::vector<char> custom{9, 8, 7, 6};
    const auto device = parser.parse(data, &custom, 0, 0);
    const auto& block = device->privateProps.defaultParameterBlock;
    EXPECT_THAT(*block, ElementsAre(9, 8, 7, 6));
    EXPECT_NE(block->data(), custom.data());
    EXPECT_EQ(parser.paramBuffer, block->data());
    custom.assign(4, 0);
    EXPECT_THAT(*block, ElementsAre(9, 8, 7, 6));
}

TEST_F(CustomBlock, IsWhereParameterValuesAreReadFrom)
{
    std::vector<char> custom{77, 4, 0, 0};
    const auto device = parser.parse(data, &custom, 0, 0);
    EXPECT_EQ(attributesOf<datamodel::Parameter>(*device, 25).front()->value, "77");
}

TEST_F(CustomBlock, OneByteLongerOrShorterFails)
{
    for (const std::size_t size : {3U, 5U, 0U}) {
        std::vector<char> custom(size, 0);
        EXPECT_EQ(failureOf([&] { parser.parse(data, &custom, 0, 0); }), blockSizeDiffers) << size;
        EXPECT_THAT(*parser.dev->privateProps.defaultParameterBlock, ElementsAre(5, 4, 3, '\xE8'));
    }
}

TEST_F(CustomBlock, WrongSizeIsSeenBeforeTheContent)
{
    std::vector<char> custom(1, 0);
    EXPECT_EQ(failureOf([&] { parser.parse({}, &custom, 0, 0); }), blockSizeDiffers);
}

TEST_F(CustomBlock, MayBeEmptyWhereTheDefaultIs)
{
    std::vector<char> custom;
    const std::vector<char> small = minimalModule().chars();
    EXPECT_NO_THROW(parser.parse(small, &custom, 0, 0));
    EXPECT_EQ(parser.paramBuffer, nullptr);
}

TEST(EmptyBlock, InitialisesTheCompanionWithNothing)
{
    // The parameter's value is then outside every block: it is absent.
    Groups groups = exampleGroups();
    for (auto& [id, payload] : groups) {
        if (id == 0x0010) {
            payload = hexBytes("00 00");
        } else if (id == 0x0011) {
            payload = {};
        }
    }
    ParserAccess parser;
    const std::vector<char> full = bufferOf(exampleGroups()).chars();
    parser.parse(full, nullptr, 0, 0);
    const std::vector<char> data = bufferOf(groups).chars();
    const auto device = parser.parse(data, nullptr, 0, 0);
    EXPECT_EQ(parser.paramBuffer, nullptr);
    EXPECT_EQ(parser.paramBufferSize, 0);
    EXPECT_EQ(attributesOf<datamodel::Parameter>(*device, 25).front()->value, "");
}

} // namespace
