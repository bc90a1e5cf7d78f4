#include "DeviceView.h"
#include "ExampleModule.h"
#include "Failure.h"
#include "LogCapture.h"
#include "ParserAccess.h"

#include <gmock/gmock.h>

#include <iostream>
#include <locale>
#include <sstream>
#include <vector>

namespace {

using testing::Contains;
using testkit::Bytes;

// Groups every digit and writes a comma for the decimal point: every number formatted with it is
// detected.
struct TellTaleNumbers : std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\1"; }
};

// The global locale of C++ while it lives, with standard output in it as well.
class HostLocale
{
public:
    HostLocale()
        : previous(std::locale::global(std::locale(std::locale::classic(), new TellTaleNumbers))),
          previousOut(std::cout.imbue(std::locale()))
    {}
    ~HostLocale()
    {
        std::cout.imbue(previousOut);
        std::locale::global(previous);
    }
    HostLocale(const HostLocale&) = delete;
    HostLocale& operator=(const HostLocale&) = delete;

private:
    std::locale previous;
    std::locale previousOut;
};

// The log lines and the result of a translation, as texts.
std::vector<std::string> everyTextOf(const std::vector<char>& data)
{
    std::vector<std::string> texts;
    testkit::ParserAccess parser;
    testkit::LogCapture log("trace");
    const auto device = parser.parse(data, nullptr, 123456, 7890);
    for (const auto& line : log.lines()) {
        texts.push_back(line.text);
    }
    texts.push_back(device->deviceTypeId);
    for (const auto& [name, value] : propertiesOf(*device)) {
        texts.push_back(name + "=" + value);
    }
    for (const auto& attribute : device->attributes) {
        texts.push_back("id " + attribute->id);
    }
    for (const auto* channel : attributesOf<datamodel::Channel>(*device, 9)) {
        texts.insert(texts.end(), {channel->name, channel->iecSymbol, channel->numberText1});
    }
    for (const auto* parameter : attributesOf<datamodel::Parameter>(*device, 25)) {
        texts.insert(texts.end(), {parameter->value, parameter->unit, parameter->valueRange->min,
                                   parameter->valueRange->max});
        for (const auto& option : parameter->options) {
            texts.push_back(option->value);
        }
    }
    for (const auto* set : attributesOf<datamodel::Set>(*device, 28)) {
        texts.push_back(set->name);
        texts.insert(texts.end(), set->members.begin(), set->members.end());
    }
    return texts;
}

TEST(Locale, TellTaleIsSeenByTheStreamsOfTheHost)
{
    const HostLocale locale;
    std::ostringstream text;
    text << 1234 << ' ' << 0.5;
    EXPECT_EQ(text.str(), "1.2.3.4 0,5");
}

TEST(Locale, ChangesNothingOfATranslation)
{
    const std::vector<char> data = bufferOf(exampleGroups()).chars();
    const std::vector<std::string> classic = everyTextOf(data);
    std::vector<std::string> hosts;
    {
        const HostLocale locale;
        hosts = everyTextOf(data);
    }
    EXPECT_EQ(hosts, classic);
    EXPECT_THAT(hosts, Contains("parseGroup: 20f1 (1500 bytes)"));
    EXPECT_THAT(hosts, Contains("inDataOffset=123456"));
    EXPECT_THAT(hosts, Contains("IX123456_0"));
    EXPECT_THAT(hosts, Contains("IB123456#1,4095"));
    EXPECT_THAT(hosts, Contains("QD7890"));
    EXPECT_THAT(hosts, Contains("id 31"));
    EXPECT_THAT(hosts, Contains("channelParams_22"));
    EXPECT_THAT(hosts, Contains("490.000000")); // 1000 * 0.5 - 10
}

TEST(Locale, ChangesNoMessage)
{
    const HostLocale locale;
    testkit::ParserAccess parser;
    const std::vector<char> malformed =
        testkit::MxBuffer().group(5, Bytes(1228, 0)).raw(testkit::hexBytes("20d3 0001 00")).chars();
    EXPECT_EQ(testkit::failureOf([&] { parser.parse(malformed, nullptr, 0, 0); }),
              "Parser::parse(): Error in group 8403 (@ 1234): Invalid group length");
    const std::vector<char> texts =
        testkit::MxBuffer().group(0x20D3, testkit::textTablePayload({{1, "A"}})).chars();
    parser.index(texts);
    EXPECT_EQ(testkit::failureOf([&] { parser.getTextStringById(1234); }),
              "Cannot find requested text string: ID = 1234");
}

TEST(Locale, ChangesNoGroupListing)
{
    const std::vector<char> data = testkit::MxBuffer().group(0x20D3, Bytes(1234, 0)).chars();
    devices::parser::mx::Parser reader;
    reader.parse(data.data(), static_cast<std::uint32_t>(data.size()));
    testing::internal::CaptureStdout();
    {
        const HostLocale locale;
        reader.parseContent();
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Group 20d3 @ 4, size = 1234\n");
}

} // namespace
