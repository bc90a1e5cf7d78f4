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
    const text::Json json = mxmodule::deviceJson(reportOf("MX0304.bin"));
    EXPECT_EQ(json.begin().key(), "schema");
    EXPECT_EQ(json["schema"].dump(), R"({"name":"mxtool.device","version":1})");
}

TEST(DeviceJson, isValidUtf8WhateverTheTextsHold)
{
    DeviceReport report = reportOf("MX0304.bin");
    report.label.clear();
    for (int byte = 0; byte < 256; ++byte) {
        report.label += static_cast<char>(byte);
    }
    const text::Json read = text::Json::parse(text::jsonText(mxmodule::deviceJson(report)));
    EXPECT_EQ(read["channels"].size(), 4U);
}

TEST(DeviceJson, givesTheShownValueBesideTheRawOne)
{
    const text::Json json = mxmodule::deviceJson(reportOf("MX0404.bin"));
    EXPECT_EQ(json["parameters"][0]["value"], "20.000000");
    EXPECT_EQ(json["parameters"][0]["shown"], "20 mA");
    const text::Json listed = mxmodule::deviceJson(reportOf("MX0108.bin"));
    EXPECT_EQ(listed["parameters"][0]["value"], "1");
    EXPECT_EQ(listed["parameters"][0]["shown"], "3 ms");
    EXPECT_TRUE(listed["parameters"][0]["channel"].is_null());
}

} // namespace
