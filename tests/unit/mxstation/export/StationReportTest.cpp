// Worked out by hand. MX0208: eight outputs of a bit, six inputs of a bit and two inputs without a
// name, which get no address; 2 parameter bytes, 9 parameters and so 9 registers. MX0304: 8 bytes
// of inputs, 33 parameter bytes, 25 parameters of at most 2 bytes and so 25 registers. The layout
// "words" gives each module whole words.
#include <mxstation/StationReport.h>

#include "../StatedStation.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::HasSubstr;

const char* const valvesAndLevels = R"(station: Pump house
layout: words
modules:
  - {module: MX0208.bin, name: Valves}
  - {reserve: {in: 4, name: Spare}}
  - MX0304.bin
)";

TEST(StationReport, showsTheRowItsGapsAndTotals)
{
    EXPECT_EQ(mxstation::stationText(statedPlan(valvesAndLevels)),
              R"(Pump house

Position  Name    Module    In bytes  In at  Out bytes  Out at  Parameter bytes  Registers  Label
1         Valves  5a020208  1         0      1          0       2                9          8 DO 24 V DC 0.5 A
          Spare   reserved  4         2-5    0
2         MX0304  5a030304  8         6-13   0                  33               25         4 AI ±10 V / 0-20 mA

Image  At  Size               Without a channel  Module
in     0   2 bits from bit 6  no channel         Valves
in     1   1 byte             padding
out    1   1 byte             padding

2 modules, parameters: 35 bytes, 34 registers
Input image: 14 bytes at 0-13, data of modules: 9 bytes
Output image: 2 bytes at 0-1, data of modules: 1 byte
Layout words: as in the row, a module begins at a multiple of 2, a module takes a multiple of 2 bytes, at most 64 modules, most significant byte of a value first
)");
}

TEST(StationReport, statesWhatDiffersBetweenTheImages)
{
    const std::string text = mxstation::stationText(statedPlan(R"(
layout:
  start: {in: 10}
  order: {out: bytes-first}
  status_before: {in: 1}
  status_behind: {out: 2}
  pad_image: {out: 4}
  most_bytes: {in: 32}
  most_modules: 8
  byte_order: little
modules: [MX0108.bin]
)"));
    EXPECT_THAT(text, HasSubstr("Layout of the station: input image as in the row, from byte 10, "
                                "1 byte of status before, at most 32 bytes; output image modules "
                                "of bits alone last, 2 bytes of status after, the image takes a "
                                "multiple of 4 bytes; at most 8 modules, least significant byte "
                                "of a value first\n"));
    EXPECT_THAT(text, HasSubstr("Input image: 2 bytes at 10-11, data of modules: 1 byte\n"
                                "Output image: 4 bytes at 0-3, data of modules: 0 bytes\n"));
}

TEST(StationReport, marksAModuleWithoutRegisters)
{
    const auto plan = statedPlan("modules: [MX0304.bin]");
    mxstation::Plan changed = plan;
    changed.modules[0].noRegisters = mxmodule::Finding{};
    changed.modules[0].registers.clear();
    EXPECT_THAT(mxstation::stationText(changed), HasSubstr("33               none"));
    EXPECT_TRUE(
        json::parse(mxstation::stationJson(changed))["modules"][0]["parameters"]["registers"]
            .is_null());
}

TEST(StationReport, givesModulesAsJson)
{
    const json report = json::parse(mxstation::stationJson(statedPlan(valvesAndLevels)));
    EXPECT_EQ(report["schema"], json::parse(R"({"name": "mxtool.station", "version": 1})"));
    EXPECT_EQ(report["station"], "Pump house");
    EXPECT_EQ(report["input"], json::parse(R"({"offset": 0, "size": 14})"));
    EXPECT_EQ(report["output"], json::parse(R"({"offset": 0, "size": 2})"));
    ASSERT_EQ(report["modules"].size(), 2U);
    json levels = report["modules"][1];
    EXPECT_EQ(levels["position"], 2);
    EXPECT_EQ(levels["name"], "MX0304");
    EXPECT_EQ(levels["module_id"], "5a030304");
    EXPECT_EQ(levels["label"], "4 AI ±10 V / 0-20 mA");
    EXPECT_EQ(levels["reference"], "MX0304.bin");
    EXPECT_EQ(levels["device_type_id"], "kv38.5a030304");
    EXPECT_EQ(levels["in"], json::parse(R"({"offset": 6, "size": 8})"));
    EXPECT_EQ(levels["out"]["size"], 0);
    EXPECT_EQ(levels["parameters"], json::parse(R"({"size": 33, "registers": 25})"));
    EXPECT_EQ(report["totals"], json::parse(R"({"modules": 2, "in": 9, "out": 1, "parameters": 35,
                                                "registers": 34})"));
}

TEST(StationReport, givesEveryGapAsJson)
{
    const json report = json::parse(mxstation::stationJson(statedPlan(valvesAndLevels)));
    EXPECT_EQ(report["gaps"], json::parse(R"([
        {"image": "in", "reason": "no channel", "offset": 0, "size": 1, "bit": 6, "bits": 2,
         "module": 1, "name": ""},
        {"image": "in", "reason": "padding", "offset": 1, "size": 1, "bit": 0, "bits": 8,
         "module": null, "name": ""},
        {"image": "in", "reason": "reserved", "offset": 2, "size": 4, "bit": 0, "bits": 32,
         "module": null, "name": "Spare"},
        {"image": "out", "reason": "padding", "offset": 1, "size": 1, "bit": 0, "bits": 8,
         "module": null, "name": ""}])"));
}

TEST(StationReport, givesTheLayoutAsJson)
{
    const json layout = json::parse(mxstation::stationJson(statedPlan(R"(
layout: {like: bytes-first, start: {out: 100}, most_bytes: {in: 32}, byte_order: little}
modules: [MX0108.bin]
)")))["layout"];
    EXPECT_EQ(layout, json::parse(R"({
        "name": "of the station",
        "in": {"start": 0, "order": "bytes-first", "align": 1, "pad_module": 1, "pad_image": 2,
               "status_before": 2, "status_behind": 0, "most_bytes": 32},
        "out": {"start": 100, "order": "bytes-first", "align": 1, "pad_module": 1, "pad_image": 2,
                "status_before": 2, "status_behind": 0, "most_bytes": null},
        "most_modules": 64, "byte_order": "little"})"));
}

} // namespace
