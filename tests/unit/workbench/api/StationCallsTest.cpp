#include "api/ApiFixture.h"

#include <gmock/gmock.h>
#include <mxstation/ChannelExport.h>
#include <mxstation/Declarations.h>
#include <mxstation/ParameterExport.h>
#include <mxstation/Plan.h>
#include <mxstation/StationPicture.h>
#include <mxstation/StationReport.h>
#include <text/Sha256.h>

namespace {

using mxmodule::Fieldbus;
using testing::HasSubstr;
using text::Json;

const std::string rowText = "# A row.\n"
                            "station: Row\n"
                            "modules:\n"
                            "  - MX0116.bin # switches\n"
                            "  - module: MX0304.bin\n"
                            "    name: Levels\n"
                            "    parameters: {Mains suppression: 60 Hz}\n"
                            "  - reserve: {in: 4, name: later}\n"
                            "  - MX0208.bin\n";

class StationCalls : public ApiTest
{
protected:
    StationCalls() { openStation(rowText); }

    mxstation::Plan plan(const std::string& text = rowText) const
    {
        return mxstation::plan(mxstation::stationOf(text, path("row.yaml")));
    }

    Json edited(const Json& edit, const std::string& text = rowText) const
    {
        return call("POST", "/station", {{"text", text}, {"edit", edit}});
    }

