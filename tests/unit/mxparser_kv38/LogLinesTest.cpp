#include "ExampleModule.h"
#include "Failure.h"
#include "LogCapture.h"
#include "ParserAccess.h"

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <vector>

namespace {

using Poco::Message;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using testkit::minimalModule;

class LogLines : public testing::Test
{
protected:
    // Every line, in order, with the first letter of its priority.
    std::vector<std::string> linesOf(const std::vector<char>& data, const std::string& level)
    {
        testkit::LogCapture log(level);
        parser.parse(data, nullptr, 0, 0);
        std::vector<std::string> lines;
        for (const auto& line : log.lines()) {
            const char letter = line.priority == Message::PRIO_TRACE     ? 'T'
                                : line.priority == Message::PRIO_DEBUG   ? 'D'
                                : line.priority == Message::PRIO_WARNING ? 'W'
                                : line.priority == Message::PRIO_ERROR   ? 'E'
                                                                         : '?';
            lines.push_back(letter + (" " + line.text));
        }
        return lines;
    }

    testkit::ParserAccess parser;
};

TEST_F(LogLines, NothingIsSaidAtLevelInformation)
{
    EXPECT_THAT(linesOf(bufferOf(exampleGroups()).chars(), "information"), IsEmpty());
}

TEST_F(LogLines, EveryGroupIsADebugLineWithItsPayloadSizeInFileOrder)
{
    EXPECT_THAT(linesOf(minimalModule().chars(), "debug"),
                ElementsAre("D parseGroup: 0001 (10 bytes)", "D parseGroup: 0020 (160 bytes)",
                            "D parseGroup: 0040 (42 bytes)", "D parseGroup: 0011 (0 bytes)"));
}

TEST_F(LogLines, RepeatedGroupIsSaidWithTheFirstOccurrencesSizeEachTime)
{
    const auto data = minimalModule()
                          .group(0x20F5, testkit::Bytes(3, 0))
                          .group(0x20F5, testkit::Bytes(7, 0))
                          .chars();
    const auto lines = linesOf(data, "debug");
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[4], "D parseGroup: 20f5 (3 bytes)");
    EXPECT_EQ(lines[5], "D parseGroup: 20f5 (3 bytes)");
}

TEST_F(LogLines, OfATranslationAreInTheOrderOfItsSteps)
{
    std::vector<std::string> expected{"T >> parse().",
                                      "T >> parseInternal().",
                                      "T >> initializeDataStructs().",
                                      "D parseGroup: 0001 (10 bytes)",
                                      "D parseGroup: 0020 (160 bytes)",
                                      "D parseGroup: 0040 (42 bytes)",
                                      "D parseGroup: 0011 (10 bytes)",
                                      "T >> setupDefaultParams().",
                                      "T >> parseContent()."};
    const auto addProperties = [&expected](int count) {
        for (int i = 0; i < count; ++i) {
            expected.emplace_back("T >> addStaticProperty().");
            expected.emplace_back("T >> assignIdAndAddAttribute().");
        }
    };
    addProperties(10);
    expected.insert(expected.end(), {"T >> getDataArraySizes().", "T >> mxTextToStdString().",
                                     "T >> updateDataArraySize().", "T >> updateDataArraySize()."});
    addProperties(6);
    // The set of the properties and the role.
    expected.insert(expected.end(), {"T >> setupReferences().", "T >> assignIdAndAddAttribute().",
                                     "T >> assignIdAndAddAttribute()."});
    // The line states output data: the second key that is tried.
    EXPECT_THAT(linesOf(minimalModule({"OutDataW"}).chars(), "trace"), ElementsAreArray(expected));
}

TEST_F(LogLines, ParametersAreTranslatedBeforeChannels)
{
    const auto lines = linesOf(bufferOf(exampleGroups()).chars(), "trace");
    std::string order;
    for (const std::string& line : lines) {
        order += line == "T >> parseParameter()." ? "P" : "";
        order += line == "T >> parseChannel()." ? "C" : "";
        order += line == "T >> setupReferences()." ? "R" : "";
    }
    EXPECT_EQ(order, "PPPCCCCCR");
}

TEST_F(LogLines, ArgumentsAlwaysSuitTheirFormat)
{
    for (const std::string& line : linesOf(bufferOf(exampleGroups()).chars(), "trace")) {
        EXPECT_THAT(line, Not(HasSubstr("ERRFMT")));
        EXPECT_THAT(line, Not(HasSubstr("%")));
        EXPECT_NE(line.front(), '?') << line;
    }
}

