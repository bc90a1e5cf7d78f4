#include "Failure.h"
#include "MxBuffer.h"
#include "ParserAccess.h"
#include "VirtualSlot.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace {

using devices::parser::IDeviceParser;
using devices::parser::mx::Parser;
using devices::parser::mx::Parser_kv38;
using testkit::ParserAccess;

TEST(ParserLayout, IsPubliclyADeviceParserButNotAContainer)
{
    EXPECT_TRUE((std::is_convertible_v<Parser_kv38*, IDeviceParser*>));
    EXPECT_TRUE((std::is_base_of_v<Parser, Parser_kv38>));
    EXPECT_FALSE((std::is_convertible_v<Parser_kv38*, Parser*>));
}

TEST(ParserLayout, DeviceParserIsTheFirstBaseAndTheContainerTheSecond)
{
    ParserAccess parser;
    const auto* start = reinterpret_cast<const char*>(&parser);
    const auto* first = reinterpret_cast<const char*>(static_cast<IDeviceParser*>(&parser));
    const auto* second = reinterpret_cast<const char*>(&parser.asContainer());
    EXPECT_EQ(first, start);
    EXPECT_EQ(second, start + sizeof(IDeviceParser));
}

TEST(ParserLayout, SlotsAreThoseOfTheInterfaceThenParseContent)
{
    EXPECT_EQ(testkit::slotOf(&Parser_kv38::populateDatabase), 2);
    EXPECT_EQ(testkit::slotOf(&Parser_kv38::parse), 3);
    EXPECT_EQ(testkit::slotOf(&Parser_kv38::getCalculatedRawConfig), 4);
    EXPECT_EQ(testkit::slotOf(&Parser_kv38::getChannelMappingInfoList), 5);
    EXPECT_EQ(testkit::slotOf(&ParserAccess::parseContent), 6);
}

TEST(ParserLayout, ParseContentOfTheContainerIsTheTranslation)
{
    ParserAccess parser;
    const std::vector<char> data = testkit::MxBuffer().group(0x0005, {}).chars();
    parser.index(data);
    testing::internal::CaptureStdout();
    EXPECT_EQ(testkit::failureOf([&] { parser.asContainer().parseContent(); }),
              "Parser::getTavoDatasetFromGroup(): No such group: 0001");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(ParserLayout, MembersAreInThisOrder)
{
    const ParserAccess p;
    const std::vector<const void*> members{&p.dev,
                                           &p.paramBuffer,
                                           &p.paramBufferSize,
                                           &p.moduleId,
                                           &p.inDataSize,
                                           &p.outDataSize,
                                           &p.diagDataSize,
                                           &p.inDataOffset,
                                           &p.outDataOffset,
                                           &p.nextObjectId,
                                           &p.inBitPosition,
                                           &p.inBytePosition,
                                           &p.outBitPosition,
                                           &p.outBytePosition,
                                           &p.mxVersion,
                                           &p.aggregatedChannelCandidates};
    const auto* start = reinterpret_cast<const char*>(&p);
    // The logger is directly after the two bases, the device after it.
    EXPECT_EQ(static_cast<const char*>(members.front()) - start,
              static_cast<std::ptrdiff_t>(sizeof(IDeviceParser) + sizeof(Parser) + sizeof(void*)));
    for (std::size_t i = 1; i < members.size(); ++i) {
        EXPECT_LT(members[i - 1], members[i]) << i;
    }
}

TEST(ParserLayout, NumbersHaveTheseWidths)
{
    EXPECT_TRUE((std::is_same_v<decltype(ParserAccess::paramBufferSize), std::uint16_t>));
    EXPECT_TRUE((std::is_same_v<decltype(ParserAccess::moduleId), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(ParserAccess::nextObjectId), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(ParserAccess::paramBuffer), char*>));
}

TEST(ParserLayout, WorksThroughTheInterface)
{
    const std::unique_ptr<IDeviceParser> parser = std::make_unique<Parser_kv38>();
    const std::vector<char> data = testkit::minimalModule().chars();
    EXPECT_EQ(parser->parse(data, nullptr, 0, 0)->typeCode(), 10);
}

} // namespace