    std::string exported(const std::string& format, const Json& more = Json::object()) const
    {
        Json body = {{"text", rowText}, {"format", format}};
        body.update(more);
        const auto response = answer("POST", "/station/export", body.dump());
        EXPECT_EQ(response.status, 200U) << response.body;
        return response.body;
    }
};

TEST_F(StationCalls, PlanAsTheLibraryDoes)
{
    const Json made = call("POST", "/station", {{"text", rowText}});
    EXPECT_EQ(made.at("text"), rowText);
    EXPECT_EQ(made.at("version"), text::sha256(rowText));
    EXPECT_EQ(made.at("isPlanned"), true);
    EXPECT_TRUE(made.at("findings").empty());
    EXPECT_TRUE(made.at("refused").empty());
    EXPECT_EQ(made.at("plan"), Json::parse(stationJson(plan())));
    EXPECT_EQ(made.at("channels"), Json::parse(channelsJson(plan())));
    EXPECT_TRUE(made.at("module").is_null());
    // The analog inputs of Levels follow the two bytes of switches.
    const auto& channels = made.at("channels").at("channels");
    ASSERT_EQ(made.at("places").size(), channels.size());
    EXPECT_EQ(channels[16].at("name"), "AI 1");
    EXPECT_EQ(made.at("places")[16], Json({{"firstBit", 16}, {"bits", 16}}));
    EXPECT_EQ(made.at("places")[3], Json({{"firstBit", 3}, {"bits", 1}}));
}

TEST_F(StationCalls, StateTheEntries)
{
    const Json entries = call("POST", "/station", {{"text", rowText}}).at("entries");
    ASSERT_EQ(entries.size(), 4U);
    const Json none = {{"in", nullptr}, {"out", nullptr}};
    EXPECT_EQ(entries[1],
              Json({{"index", 1},
                    {"position", 2},
                    {"planned", {{"in", {{"offset", 2}, {"size", 8}}}, {"out", nullptr}}},
                    {"reference", "MX0304.bin"},
                    {"name", "Levels"},
                    {"plannedName", "Levels"},
                    {"reserve", nullptr},
                    {"at", none},
                    {"line", 5},
                    {"parameters", {{{"name", "Mains suppression"}, {"value", "60 Hz"}}}},
                    {"channels", Json::array()}}));
    EXPECT_EQ(entries[2].at("reserve"), Json({{"in", 4}, {"out", nullptr}, {"name", "later"}}));
    EXPECT_TRUE(entries[2].at("position").is_null());
    EXPECT_EQ(entries[3].at("position"), 3);
}

// Two places of one size and name.
TEST_F(StationCalls, StateTheBytesOfEachReservedPlace)
{
    const std::string text = "modules:\n- reserve: {in: 4, out: 2}\n"
                             "- {reserve: {in: 4}, at: {in: 8}}\n";
    const Json entries = call("POST", "/station", {{"text", text}}).at("entries");
    EXPECT_EQ(entries[0].at("planned"),
              Json({{"in", {{"offset", 0}, {"size", 4}}}, {"out", {{"offset", 0}, {"size", 2}}}}));
    EXPECT_EQ(entries[1].at("planned"),
              Json({{"in", {{"offset", 8}, {"size", 4}}}, {"out", nullptr}}));
    const Json wrong = call("POST", "/station", {{"text", text + "- reserve: {}\n"}});
    EXPECT_EQ(wrong.at("entries")[0].at("planned"), Json({{"in", nullptr}, {"out", nullptr}}));
}

TEST_F(StationCalls, DescribeTheShownModule)
{
    const Json made = call("POST", "/station", {{"text", rowText}, {"module", 2}}).at("module");
    const auto planned = plan();
    const auto& levels = planned.modules[1];
    EXPECT_EQ(made.at("position"), 2);
    EXPECT_EQ(made.at("entry"), 1);
    EXPECT_FALSE(made.contains("device"));
    auto expected = Json::parse(levels.module.configuration(levels.image, Fieldbus::Modbus).json());
    expected["file"] = made.at("configured").at("modbus").at("file");
    EXPECT_EQ(made.at("configured").at("modbus"), expected);

    const Json described =
        call("POST", "/station", {{"text", rowText}, {"module", 2}, {"describe", true}})
            .at("module");
    EXPECT_EQ(described.at("channels"), Json::parse(levels.module.channelMap().json()));
    EXPECT_TRUE(
        call("POST", "/station", {{"text", rowText}, {"module", 4}}).at("module").is_null());
}

TEST_F(StationCalls, GiveTheErrorsOfATextWithTheirPlaces)
{
    const std::string wrong = "station: Row\nmodules:\n  - MX0116.bin\n  - MX9999.bin\n";
    const Json made = call("POST", "/station", {{"text", wrong}});
    EXPECT_EQ(made.at("isPlanned"), false);
    EXPECT_TRUE(made.at("plan").is_null());
    ASSERT_EQ(made.at("findings").size(), 1U);
    EXPECT_EQ(made.at("findings")[0].at("severity"), "error");
    EXPECT_EQ(made.at("findings")[0].at("line"), 4);
    EXPECT_EQ(made.at("findings")[0].at("column"), 5);
    EXPECT_THAT(made.at("findings")[0].at("text"), HasSubstr("MX9999.bin"));
    EXPECT_EQ(made.at("text"), wrong);
}

TEST_F(StationCalls, MakeAnEditAndKeepEverythingElse)
{
    const Json made = edited(
        {{"kind", "value"}, {"entry", 1}, {"parameter", "AI 1/Upper limit"}, {"value", "9.9 V"}});
    EXPECT_EQ(made.at("isPlanned"), true);
    const std::string after = made.at("text");
    EXPECT_THAT(after, HasSubstr("# A row.\n"));
    EXPECT_THAT(after, HasSubstr("- MX0116.bin # switches\n"));
    EXPECT_EQ(plan(after).modules[1].image,
              plan()
                  .modules[1]
                  .module.compose({{"Mains suppression", "60 Hz"}, {"AI 1/Upper limit", "9.9 V"}})
                  .image);
    const Json before = edited(
        {{"kind", "value"}, {"entry", 1}, {"parameter", "AI 1/Upper limit"}, {"value", nullptr}},
        after);
    EXPECT_EQ(plan(before.at("text")).modules[1].image, plan().modules[1].image);
}

TEST_F(StationCalls, RefuseAnEditThatMakesAnError)
{
    const Json made = edited(
        {{"kind", "value"}, {"entry", 1}, {"parameter", "Mains suppression"}, {"value", "70 Hz"}});
    EXPECT_EQ(made.at("text"), rowText);
    EXPECT_EQ(made.at("isPlanned"), true);
    EXPECT_TRUE(made.at("findings").empty());
    ASSERT_EQ(made.at("refused").size(), 1U);
    const auto expected = plan().modules[1].module.compose({{"Mains suppression", "70 Hz"}});
    EXPECT_EQ(made.at("refused")[0].at("accepted"), expected.findings[0].accepted);
}

// The text with the edit is not shown: lines of it would lead to other entries.
TEST_F(StationCalls, RefuseAnEditWithoutLinesOfTheTextThatItWouldMake)
{
    const auto refused = [&](const Json& edit) { return edited(edit).at("refused").at(0); };
    const Json value = refused(
        {{"kind", "value"}, {"entry", 1}, {"parameter", "Mains suppression"}, {"value", "70 Hz"}});
    const Json pin = refused({{"kind", "pin"}, {"entry", 1}, {"in", 0}, {"out", nullptr}});
    for (const Json& finding : {value, pin}) {
        EXPECT_EQ(finding.at("place"), "");
        EXPECT_TRUE(finding.at("line").is_null());
        EXPECT_EQ(finding.at("excerpt"), "");
    }
    EXPECT_EQ(pin.at("text"), "byte 0 of the input image is not free: the module "
                              "\"MX0116.bin\" comes before in the image");
    const Json twice = refused({{"kind", "name"}, {"entry", 0}, {"name", "Levels"}});
    EXPECT_EQ(twice.at("text"), "the name \"Levels\" is used elsewhere as well");
}

TEST_F(StationCalls, EditATextThatHasErrorsAlready)
{
    const std::string wrong = "modules:\n  - MX9999.bin # gone\n  - MX0116.bin\n";
    const Json made = edited({{"kind", "remove"}, {"entry", 0}}, wrong);
    EXPECT_TRUE(made.at("refused").empty());
    EXPECT_EQ(made.at("isPlanned"), true);
    EXPECT_EQ(plan(made.at("text")).modules.size(), 1U);
}

TEST_F(StationCalls, MakeEachKindOfEdit)
{
    const auto names = [](const Json& made) {
        std::vector<std::string> all;
        for (const auto& entry : made.at("entries")) {
            all.push_back(entry.at("reserve").is_null() ? entry.at("reference") : Json("reserve"));
        }
        return all;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(names(edited({{"kind", "add"}, {"before", 0}, {"reference", "MX0208.bin"}})),
              (Names{"MX0208.bin", "MX0116.bin", "MX0304.bin", "reserve", "MX0208.bin"}));
    EXPECT_EQ(names(edited({{"kind", "reserve"}, {"before", 4}, {"in", 1}, {"out", 2}})),
              (Names{"MX0116.bin", "MX0304.bin", "reserve", "MX0208.bin", "reserve"}));
    EXPECT_EQ(names(edited({{"kind", "move"}, {"entry", 3}, {"before", 0}})),
              (Names{"MX0208.bin", "MX0116.bin", "MX0304.bin", "reserve"}));
    EXPECT_EQ(names(edited({{"kind", "remove"}, {"entry", 2}})),
              (Names{"MX0116.bin", "MX0304.bin", "MX0208.bin"}));
    const Json named = edited({{"kind", "name"}, {"entry", 0}, {"name", "Switches"}});
    EXPECT_EQ(named.at("plan").at("modules")[0].at("name"), "Switches");
    const Json noted = edited({{"kind", "channel"},
                               {"entry", 1},
                               {"channel", "AI 1"},
                               {"alias", "LT_1"},
                               {"comment", "tank"}});
    EXPECT_EQ(noted.at("entries")[1].at("channels"),
              Json::array({{{"channel", "AI 1"}, {"alias", "LT_1"}, {"comment", "tank"}}}));
    const Json pinned = edited({{"kind", "pin"}, {"entry", 3}, {"in", 32}, {"out", nullptr}});
    EXPECT_EQ(pinned.at("plan").at("modules")[2].at("in").at("offset"), 32);
    const Json sized = edited({{"kind", "size"}, {"entry", 2}, {"in", 6}, {"out", 1}});
    EXPECT_EQ(sized.at("entries")[2].at("reserve"),
              Json({{"in", 6}, {"out", 1}, {"name", "later"}}));
    const Json all = edited({{"kind", "pinAll"}});
    for (const auto& entry : all.at("entries")) {
        EXPECT_FALSE(entry.at("at").at("in").is_null() && entry.at("at").at("out").is_null());
    }
}

TEST_F(StationCalls, NameWhatIsWrongWithAnEdit)
{
    EXPECT_EQ(
        failure("POST", "/station", {{"text", rowText}, {"edit", {{"kind", "swap"}}}}, 400)[0],
        "edit.kind: found \"swap\", expected one of add, reserve, move, remove, name, size, "
        "value, channel, pin, pinAll");
    EXPECT_EQ(failure("POST", "/station",
                      {{"text", rowText}, {"edit", {{"kind", "remove"}, {"entry", -1}}}}, 400)[0],
              "edit.entry: found -1, expected a whole number from 0 to 4294967295");
    const Json made = edited({{"kind", "remove"}, {"entry", 4}});
    EXPECT_EQ(made.at("text"), rowText);
    EXPECT_FALSE(made.at("refused").empty());
}

TEST_F(StationCalls, GiveThePictureOfEachTypeOnce)
{
    write("MX0302.bin", "");
    std::filesystem::remove(path("MX0302.bin"));
    std::filesystem::copy(std::string(EXAMPLE_MODULES) + "/MX0302.bin", path("MX0302.bin"));
    const std::string text = "modules: [MX0302.bin, MX0302.bin, MX0116.bin]\n";
    const Json pictures = call("POST", "/station/pictures", {{"text", text}}).at("pictures");
    EXPECT_EQ(pictures.size(), 2U);
    EXPECT_THAT(pictures.at("MX0302.bin").get<std::string>(),
                testing::StartsWith("data:image/svg+xml;base64,"));
}

TEST_F(StationCalls, ExportWhatTheLibrariesWrite)
{
    const auto planned = plan();
    EXPECT_EQ(exported("channels-csv"), channelsCsv(planned));
    EXPECT_EQ(exported("channels-csv", {{"separator", "semicolon"}, {"byteOrderMark", true}}),
              channelsCsv(planned, {';', true}));
    EXPECT_EQ(exported("channels-st"), declarations(planned).text);
    EXPECT_EQ(
        exported("channels-st", {{"address", "index"}, {"scope", "program"}}),
        declarations(planned, {mxstation::AddressStyle::Index, mxstation::VariableScope::Program})
            .text);
    EXPECT_EQ(exported("channels-plcopen"), plcopenXml(planned).text);
    EXPECT_EQ(exported("channels-c"), cHeader(planned).text);
    EXPECT_EQ(exported("picture"), stationSvg(planned));
    EXPECT_EQ(exported("station-text"), stationText(planned));
    EXPECT_EQ(exported("parameters-modbus-json"), parametersJson(planned, Fieldbus::Modbus));
    const auto file = parameterFiles(planned, Fieldbus::Modbus)[1].bytes;
    EXPECT_EQ(exported("image-modbus", {{"module", 2}}), std::string(file.begin(), file.end()));
}

TEST_F(StationCalls, ExportEachListedForm)
{
    const Json start = call("GET", "/start");
    for (const auto& format : start.at("exports").at("station")) {
        const Json body = {{"text", rowText}, {"format", format.at("format")}, {"module", 1}};
        const auto response = answer("POST", "/station/export", body.dump());
        EXPECT_EQ(response.status, 200U) << format << response.body;
        EXPECT_THAT(response.fileName, testing::StartsWith("row")) << format;
    }
    EXPECT_EQ(failure("POST", "/station/export",
                      {{"text", rowText}, {"format", "image-raw"}, {"module", 4}}, 400)[0],
              "module: found 4, expected a position from 1 to 3");
    EXPECT_EQ(failure("POST", "/station/export",
                      {{"text", rowText}, {"format", "channels-st"}, {"address", "word"}}, 400)[0],
              "address: found \"word\", expected one of byte, index, separate");
}

TEST_F(StationCalls, ExportNothingOfAStationWithErrors)
{
    for (const char* const format : {"station-text", "image-raw", "images-raw-json"}) {
        const Json body = {{"text", "modules: [MX9999.bin]"}, {"format", format}, {"module", 1}};
        EXPECT_THAT(failure("POST", "/station/export", body, 422)[0], HasSubstr("MX9999.bin"));
    }
}

} // namespace
