#include "Plans.h"
#include "export/Provenance.h"

#include <mxstation/ChannelExport.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace {

using mxstation::Plan;
using testing::HasSubstr;

Plan sample()
{
    Plan plan = planOf({bitsAt("Ready", 'I', 0, 3, 1),
                        withNote(withSign(wholeAt("AI 1", 'I', 'W', 3)), "LT_101", "tank 1"),
                        bitsAt("State", 'Q', 1, 6, 3)});
    plan.channels[2].module = 2;
    plan.channels[2].moduleName = "Pumps";
    return plan;
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

// The cells of a row that come before the last three.
std::string cellsOf(const Plan& plan, std::size_t row)
{
    const std::string line = linesOf(mxstation::channelsCsv(plan)).at(row);
    return line.substr(0, line.find("," + mxstation::Provenance::version()));
}

TEST(ChannelTables, showThePlacesInTheImages)
{
    EXPECT_EQ(mxstation::channelsText(sample()),
              "Position  Module  Channel  Alias   Symbol   Byte  Bit  Bits  Comment\n"
              "1         Levels  Ready            IX0_3    0     3    1\n"
              "1         Levels  AI 1     LT_101  IW3      3     0    16    tank 1\n"
              "2         Pumps   State            QB1#6,7  1     6    3\n");
}

TEST(ChannelTables, csvHasTypesAndRegisters)
{
    EXPECT_EQ(cellsOf(sample(), 0),
              "module,module_name,number,name,alias,comment,direction,area,symbol,type,byte,bit,"
              "bits,register_from_0,register_from_1,register_byte,mxtool,station_sha256,"
              "mx_sha256\r");
    EXPECT_EQ(cellsOf(sample(), 1), "1,Levels,3,Ready,,,in,I,IX0_3,BOOL,0,3,1,0,1,high");
    EXPECT_EQ(cellsOf(sample(), 2), "1,Levels,3,AI 1,LT_101,tank 1,in,I,IW3,INT,3,0,16,1,2,low");
    EXPECT_EQ(cellsOf(sample(), 3), "2,Pumps,3,State,,,out,Q,\"QB1#6,7\",3 BOOL,1,6,3,0,1,low");
}

// The first register of an image is that of its first byte, wherever it begins.
TEST(ChannelTables, registersCountFromTheFirstByteOfTheImage)
{
    Plan plan = planOf({wholeAt("A", 'I', 'W', 11), wholeAt("B", 'I', 'B', 14)});
    plan.input = {11, 4};
    EXPECT_THAT(cellsOf(plan, 1), HasSubstr(",WORD,11,0,16,0,1,high"));
    EXPECT_THAT(cellsOf(plan, 2), HasSubstr(",BYTE,14,0,8,1,2,low"));
}

TEST(ChannelTables, aChannelOutsideTheImageHasNoRegister)
{
    Plan plan =
        planOf({wholeAt("A", 'I', 'W', 31), wholeAt("B", 'I', 'W', 30), wholeAt("C", 'I', 'B', 4)});
    EXPECT_THAT(cellsOf(plan, 1), HasSubstr(",WORD,31,0,16,,,"));
    EXPECT_THAT(cellsOf(plan, 2), HasSubstr(",WORD,30,0,16,15,16,high"));
    plan.input = {5, 27};
    EXPECT_THAT(cellsOf(plan, 3), HasSubstr(",BYTE,4,0,8,,,"));
}

TEST(ChannelTables, csvStatesWhatItIsMadeOf)
{
    const Plan plan = mxstation::plan(
        mxstation::stationOf("modules: [MX0208.bin]\n", EXAMPLE_MODULES "/row.yaml"));
    // printf 'modules: [MX0208.bin]\n' | sha256sum; examples/modules/SHA256SUMS
    const std::string tail = "," + mxstation::Provenance::version() +
                             ",94105ace16e84b70e8bf23e350f6cbb7fa8e1d676b8fcb2784860330ec7b4ba4"
                             ",7427e94acae8f50505cff247c51c06df688cca82e9a228393ec8733aa1afd751\r";
    const std::vector<std::string> lines = linesOf(mxstation::channelsCsv(plan));
    ASSERT_GT(lines.size(), 1U);
    for (std::size_t row = 1; row < lines.size(); ++row) {
        EXPECT_EQ(lines[row].substr(lines[row].size() - tail.size()), tail);
    }
}

TEST(ChannelTables, csvHasTheStyleAskedFor)
{
    EXPECT_EQ(mxstation::channelsCsv(sample(), {';', true}).substr(0, 21),
              "\xEF\xBB\xBFmodule;module_name");
}

TEST(ChannelsJson, isThatOfModuleChannelsWithTheModule)
{
    Plan plan = sample();
    plan.withoutSymbol = {{2, "Pumps", {"9", 4, "Spare", "", "", "", 0, 0, 0}}};
    plan.input = {10, 4};
    const auto made = nlohmann::ordered_json::parse(mxstation::channelsJson(plan));
    EXPECT_EQ(made.at("schema").dump(), R"({"name":"mxtool.station-channels","version":1})");
    EXPECT_EQ(made.at("station"), "Pump house");
    EXPECT_EQ(made.at("station_sha256"), sumOfAbc);
    EXPECT_EQ(made.at("mxtool"), mxstation::Provenance::version());
    EXPECT_EQ(made.at("input").dump(), R"({"offset":10,"size":4})");
    ASSERT_EQ(made.at("channels").size(), 3U);
    EXPECT_EQ(made.at("channels")[1].dump(),
              R"({"module":1,"module_name":"Levels","alias":"LT_101","comment":"tank 1","id":"7",)"
              R"("number":3,"name":"AI 1","direction":"in","symbol":"IW3","area":"I",)"
              R"("size_letter":"W","byte":3,"bit_offset":0,"bit_length":16,"mask":255})");
    EXPECT_EQ(made.at("channels")[2].at("module"), 2);
    EXPECT_EQ(made.at("without_symbol").dump(),
              R"([{"module":2,"module_name":"Pumps","id":"9","number":4,"name":"Spare",)"
              R"("direction":""}])");
}

TEST(ChannelsJson, listsTheFilesOfTheModules)
{
    const Plan plan = mxstation::plan(mxstation::stationOf(
        "modules: [MX0208.bin, MX0116.bin, MX0208.bin]\n", EXAMPLE_MODULES "/row.yaml"));
    const auto made = nlohmann::ordered_json::parse(mxstation::channelsJson(plan));
    EXPECT_EQ(made.at("mx_files").dump(),
              R"([{"reference":"MX0208.bin",)"
              R"("mx_sha256":"7427e94acae8f50505cff247c51c06df688cca82e9a228393ec8733aa1afd751",)"
              R"("modules":[1,3]},{"reference":"MX0116.bin",)"
              R"("mx_sha256":"63414dcca89452c8ef77e4e69910fd07d5a318a69507ef713770c5e9c9231cd5",)"
              R"("modules":[2]}])");
}

// Tests of a station's texts that could end a cell, a line or the file.
TEST(ChannelTables, hostileTextsStayInTheirCells)
{
    const std::string hostile("a\nb\r\",;\0=\x1B[2J\xE2\x80\xAE", 16);
    Plan plan = sample();
    plan.station = hostile;
    for (mxstation::Channel& channel : plan.channels) {
        channel.name = channel.moduleName = channel.alias = channel.comment = hostile;
    }
    plan.channels[0].name = std::string(1000, 'x');
    plan.channels[2].comment = "\xFF";
    EXPECT_EQ(linesOf(mxstation::channelsText(plan)).size(), 4U);
    EXPECT_EQ(linesOf(mxstation::channelsCsv(plan)).size(), 4U);
    const auto made = nlohmann::ordered_json::parse(mxstation::channelsJson(plan));
    EXPECT_EQ(made.at("channels")[1].at("alias"), hostile);
    EXPECT_EQ(made.at("channels")[2].at("comment"), "\u00FF"); // of Windows-1252
}

} // namespace
