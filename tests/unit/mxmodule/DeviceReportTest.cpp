#include "DeviceReport.h"

#include "DeviceJson.h"
#include "DeviceText.h"

#include <devices/parser/mx/LoadFile.h>

#include <gmock/gmock.h>
#include <text/JsonText.h>

namespace {

using mxmodule::DeviceReport;
using testing::ElementsAre;
using testing::HasSubstr;

DeviceReport reportOf(const std::string& module)
{
    std::vector<char> bytes;
    devices::parser::mx::loadFile(std::string(EXAMPLE_MODULES) + "/" + module, bytes);
    devices::parser::mx::Parser_kv38 parser;
    const auto device = parser.parse(bytes, nullptr, 0, 0);
    return mxmodule::makeReport(*device, mxmodule::conversionsOf(bytes));
}

text::Json jsonOf(const DeviceReport& report)
{
    return mxmodule::deviceJson(report, report);
}

TEST(DeviceReport, holdsTheChannelsInTheirOrder)
{
    const DeviceReport report = reportOf("MX0108.bin");
    ASSERT_EQ(report.channels.size(), 8U);
    EXPECT_EQ(report.channels[3].name, "DI 4");
    EXPECT_EQ(report.channels[3].symbol, "IX0_3");
    EXPECT_EQ(report.channels[3].number, 3);
}

TEST(DeviceReport, marksTheOptionThatTheParameterHas)
{
    // The block's first byte is 1, the second option.
    const DeviceReport report = reportOf("MX0108.bin");
    const DeviceReport::Parameter& filter = report.parameters.front();
    EXPECT_TRUE(filter.ofModule());
    ASSERT_NE(filter.currentOption(), nullptr);
    EXPECT_EQ(filter.currentOption()->text, "3 ms");
    EXPECT_EQ(filter.currentOption(), &filter.options[1]);
}

TEST(DeviceReport, namesTheChannelsOfAParameterOnce)
{
    // Channel 0 is an input and an output, both called "Gate 1 open".
    const DeviceReport report = reportOf("MX0602.bin");
    EXPECT_THAT(report.parameters[1].channelNames, ElementsAre("Gate 1 open"));
}

TEST(DeviceText, showsAValueOutsideItsOptions)
{
    DeviceReport report = reportOf("MX0108.bin");
    report.parameters.resize(1);
    report.parameters[0].value = "77";
    report.parameters[0].options[1].current = false;
    EXPECT_THAT(mxmodule::deviceText(report), HasSubstr("77 (not in the list)"));
}

TEST(DeviceJson, startsWithItsSchema)
{
    const text::Json json = jsonOf(reportOf("MX0304.bin"));
    EXPECT_EQ(json.begin().key(), "schema");
    EXPECT_EQ(json["schema"].dump(), R"({"name":"mxtool.device","version":2})");
}

TEST(DeviceJson, isValidUtf8WhateverTheTextsHold)
{
    DeviceReport report = reportOf("MX0304.bin");
    report.label.clear();
    for (int byte = 0; byte < 256; ++byte) {
        report.label += static_cast<char>(byte);
    }
    const text::Json read = text::Json::parse(text::jsonText(jsonOf(report)));
    EXPECT_EQ(read["channels"].size(), 4U);
}

TEST(DeviceJson, givesTheShownValueBesideTheRawOne)
{
    const text::Json json = jsonOf(reportOf("MX0404.bin"));
    EXPECT_EQ(json["parameters"][0]["value"], "20.000000");
    EXPECT_EQ(json["parameters"][0]["shown"], "20 mA");
    const text::Json listed = jsonOf(reportOf("MX0108.bin"));
    EXPECT_EQ(listed["parameters"][0]["value"], "1");
    EXPECT_EQ(listed["parameters"][0]["shown"], "3 ms");
    EXPECT_TRUE(listed["parameters"][0]["channel"].is_null());
}

TEST(DeviceJson, givesTheNameAndTypeOfEachParameter)
{
    // "Preset" is also a parameter of channel 2.
    const text::Json parameters = jsonOf(reportOf("MX0602.bin"))["parameters"];
    EXPECT_EQ(parameters[0]["call_name"], "Mode");
    EXPECT_EQ(parameters[0]["type"], "UInt8");
    EXPECT_EQ(parameters[1]["call_name"], "Gate 1 open/Preset");
    EXPECT_EQ(parameters[1]["type"], "UInt32");
}

TEST(DeviceJson, tellsPhysicalValuesFromNumbers)
{
    const text::Json parameters = jsonOf(reportOf("MX0404.bin"))["parameters"];
    EXPECT_EQ(parameters[0]["physical"], true);
    EXPECT_EQ(parameters[4]["physical"], false); // a unit, but no conversion
}

TEST(DeviceJson, tellsWhetherAValueIsAccepted)
{
    DeviceReport report = reportOf("MX0108.bin");
    EXPECT_EQ(jsonOf(report)["parameters"][0]["accepted"], true);
    report.parameters[0].options[1].current = false;
    EXPECT_EQ(jsonOf(report)["parameters"][0]["accepted"], false);
}

TEST(DeviceJson, givesTheTextThatSelectsEachOption)
{
    DeviceReport report = reportOf("MX0108.bin");
    report.parameters[0].options[0].text = "2"; // the number of "10 ms"
    const text::Json options = jsonOf(report)["parameters"][0]["options"];
    EXPECT_EQ(options[0]["call_text"], "#0");
    EXPECT_EQ(options[1]["call_text"], "3 ms");
}

} // namespace