TEST_F(LogLines, TextsOfTheFileAreNoFormatAndStandInOneLineByteForByte)
{
    // A bare line feed ends a text that is skipped, so this name is the last.
    const std::string name = "%s %n{}\033[2J\nerror: %d";
    Groups groups = exampleGroups();
    for (auto& [id, payload] : groups) {
        if (id == 0x0040) {
            payload = testkit::entriesPayload({{"Component", "%i%s"}, {"Creator", ""}});
        } else if (id == 0x20D3) {
            payload = testkit::textTablePayload({{100, "Filter"},
                                                 {101, "Mode"},
                                                 {110, "off"},
                                                 {111, "on"},
                                                 {120, "%d"},
                                                 {130, "4012345678901"},
                                                 {200, "Input 1"},
                                                 {201, "-"},
                                                 {102, name}});
        }
    }
    EXPECT_THAT(linesOf(bufferOf(groups).chars(), "debug"),
                Contains(AllOf(StartsWith("D %i%s: Parameter 3 (" + name + "): value = 490.000000"),
                               EndsWith("unit = [%d]"))));
}

TEST_F(LogLines, CustomBlockOfAnotherSizeFailsBeforeTheContent)
{
    const std::vector<char> data = minimalModule().chars();
    std::vector<char> custom(1, 0);
    testkit::LogCapture log("trace");
    EXPECT_NE(testkit::failureOf([&] { parser.parse(data, &custom, 0, 0); }), "");
    EXPECT_EQ(log.lines().back().text, ">> setupDefaultParams().");
}

// An operation logs its own name first, whatever it does then.
TEST_F(LogLines, EveryOperationSaysItsNameFirst)
{
    const std::vector<char> data = bufferOf(exampleGroups()).chars();
    const auto device = parser.parse(data, nullptr, 0, 0);
    const std::uint8_t* parameter = parser.getGroup(0x20C0, nullptr);
    const std::uint8_t* channel = parser.getGroup(0x20D0, nullptr);
    auto parameterObject = std::make_shared<testkit::ParserAccess::ParameterP>();
    testkit::ParserAccess::ChannelP channelObject;
    std::vector<char> raw(4, 0);
    std::uint32_t size = 0;
    using devices::parser::mx::MxParameterDatatype;

    const std::map<std::string, std::function<void()>> operations{
        {"parse", [&] { parser.parse(data, nullptr, 0, 0); }},
        {"parseInternal", [&] { parser.parseInternal(data, nullptr, 0, 0); }},
        {"initializeDataStructs", [&] { parser.initializeDataStructs(data, nullptr); }},
        {"parseContent", [&] { parser.parseContent(); }},
        {"populateDatabase", [&] { parser.populateDatabase(""); }},
        {"setupDefaultParams", [&] { parser.setupDefaultParams(); }},
        {"mxTextToStdString",
         [&] { parser.mxTextToStdString(reinterpret_cast<const std::uint8_t*>("A"), 1); }},
        {"getTextStringById", [&] { parser.getTextStringById(100); }},
        {"getDatatypeSize", [&] { parser.getDatatypeSize(MxParameterDatatype::Byte); }},
        {"getDataArraySizes",
         [&] {
             std::uint32_t sizes[4];
             parser.getDataArraySizes(&sizes[0], &sizes[1], &sizes[2], &sizes[3]);
         }},
        {"updateDataArraySize", [&] { parser.updateDataArraySize("InData", "InData", &size); }},
        {"parseChannel", [&] { parser.parseChannel(channel); }},
        {"setupChannel", [&] { parser.setupChannel(&channelObject, "A", 1, 0x85, 1, 0); }},
        {"addToAggregatedChannelCandidate",
         [&] { parser.addToAggregatedChannelCandidate("IB0", "1"); }},
        {"parseParameter", [&] { parser.parseParameter(parameter); }},
        {"getOptionListById",
         [&] { parser.getOptionListById(9, MxParameterDatatype::Byte, parameterObject.get()); }},
        {"assignIdAndAddAttribute", [&] { parser.assignIdAndAddAttribute(parameterObject); }},
        {"addStaticProperty", [&] { parser.addStaticProperty("a", "b"); }},
        {"setupReferences", [&] { parser.setupReferences(); }},
        {"getCalculatedRawConfig",
         [&] {
             parser.getCalculatedRawConfig(devices::parser::FieldbusType::Raw, data, device.get(),
                                           nullptr);
         }},
        {"getParameterListOrderdLikeKv38",
         [&] { parser.getParameterListOrderdLikeKv38(device.get()); }},
        {"createModbusParamBuffer", [&] { parser.createModbusParamBuffer(device.get(), &raw); }},
        {"getChannelMappingInfoList", [&] { parser.getChannelMappingInfoList(device.get()); }},
    };
    for (const auto& [name, operation] : operations) {
        const testkit::LogCapture log("trace");
        operation();
        ASSERT_FALSE(log.lines().empty()) << name;
        EXPECT_EQ(log.lines().front().text, ">> " + name + "().");
        EXPECT_EQ(log.lines().front().priority, Message::PRIO_TRACE) << name;
    }
}

TEST_F(LogLines, ContainerSaysNothing)
{
    const std::vector<char> data = minimalModule().chars();
    const testkit::LogCapture log("trace");
    parser.index(data);
    parser.getGroup(0x0001, nullptr);
    parser.getGroupEntry(0x0040, "Component");
    std::uint8_t type = 0;
    parser.getModuleIdAndType(&parser.moduleId, &type);
    EXPECT_THAT(log.lines(), IsEmpty());
}

} // namespace
